#pragma once

// For the benchmarks that read: a recorded table in a temporary file.

#include <unistd.h>

#include <array>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vorm::bench {

/// A table of four signals at irregular times, a millisecond apart on average: `a` and `c` are
/// noise, `b` and `d` smooth. The file is removed with the object.
class RecordedFile {
public:
    static constexpr std::size_t signalCount = 4;

    explicit RecordedFile(std::size_t rows)
        : path_(std::filesystem::temp_directory_path() /
                ("vorm_" + std::to_string(::getpid()) + "_" + std::to_string(rows) + ".csv")) {
        std::ofstream file(path_, std::ios::binary);
        file << "time,a,b,c,d\n";
        writeRows(file, rows);
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + path_.string());
        }
    }
    RecordedFile(const RecordedFile&) = delete;
    RecordedFile& operator=(const RecordedFile&) = delete;
    ~RecordedFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }

    const std::filesystem::path& path() const { return path_; }
    std::size_t bytes() const { return std::filesystem::file_size(path_); }

private:
    static void writeRows(std::ofstream& file, std::size_t rows) {
        std::mt19937_64 random(1);
        std::uniform_real_distribution<double> gap(0.0001, 0.0019);
        std::uniform_real_distribution<double> noise(0, 1);
        std::array<char, 128> row{};
        double time = 0;
        for (std::size_t i = 0; i < rows; ++i) {
            time += gap(random);
            const double a = noise(random);
            const double c = noise(random);
            const int size =
                std::snprintf(row.data(), row.size(), "%.6f,%.5f,%.5f,%.3f,%.4f\n", time, a,
                              std::sin(33 * time), 1000 * c, 100 * std::sin(9 * time));
            file.write(row.data(), size);
        }
    }

    std::filesystem::path path_;
};

}  // namespace vorm::bench

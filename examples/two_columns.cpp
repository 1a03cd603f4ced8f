#include "two_columns.hpp"

#include <charconv>
#include <cmath>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>

namespace example {

namespace {

using Point = vorm::assessments::TimedPoint<double>;

std::optional<double> number(std::string_view text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [parsed, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || parsed != end) {
        return std::nullopt;
    }
    return value;
}

class Reader {
public:
    explicit Reader(const std::filesystem::path& path) : name_(path.string()), file_(path) {
        if (!file_) {
            throw InputError(name_ + ": cannot be opened");
        }
    }

    std::vector<Point> read() {
        readHeader();
        std::vector<Point> points;
        double origin = 0;
        while (nextLine()) {
            Point point = row();
            if (points.empty()) {
                origin = point.time;
            }
            // Rounding can make two times equal here that differ in the file.
            point.time -= origin;
            if (!points.empty() && !(points.back().time < point.time)) {
                fail(1, "the time does not increase");
            }
            points.push_back(point);
        }
        if (points.empty()) {
            throw InputError(name_ + ": there are no rows after the header");
        }
        return points;
    }

private:
    bool nextLine() {
        if (!std::getline(file_, line_)) {
            return false;
        }
        ++lineNumber_;
        if (line_.ends_with('\r')) {
            line_.pop_back();
        }
        return true;
    }

    void readHeader() {
        if (!nextLine()) {
            throw InputError(name_ + ": cannot be read or is empty");
        }
        if (number(line_.substr(0, line_.find(',')))) {
            fail(1, "expected a header line, found a number");
        }
    }

    Point row() const {
        const std::size_t comma = line_.find(',');
        if (comma == std::string::npos) {
            fail(line_.size() + 1, "expected two columns, time and value");
        }
        if (const std::size_t third = line_.find(',', comma + 1); third != std::string::npos) {
            fail(third + 1, "expected two columns, found a third");
        }
        const double time = field(0, comma);
        if (!std::isfinite(time)) {
            fail(1, "the time is not finite");
        }
        return {time, field(comma + 1, line_.size())};
    }

    double field(std::size_t begin, std::size_t end) const {
        const std::string_view text = std::string_view(line_).substr(begin, end - begin);
        const std::optional<double> value = number(text);
        if (!value) {
            fail(begin + 1, "expected a number, found \"" + std::string(text) + '"');
        }
        return *value;
    }

    [[noreturn]] void fail(std::size_t column, const std::string& what) const {
        throw InputError(name_ + ':' + std::to_string(lineNumber_) + ':' + std::to_string(column) +
                         ": " + what);
    }

    std::string name_;
    std::ifstream file_;
    std::string line_;
    std::size_t lineNumber_ = 0;
};

}  // namespace

std::vector<Point> readTwoColumns(const std::filesystem::path& path) {
    return Reader(path).read();
}

}  // namespace example

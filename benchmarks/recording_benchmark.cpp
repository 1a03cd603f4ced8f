// Reading of a recorded table: its bytes, or its columns in memory, to the traces of its signals.

#include "recorded_file.hpp"
#include "signals.hpp"

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/recording/recording_in_memory.hpp>

#include <fast_float/fast_float.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

namespace vorm::bench {
namespace {

constexpr std::size_t signalCount = RecordedFile::signalCount;

double numberBefore(char delimiter, const char*& position, const char* end) {
    double number = 0;
    const auto result = fast_float::from_chars(position, end, number);
    if (result.ec != std::errc() || result.ptr == end || *result.ptr != delimiter) {
        throw std::runtime_error("a cell is no number");
    }
    position = result.ptr + 1;
    return number;
}

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::string text(std::filesystem::file_size(path), '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    return text;
}

std::array<Flat<double>, signalCount> readByHand(const std::filesystem::path& path) {
    const std::string text = textOf(path);
    const char* position = text.data() + text.find('\n') + 1;
    const char* const end = text.data() + text.size();
    std::array<Flat<double>, signalCount> signals;
    while (position != end) {
        const double time = numberBefore(',', position, end);
        for (std::size_t i = 0; i < signalCount; ++i) {
            const char delimiter = i + 1 < signalCount ? ',' : '\n';
            signals[i].push_back({time, numberBefore(delimiter, position, end)});
        }
    }
    return signals;
}

// The sum of all cells: what the numbers alone cost, with nothing kept.
double sumByHand(const std::filesystem::path& path) {
    const std::string text = textOf(path);
    const char* position = text.data() + text.find('\n') + 1;
    const char* const end = text.data() + text.size();
    double sum = 0;
    while (position != end) {
        for (std::size_t i = 0; i <= signalCount; ++i) {
            sum += numberBefore(i < signalCount ? ',' : '\n', position, end);
        }
    }
    return sum;
}

void addReading(std::size_t rows) {
    const auto file = std::make_shared<const RecordedFile>(rows);
    const std::size_t samples = rows * signalCount;
    const std::size_t bytes = file->bytes();
    for (const auto& [method, methodName] : {std::pair(INTERPOLATION_METHOD::ZOH, "held"),
                                             std::pair(INTERPOLATION_METHOD::LINEAR, "linear")}) {
        evaluation::RecordingLayout layout;
        layout.interpolation = method;
        const std::string job = std::string("readRecording/4 signals ") + methodName;
        const auto read = [=] {
            return evaluation::readRecording({{file->path().string()}}, layout);
        };
        add(job + "/library", samples, read, bytes);
        add(
            job + "/flat", samples, [=] { return readByHand(file->path()); }, bytes);
    }
    add(
        "sum of the cells/4 signals/flat", samples, [=] { return sumByHand(file->path()); }, bytes);
}

// A line through noise, its times in both forms; by hand it is copied.
void addColumn(std::size_t count) {
    struct Memory {
        std::vector<std::int64_t> ticks;
        std::vector<double> seconds;
        std::vector<double> values;
    };
    auto memory = std::make_shared<Memory>();
    for (const auto& sample : irregular(Course::Noisy, count)) {
        memory->ticks.push_back(static_cast<std::int64_t>(sample.time * 1e6));
        memory->seconds.push_back(static_cast<double>(memory->ticks.back()) / 1e9);
        memory->values.push_back(sample.value);
    }
    evaluation::SignalColumn column;
    column.name = "noise";
    column.values = evaluation::SampleView<double>(memory->values);
    column.interpolation = INTERPOLATION_METHOD::LINEAR;
    for (const auto& [times, name] :
         {std::pair(evaluation::SampleTimes(evaluation::TickTimes{memory->ticks}), "ticks"),
          std::pair(evaluation::SampleTimes(evaluation::NumberTimes{memory->seconds}),
                    "seconds")}) {
        column.times = times;
        add(std::string("recordingOf/linear double ") + name + "/library", count,
            [=] { return evaluation::recordingOf("memory", {column}); });
    }
    add("recordingOf/linear double/flat", count, [=] {
        Flat<double> samples;
        for (std::size_t i = 0; i < memory->values.size(); ++i) {
            samples.push_back({memory->seconds[i], memory->values[i]});
        }
        return samples;
    });
}

const bool registered = [] {
    addColumn(sizes[1]);
    addColumn(sizes[2]);
    addReading(sizes[1]);
    addReading(sizes[2]);
    return true;
}();

}  // namespace
}  // namespace vorm::bench

// Any bytes as the content of a recording. The first two bytes choose how it is read, the rest is
// the file; input that cannot be used is refused with InputError and nothing else.

#include <vorm/evaluation/recording/recording_reading.hpp>
#include <vorm/evaluation/source/compression.hpp>

#include <source/bytes.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

using namespace vorm::evaluation;

SignalLayout signalOf(const std::string& name, std::optional<SignalType> type) {
    SignalLayout signal;
    signal.name = name;
    signal.type = std::move(type);
    return signal;
}

RecordingLayout layoutOf(std::uint8_t bits, std::uint8_t moreBits) {
    RecordingLayout layout;
    layout.time.timesBack = static_cast<TimesBack>(moreBits >> 2U & 3U);
    if ((moreBits & 16U) != 0) {
        layout.decimal = ',';
    }
    if ((moreBits & 32U) != 0) {
        layout.missing = {"?"};
    }
    if ((moreBits & 64U) != 0) {
        layout.badRows = BadRows::Skip;
        layout.firstRow = 3;
    }
    if ((moreBits & 128U) != 0) {
        layout.names = {"time", "a", "e"};
    }
    layout.signals = {
        signalOf("h", SignalType::of<vorm::assessments::HalfFloat>()),
        signalOf("x",
                 SignalType::of<vorm::assessments::ValueType<vorm::assessments::FixedPoint>>()),
        signalOf("i", SignalType::of<std::int8_t>()),
        signalOf("e", SignalType::of(std::make_shared<Enumeration>(Enumeration{"E", {"N", "D"}})))};
    layout.time.equalTimes = static_cast<EqualTimes>(bits % 3);
    if ((bits & 4U) != 0) {
        layout.time.origin = TimeOrigin::FirstSample();
    }
    if ((bits & 8U) != 0) {
        layout.interpolation = vorm::assessments::INTERPOLATION_METHOD::LINEAR;
    }
    if ((bits & 16U) != 0) {
        layout.time.unit = timeUnitOf("us");
    }
    if ((bits & 32U) != 0) {
        layout.time.format = "%Y-%m-%d %H:%M:%S";
    }
    if ((bits & 64U) != 0) {
        layout.maxGap = ExactTime::ofSeconds(1.5);
    }
    if ((bits & 128U) != 0) {
        layout.longForm.emplace();
    }
    return layout;
}

ReadingOptions optionsOf(std::uint8_t bits) {
    ReadingOptions options;
    if ((bits & 1U) != 0) {
        options.wanted = {"a", "h", "x", "i", "e", "time"};
    }
    return options;
}

bool isCompressed(const std::string& content) {
    return !decompressed(textSource(content), "fuzz").compression.empty();
}

// The same bytes in other blocks, or compressed, are the same recording.
std::string outcome(const RecordingFile& file, const RecordingLayout& layout,
                    const ReadingOptions& options, std::size_t blockSize) {
    try {
        std::string text;
        for (const Signal& signal :
             readRecordingFiles("fuzz", {file}, layout, options, blockSize).signals) {
            text += signal.name + ' ' + typeText(signal.type) + ' ';
            for (const auto& piece : *signal.pieces) {
                text += std::to_string(piece.getLastKnownTime()) + ' ';
            }
        }
        return text;
    } catch (const InputError& error) {
        return error.what();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) {
        return 0;
    }
    const std::string content(reinterpret_cast<const char*>(data) + 2, size - 2);
    const bool isJson = (data[1] & 2U) != 0;
    const char* const name = isJson ? "fuzz.jsonl" : "fuzz.csv";
    const RecordingFile file = textFile(name, content);
    const RecordingLayout layout = layoutOf(data[0], data[1]);
    const ReadingOptions options = optionsOf(data[1]);
    // Damaged blocks are found as early as they are read.
    if (isCompressed(content)) {
        return 0;
    }
    const std::string once = outcome(file, layout, options, ByteWindow::defaultBlockSize);
    const RecordingFile compressed = textFile(name, test::gzipped(content));
    if (once != outcome(file, layout, options, 3) ||
        once != outcome(compressed, layout, options, ByteWindow::defaultBlockSize)) {
        std::abort();
    }
    try {
        surveyFiles({file}, layout);
    } catch (const InputError&) {
    }
    return 0;
}

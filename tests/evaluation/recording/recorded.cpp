#include "recorded.hpp"

namespace vorm::evaluation::test {
namespace {

template <class T>
std::string valueText(const T& value, const SignalType& type) {
    if constexpr (std::is_same_v<T, std::int32_t>) {
        if (type.isEnumerated()) {
            return type.enumeration->members.at(static_cast<std::size_t>(value));
        }
    }
    if constexpr (std::is_floating_point_v<T>) {
        return shortestNumber(static_cast<double>(value));
    } else {
        std::ostringstream text;
        assessments::writeValue(text, value);
        return text.str();
    }
}

std::string timeText(double counted, const Timeline& timeline) {
    const ExactTime time = timeline.timeAt(counted);
    const double at = timeline.at(time);
    return time.text() + (counted > at ? "+" : counted < at ? "-" : "");
}

}  // namespace

std::string textOf(const Signal& signal, const Timeline& timeline) {
    std::string text = signal.name + ": " + typeText(signal.type);
    for (std::size_t i = 0; i < signal.pieces->size(); ++i) {
        text += i == 0 ? "" : " /";
        signal.pieces->at(i).visit([&](const auto& trace) {
            text +=
                trace.interpolation == assessments::INTERPOLATION_METHOD::LINEAR ? " linear" : "";
            for (const auto& point : trace.points) {
                text += ' ' + timeText(point.time, timeline) + ':' +
                        valueText(point.value, signal.type);
            }
            text += " known " + timeText(trace.lastKnownTime, timeline);
        });
    }
    return text;
}

std::string textOf(const Recording& recording) {
    std::string text;
    for (const Signal& signal : recording.signals) {
        text += (text.empty() ? "" : "\n") + textOf(signal, recording.timeline);
    }
    return text;
}

Recording read(const std::string& content, const RecordingLayout& layout,
               const ReadingOptions& options, const std::string& path, std::size_t blockSize) {
    return readRecordingFiles(path, {textFile(path, content)}, layout, options, blockSize);
}

SignalLayout declared(const std::string& name, const std::string& type) {
    SignalLayout signal;
    signal.name = name;
    if (type == "enum") {
        signal.type = SignalType::of(std::make_shared<Enumeration>());
    } else if (!type.empty()) {
        signal.type = SignalType{valueTypeOf(type), nullptr};
    }
    signal.where = {"limits.toml", 7, 3};
    return signal;
}

RecordingLayout declaring(const std::vector<SignalLayout>& signals) {
    return layoutWith([&](RecordingLayout& layout) { layout.signals = signals; });
}

}  // namespace vorm::evaluation::test

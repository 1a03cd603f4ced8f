#include "random_recording.hpp"

#include <algorithm>

namespace vorm::evaluation::test {
namespace {

std::string valueText(const RandomSignal& signal, const Sample& sample) {
    if (!sample.value) {
        return "nan";
    }
    return signal.isTruth ? (*sample.value != 0 ? "true" : "false") : std::to_string(*sample.value);
}

const Sample* sampleAt(const RandomSignal& signal, const Rational& time) {
    for (const Sample& sample : signal.said.samples) {
        if (sample.time == time) {
            return &sample;
        }
    }
    return nullptr;
}

std::string headerOf(const RandomRecording& recording, Form form) {
    if (form == Form::JsonLines) {
        return "";
    }
    std::string header = "time";
    if (form == Form::Long) {
        return header + ",name,value\n";
    }
    for (const RandomSignal& signal : recording.signals) {
        header += ',' + signal.name;
    }
    return header + '\n';
}

std::string rowsAt(const RandomRecording& recording, const Rational& tick, const std::string& time,
                   Form form) {
    std::string wide = time;
    std::string rows;
    for (const RandomSignal& signal : recording.signals) {
        const Sample* const sample = sampleAt(signal, tick);
        const std::string value = sample == nullptr ? "" : valueText(signal, *sample);
        wide.append(1, ',').append(value);
        if (sample == nullptr) {
            continue;
        }
        if (form == Form::Long) {
            rows.append(time).append(1, ',').append(signal.name).append(1, ',').append(value);
        } else {
            rows.append(R"({"name":")").append(signal.name).append(R"(","value":)").append(value);
            rows.append(R"(,"time":)").append(time).append("}");
        }
        rows.append(1, '\n');
    }
    return form == Form::Wide ? wide + '\n' : rows;
}

}  // namespace

Grid anyGrid() {
    static const char* const ticks[] = {"1", "0.1", "0.02", "0.001", "0.00007"};
    static const char* const offsets[] = {"0", "-3", "46408", "1700000000"};
    return {rationalOf(ticks[anyIndex(5)]), rationalOf(offsets[anyIndex(4)])};
}

std::string anyLengthText(const Rational& seconds) {
    const Unit& unit = unitsOfTime.at(anyIndex(unitsOfTime.size()));
    const auto number = decimal(seconds / unit.seconds);
    if (!number) {
        return *decimal(seconds) + " s";
    }
    return *unit.name == 0 ? *number : *number + ' ' + unit.name;
}

RandomSignal anySignal(const std::string& name) {
    RandomSignal signal{name, onceIn(4), {}};
    signal.said.isLinear = !signal.isTruth && anyIndex(2) == 1;
    const bool hasNans = !signal.isTruth && onceIn(4);
    int time = anyBetween(0, 8);
    for (std::size_t count = 1 + anyIndex(8); count > 0; --count) {
        const bool isNan = hasNans && onceIn(4);
        const int value = signal.isTruth ? anyBetween(0, 1) : anyBetween(-2, 3);
        signal.said.samples.push_back({time, isNan ? std::nullopt : std::optional(value)});
        time += onceIn(6) ? anyBetween(5, 12) : anyBetween(1, 4);
    }
    if (anyIndex(2) == 1) {
        signal.said.maxGap = anyBetween(2, 6);
    }
    return signal;
}

RandomRecording anyRecording() {
    RandomRecording recording{anyGrid(), {}, onceIn(4)};
    for (std::size_t i = 0, count = 2 + anyIndex(3); i < count; ++i) {
        recording.signals.push_back(anySignal(std::string(1, static_cast<char>('a' + i))));
    }
    return recording;
}

TimeWriting anyTimeWriting(const Grid& grid) {
    TimeWriting writing;
    const Unit& unit = unitsOfTime.at(anyIndex(5));
    writing.unit = decimal(grid.tick / unit.seconds) ? unit : writing.unit;
    writing.places = static_cast<int>(anyOf<std::size_t>({0, 0, 3, 12}));
    writing.isExponent = onceIn(5);
    return writing;
}

std::vector<RandomSignal> signalsCalled(const RandomRecording& recording,
                                        const std::set<std::string>& names) {
    std::vector<RandomSignal> signals = recording.signals;
    if (!names.contains(timeName)) {
        std::erase_if(signals,
                      [&](const RandomSignal& each) { return !names.contains(each.name); });
    }
    return signals;
}

Times timesOf(const std::vector<RandomSignal>& signals) {
    Times times;
    for (const RandomSignal& signal : signals) {
        times = joined(times, signal.said.quantity().events);
    }
    return times;
}

std::string recordingText(const RandomRecording& recording, const TimeWriting& writing, Form form) {
    std::string text = headerOf(recording, form);
    for (const Rational& tick : timesOf(recording.signals)) {
        text += rowsAt(recording, tick, writing.text(recording.grid.secondsAt(tick)), form);
    }
    return text;
}

std::string layoutText(const RandomRecording& recording, const TimeWriting& writing, Form form) {
    std::string text = "[recording]\nunit = \"";
    text += *writing.unit.name == 0 ? "s" : writing.unit.name;
    text += '"';
    text += form == Form::Long ? "\nform = \"long\"" : "";
    text += recording.isFromFirst ? "\norigin = \"first\"" : "";
    text += "\n[signals]\n";
    for (const RandomSignal& signal : recording.signals) {
        const std::string type = signal.isTruth ? "bool" : "double";
        text += signal.name + " = { type = \"" + type + '"';
        text += signal.said.isLinear ? ", interpolation = \"linear\"" : "";
        if (signal.said.maxGap) {
            text += ", max_gap = \"" + *decimal(*signal.said.maxGap * recording.grid.tick) + " s\"";
        }
        text += " }\n";
    }
    return text;
}

}  // namespace vorm::evaluation::test

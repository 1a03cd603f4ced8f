#include "column_reading.hpp"

namespace vorm::evaluation {

void ColumnReading::appendUnsure(double time, const Cell& value) {
    missing.pass(time, value, [this](double at, const Cell& sample) {
        if (sample.text.empty()) {
            return;
        }
        if (!builder) {
            builder = makeSignalBuilder(rules, sample);
        }
        builder->append(at, sample);
    });
}

SignalBuilder::Result ColumnReading::finish(const std::string& name, const Timeline& timeline) {
    if (builder) {
        return builder->finish(name, timeline);
    }
    const auto none = std::make_shared<TracePieces>();
    return {rules.type.value_or(SignalType()), {none, none}};
}

}  // namespace vorm::evaluation

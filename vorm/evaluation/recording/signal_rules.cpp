#include "signal_rules.hpp"

namespace vorm::evaluation {

SignalRules rulesFor(const std::string& column, const SignalLayout* declaration,
                     const RecordingLayout& layout) {
    SignalRules rules;
    rules.column = column;
    rules.interpolation = layout.interpolation;
    rules.maxGap = layout.maxGap.value_or(rules.maxGap);
    rules.equalTimes = layout.time.equalTimes;
    if (declaration != nullptr) {
        rules.type = declaration->type;
        rules.interpolation = declaration->interpolation.value_or(rules.interpolation);
        rules.isInterpolationDeclared = declaration->interpolation.has_value();
        rules.maxGap = declaration->maxGap.value_or(rules.maxGap);
        rules.equalTimes = declaration->equalTimes.value_or(rules.equalTimes);
        rules.where = declaration->where;
    }
    return rules;
}

}  // namespace vorm::evaluation

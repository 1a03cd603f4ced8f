#include "column_rules.hpp"

#include <vorm/evaluation/text/characters.hpp>

namespace vorm::evaluation {

SignalRules rulesFor(const std::string& column, const SignalLayout* declaration,
                     const RecordingLayout& layout, const Timeline& timeline) {
    SignalRules rules;
    rules.subject = "column " + shown(column);
    rules.interpolation = layout.interpolation;
    auto maxGap = layout.maxGap;
    rules.equalTimes = layout.time.equalTimes;
    if (declaration != nullptr) {
        rules.type = declaration->type;
        rules.interpolation = declaration->interpolation.value_or(rules.interpolation);
        rules.isInterpolationDeclared = declaration->interpolation.has_value();
        maxGap = declaration->maxGap ? declaration->maxGap : maxGap;
        rules.equalTimes = declaration->equalTimes.value_or(rules.equalTimes);
        rules.where = declaration->where;
    }
    if (maxGap) {
        rules.maxGap = timeline.ticksIn(*maxGap);
    }
    rules.timeline = timeline;
    return rules;
}

}  // namespace vorm::evaluation

#include "signal_rules.hpp"

namespace vorm::evaluation {

using assessments::INTERPOLATION_METHOD;

INTERPOLATION_METHOD interpolationOf(const SignalRules& rules, bool hasLines,
                                     const std::string& typeName) {
    if (hasLines || rules.interpolation == INTERPOLATION_METHOD::ZOH) {
        return rules.interpolation;
    }
    if (rules.isInterpolationDeclared) {
        failAt(rules.where,
               rules.subject + " is of type " + typeName + ", which has no linear interpolation",
               "leave it out, or declare type = \"double\" for numbers");
    }
    return INTERPOLATION_METHOD::ZOH;
}

}  // namespace vorm::evaluation

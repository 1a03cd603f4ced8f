#pragma once

// Properties that are tried more often by hand than every day.

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <cstdlib>
#include <sstream>

namespace vorm::test {

/// How many times something is to be tried: what the variable says, or the number for every day.
inline int triesOf(const char* variable, int everyDay) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? everyDay : std::atoi(text);
}

/// Checks a property on that many random values; RC_PARAMS gives the seed.
template <class Property>
void checkTimes(int times, const Property& property) {
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    params.maxSuccess = times;
    const auto result = rc::detail::checkTestable(property, rc::detail::TestMetadata(), params);
    if (!result.template is<rc::detail::SuccessResult>()) {
        std::ostringstream text;
        rc::detail::printResultMessage(result, text);
        FAIL() << text.str() << "\nRC_PARAMS=\"seed=" << params.seed << '"';
    }
}

}  // namespace vorm::test

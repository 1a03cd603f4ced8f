#pragma once

// What texts hold, with both texts in the message of a failure.

#include <gtest/gtest.h>

#include <string>

namespace vorm::test {

inline testing::AssertionResult has(const std::string& text, const std::string& part) {
    const bool isThere = text.find(part) != std::string::npos;
    return (isThere ? testing::AssertionSuccess() : testing::AssertionFailure())
           << "'" << part << "' is " << (isThere ? "" : "not ") << "in\n"
           << text;
}

}  // namespace vorm::test

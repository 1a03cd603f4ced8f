#pragma once

// When what the engine reports is what the oracle says.

#include "random_case.hpp"

namespace vorm::evaluation::test {

bool isRight(const Reported& reported, const Judgement& actual, const Judgement& expected);

/// Whether the outcome hangs on how exactly meetings between ticks are told.
bool isDelicate(const RandomRequirement& requirement, const World& exact,
                const Judgement& expected);

}  // namespace vorm::evaluation::test

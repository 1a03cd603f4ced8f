#pragma once

// What a formula says: its text, and what the oracle makes of it.

#include "world.hpp"

#include <functional>
#include <set>
#include <string>

namespace vorm::evaluation::test {

/// `in` is its course in a world.
template <class Course>
struct Said {
    std::string text;
    std::function<Course(const World&)> in;
    std::set<std::string> signals;
};

using SaidTruth = Said<TruthCourse>;
using SaidNumber = Said<Quantity>;

}  // namespace vorm::evaluation::test

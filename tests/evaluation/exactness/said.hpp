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

/// The text with the operand's in the place of `$`.
inline std::string filled(const std::string& pattern, const std::string& operand) {
    const std::size_t place = pattern.find('$');
    return pattern.substr(0, place) + operand + pattern.substr(place + 1);
}

template <class To, class From, class Function>
Said<To> of(const std::string& pattern, const Said<From>& x, const Function& function) {
    return {filled(pattern, x.text), [=](const World& world) { return function(x.in(world)); },
            x.signals};
}

/// The function may want to know the world, too.
template <class To, class From, class Function>
Said<To> of(const Said<From>& x, const std::string& sign, const Said<From>& y,
            const Function& function) {
    std::set<std::string> signals = x.signals;
    signals.insert(y.signals.begin(), y.signals.end());
    const auto in = [=](const World& world) {
        if constexpr (std::is_invocable_v<Function, World, From, From>) {
            return function(world, x.in(world), y.in(world));
        } else {
            return function(x.in(world), y.in(world));
        }
    };
    return {'(' + x.text + ' ' + sign + ' ' + y.text + ')', in, signals};
}

}  // namespace vorm::evaluation::test

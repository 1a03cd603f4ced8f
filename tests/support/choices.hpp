#pragma once

// Random choices, each as likely as the others whatever the size of the case. For use inside a
// property or rc::gen::exec.

#include <rapidcheck.h>

#include <initializer_list>
#include <vector>

namespace vorm::test {

/// A number from 0 to count - 1.
inline std::size_t anyIndex(std::size_t count) {
    return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange<std::size_t>(0, count));
}

template <class T>
T anyOf(std::initializer_list<T> values) {
    return values.begin()[anyIndex(values.size())];
}
template <class T>
T anyOf(const std::vector<T>& values) {
    return values[anyIndex(values.size())];
}

}  // namespace vorm::test

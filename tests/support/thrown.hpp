#pragma once

// What a call throws, as a value that can be looked at.

#include <stdexcept>

namespace vorm::test {

/// The failure of that class, or of one of its own, that the call ends with.
template <class Failure, class Call>
Failure thrown(const Call& call) {
    try {
        call();
    } catch (const Failure& failure) {
        return failure;
    }
    throw std::logic_error("nothing was thrown");
}

}  // namespace vorm::test

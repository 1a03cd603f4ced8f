#pragma once

// Whether a column of numbers is one of 64-bit integers that double cannot hold.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

class IntegerRange {
public:
    /// Takes a number's text in. The bits of the integer in two's complement; nothing where no
    /// 64-bit integer type holds all the numbers so far.
    std::optional<std::uint64_t> add(std::string_view text);

    /// The index of std::int64_t or std::uint64_t among the value types, where all numbers are
    /// integers of it and some have no double of their own.
    std::optional<std::size_t> valueType() const;

    /// Whether some 64-bit integer type holds all the numbers so far.
    bool areIntegers() const { return areIntegers_; }

    /// Whether some integer had no double of its own, up to the first number that is in no 64-bit
    /// integer type with those before it.
    bool hasInexact() const { return hasInexact_; }

private:
    bool areIntegers_ = true;
    bool hasNegative_ = false;
    bool hasGreat_ = false;    // above the greatest std::int64_t
    bool hasInexact_ = false;  // without a double of its own
};

/// Whether the text is a 64-bit integer without a double of its own.
inline bool isInexactInteger(std::string_view text) {
    IntegerRange range;
    range.add(text);
    return range.valueType().has_value();
}

}  // namespace vorm::evaluation

#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace vorm::evaluation {

__extension__ typedef __int128 WideInteger;

/// A time or a length of time: a whole number of attoseconds, 1e-18 s, and so every decimal of
/// seconds with up to 18 digits behind the point exactly. What is read reaches to 2e19 s on both
/// sides of 0. Sums and differences are exact; those of up to eight times that are read do not
/// overflow.
class ExactTime {
public:
    constexpr ExactTime() = default;
    constexpr explicit ExactTime(WideInteger attoseconds) : attoseconds_(attoseconds) {}

    /// A unit of decimals: one over which many are read is made once.
    class Unit {
    public:
        constexpr Unit(ExactTime length) : factor_(length.attoseconds_) {  // NOLINT: it is a time
            for (; factor_ % 10 == 0; factor_ /= 10) {
                ++zeros_;
            }
            mostDigits_ = (WideInteger{1} << 126) / factor_ / 10 - 1;
        }

    private:
        friend class ExactTime;
        WideInteger factor_;
        int zeros_ = 0;
        WideInteger mostDigits_ = 0;  // with one more the product with the factor still fits
    };

    /// A decimal number of that unit, `-12.5`, `.5`, `4.6408e4`, with a sign or without, of any
    /// length; what is finer than an attosecond is rounded, halves away from zero. Nothing for a
    /// text that is no such number, and for one beyond the range. Linear in the text.
    static std::optional<ExactTime> of(std::string_view decimal, const Unit& unit);

    /// The shortest decimal of seconds that reads back as that double: 0.3 is three tenths. Nothing
    /// for what is not finite or beyond the range.
    static std::optional<ExactTime> ofSeconds(double seconds);

    constexpr WideInteger attoseconds() const { return attoseconds_; }

    /// The nearest double to the number of units, each of which is 1 s at the most.
    double in(ExactTime unit) const;

    /// The nearest double to the number of seconds.
    double seconds() const;

    /// The number of seconds in full, as plain digits: `0.4`, `-3`, `1700000000.3`.
    std::string text() const;

    /// The number of units in full, as plain digits; nothing where no decimal is it exactly.
    std::optional<std::string> textIn(const Unit& unit) const;

    friend constexpr ExactTime operator+(ExactTime a, ExactTime b) {
        return ExactTime(a.attoseconds_ + b.attoseconds_);
    }
    friend constexpr ExactTime operator-(ExactTime a, ExactTime b) {
        return ExactTime(a.attoseconds_ - b.attoseconds_);
    }
    constexpr ExactTime operator-() const { return ExactTime(-attoseconds_); }
    constexpr ExactTime& operator+=(ExactTime other) { return *this = *this + other; }
    friend constexpr ExactTime operator*(WideInteger factor, ExactTime time) {
        return ExactTime(factor * time.attoseconds_);
    }
    friend constexpr bool operator==(ExactTime, ExactTime) = default;
    friend constexpr std::strong_ordering operator<=>(ExactTime, ExactTime) = default;

private:
    WideInteger attoseconds_ = 0;
};

}  // namespace vorm::evaluation

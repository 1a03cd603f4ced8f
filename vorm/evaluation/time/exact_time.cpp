#include "exact_time.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>

namespace vorm::evaluation {
namespace {

__extension__ typedef unsigned __int128 WideNatural;

constexpr int secondDigits = 18;  // of attoseconds behind the point
constexpr int powerCount = 39;    // that fit

constexpr std::array<WideNatural, powerCount> powersOfTen() {
    std::array<WideNatural, powerCount> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i) {
        powers[i] = powers[i - 1] * 10;
    }
    return powers;
}

constexpr auto tenTo = powersOfTen();

// The greatest numbers that stay within the range times each power. The range is an eighth of what
// a WideInteger holds.
constexpr std::array<WideNatural, powerCount> greatestNumbers() {
    std::array<WideNatural, powerCount> greatest{};
    for (std::size_t i = 0; i < greatest.size(); ++i) {
        greatest[i] = (~WideNatural{0} >> 4U) / tenTo[i];
    }
    return greatest;
}

constexpr auto mostTimesTenTo = greatestNumbers();

// `digits` times ten to the `exponent`.
struct Decimal {
    WideNatural digits = 0;
    int exponent = 0;
    bool isNegative = false;
};

// Reads digits of a decimal; those that no longer fit are far below an attosecond, or the number
// is beyond the range.
class DecimalReader {
public:
    DecimalReader(std::string_view text, WideInteger mostDigits)
        : at_(text.data()),
          end_(text.data() + text.size()),
          mostDigits_(static_cast<WideNatural>(mostDigits)) {}

    std::optional<Decimal> read() {
        if (at_ != end_ && (*at_ == '+' || *at_ == '-')) {
            decimal_.isNegative = *at_++ == '-';
        }
        std::size_t count = takeDigits(0);
        if (at_ != end_ && *at_ == '.') {
            ++at_;
            count += takeDigits(1);
        }
        if (count == 0 || !takeExponent() || at_ != end_) {
            return std::nullopt;
        }
        return decimal_;
    }

private:
    std::size_t takeDigits(int behindPoint) {
        const char* const begin = at_;
        takeShortDigits();
        decimal_.exponent -= behindPoint * static_cast<int>(at_ - begin);
        for (; at_ != end_ && isDigit(*at_); ++at_) {
            if (decimal_.digits <= mostDigits_) {
                decimal_.digits = decimal_.digits * 10 + static_cast<WideNatural>(*at_ - '0');
                decimal_.exponent -= behindPoint;
            } else {
                decimal_.exponent += 1 - behindPoint;
            }
        }
        return static_cast<std::size_t>(at_ - begin);
    }

    // Those that 64 bits hold, as nearly all numbers are short.
    void takeShortDigits() {
        constexpr std::uint64_t fullAt = 1'000'000'000'000'000'000;
        if (decimal_.digits >= fullAt) {
            return;
        }
        auto digits = static_cast<std::uint64_t>(decimal_.digits);
        const char* at = at_;
        for (; at != end_ && isDigit(*at) && digits < fullAt; ++at) {
            digits = digits * 10 + static_cast<std::uint64_t>(*at - '0');
        }
        at_ = at;
        decimal_.digits = digits;
    }

    bool takeExponent() {
        if (at_ == end_ || (*at_ != 'e' && *at_ != 'E')) {
            return true;
        }
        ++at_;
        const bool isNegative = at_ != end_ && *at_ == '-';
        at_ += at_ != end_ && (*at_ == '+' || *at_ == '-') ? 1 : 0;
        const char* const begin = at_;
        // Whatever is larger than this is beyond the range, or nothing.
        constexpr int most = 1'000'000;
        int exponent = 0;
        for (; at_ != end_ && isDigit(*at_); ++at_) {
            exponent = std::min(most, exponent * 10 + (*at_ - '0'));
        }
        decimal_.exponent += isNegative ? -exponent : exponent;
        return at_ != begin;
    }

    const char* at_;
    const char* const end_;
    const WideNatural mostDigits_;
    Decimal decimal_;
};

// Number times ten to the exponent, rounded; nothing beyond the range.
std::optional<WideNatural> scaled(WideNatural number, int exponent) {
    if (number == 0) {
        return number;
    }
    if (exponent >= 0) {
        if (exponent >= powerCount || number > mostTimesTenTo[static_cast<std::size_t>(exponent)]) {
            return std::nullopt;
        }
        return number * tenTo[static_cast<std::size_t>(exponent)];
    }
    if (-exponent >= powerCount) {
        return WideNatural{0};
    }
    const WideNatural divisor = tenTo[static_cast<std::size_t>(-exponent)];
    const WideNatural rest = number % divisor;
    return number / divisor + (rest >= divisor - rest ? 1U : 0U);
}

// No bit behind the point is left beside this number.
constexpr double wholeRounder = 0x1.8p52;

// The nearest double, or one beside it: an exact conversion takes longer.
double roughly(WideInteger number) {
    const auto low = static_cast<std::int64_t>(number);
    const auto high = static_cast<std::int64_t>((number - low) >> 64);
    return static_cast<double>(high) * 0x1p64 + static_cast<double>(low);
}

// The nearest double to a quotient, by a few operations on doubles; nothing where their rounding
// leaves it in doubt. The divisor is below 2^60.
std::optional<double> quickQuotient(WideInteger dividend, WideInteger divisor) {
    constexpr double most = 0x1p50;
    const double inverse = 1 / static_cast<double>(static_cast<std::int64_t>(divisor));
    const double estimate = roughly(dividend) * inverse;
    if (!(std::fabs(estimate) < most)) {
        return std::nullopt;
    }
    const double whole = (estimate + wholeRounder) - wholeRounder;
    const WideInteger rest = dividend - static_cast<std::int64_t>(whole) * divisor;
    const double fraction = static_cast<double>(static_cast<std::int64_t>(rest)) * inverse;
    // The fraction is rounded four times, by 2^-53 of it each.
    constexpr double doubt = 0x1p-50;
    const double least = whole + fraction * (1 - doubt);
    const double greatest = whole + fraction * (1 + doubt);
    return least == greatest ? std::optional(least) : std::nullopt;
}

// The nearest double to a quotient that is not 0. The divisor is below 2^60.
double exactQuotient(WideInteger dividend, WideInteger divisor) {
    const bool isNegative = dividend < 0;
    auto scaled = static_cast<WideNatural>(isNegative ? -dividend : dividend);
    int scale = 0;
    while (scaled >> 64 == 0) {
        scaled <<= 32;
        scale += 32;
    }
    const int free = std::countl_zero(static_cast<std::uint64_t>(scaled >> 64));
    scaled <<= free;
    scale += free;
    // More bits than a double has, the last one set where any follow: rounding these is rounding
    // the exact quotient.
    const auto natural = static_cast<WideNatural>(divisor);
    const WideNatural quotient = scaled / natural | (scaled % natural != 0 ? 1U : 0U);
    const double nearest = std::ldexp(static_cast<double>(quotient), -scale);
    return isNegative ? -nearest : nearest;
}

// The number with a point before the last digits, without zeros at the end of the fraction.
std::string plainDigits(WideInteger number, int digitsBehindPoint) {
    const bool isNegative = number < 0;
    auto rest = static_cast<WideNatural>(number);
    rest = isNegative ? -rest : rest;
    std::string reversed;
    for (int digit = 0; rest != 0 || digit <= digitsBehindPoint; ++digit) {
        if (digit == digitsBehindPoint && !reversed.empty()) {
            reversed += '.';
        }
        const auto last = static_cast<char>(rest % 10);
        rest /= 10;
        if (last != 0 || digit >= digitsBehindPoint || !reversed.empty()) {
            reversed += static_cast<char>('0' + last);
        }
    }
    if (isNegative) {
        reversed += '-';
    }
    return {reversed.rbegin(), reversed.rend()};
}

// What few digits say, as nearly all times do: a decimal of at most 15 digits is the only one of so
// few that reads back as its double, and a quotient of whole numbers is rounded like its text.
std::optional<ExactTime> ofFewDigits(double seconds) {
    const double magnitude = std::fabs(seconds);
    const double scale = magnitude < 1e6 ? 1e9 : 1e3;
    if (!(magnitude < 1e12)) {
        return std::nullopt;
    }
    const double digits = (seconds * scale + wholeRounder) - wholeRounder;
    if (digits / scale != seconds) {
        return std::nullopt;
    }
    const std::int64_t unit = magnitude < 1e6 ? 1'000'000'000 : 1'000'000'000'000'000;
    return ExactTime(WideInteger{static_cast<std::int64_t>(digits)} * unit);
}

}  // namespace

std::optional<ExactTime> ExactTime::of(std::string_view decimal, const Unit& unit) {
    const auto number = DecimalReader(decimal, unit.mostDigits_).read();
    if (!number) {
        return std::nullopt;
    }
    const auto magnitude = scaled(number->digits * static_cast<WideNatural>(unit.factor_),
                                  number->exponent + unit.zeros_);
    if (!magnitude) {
        return std::nullopt;
    }
    const auto attoseconds = static_cast<WideInteger>(*magnitude);
    return ExactTime(number->isNegative ? -attoseconds : attoseconds);
}

std::optional<ExactTime> ExactTime::ofSeconds(double seconds) {
    constexpr Unit oneSecond(ExactTime(static_cast<WideInteger>(tenTo[secondDigits])));
    if (const auto time = ofFewDigits(seconds)) [[likely]] {
        return time;
    }
    return std::isfinite(seconds) ? of(shortestNumber(seconds), oneSecond) : std::nullopt;
}

double ExactTime::in(ExactTime unit) const {
    const auto quick = quickQuotient(attoseconds_, unit.attoseconds_);
    return quick ? *quick : exactQuotient(attoseconds_, unit.attoseconds_);
}

double ExactTime::seconds() const {
    constexpr ExactTime oneSecond(static_cast<WideInteger>(tenTo[secondDigits]));
    return in(oneSecond);
}

std::string ExactTime::text() const {
    return plainDigits(attoseconds_, secondDigits);
}

std::optional<std::string> ExactTime::textIn(const Unit& unit) const {
    return attoseconds_ % unit.factor_ == 0
               ? std::optional(plainDigits(attoseconds_ / unit.factor_, unit.zeros_))
               : std::nullopt;
}

}  // namespace vorm::evaluation

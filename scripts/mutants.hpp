// Included before every source of the copy that scripts/mutants builds. Each fault stands in the
// code beside the original as an operand between the two of its operator, so that precedence stays
// what it is; the environment variable VORM_MUTANT chooses the one that acts. What a compiler
// evaluates has no fault. Faults that run add their number to the file VORM_MUTANTS_REACHED.
//
// Compiling all faults at once: R. Untch, A. J. Offutt, M. J. Harrold, "Mutation analysis using
// mutant schemata", ISSTA 1993.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <type_traits>
#include <utility>

namespace vorm_mutants {

inline constexpr int limit = 10000;

inline bool isChosen(int number) {
    static const int chosen = [] {
        const char* text = std::getenv("VORM_MUTANT");
        return text == nullptr ? -1 : std::atoi(text);
    }();
    return number == chosen;
}

inline void noteReached(int number) {
    static const char* const path = std::getenv("VORM_MUTANTS_REACHED");
    static std::array<std::atomic<bool>, limit> known;
    if (path == nullptr || known[static_cast<std::size_t>(number)].exchange(true)) {
        return;
    }
    if (std::FILE* file = std::fopen(path, "a")) {
        std::fprintf(file, "%d\n", number);
        std::fclose(file);
    }
}

constexpr bool on(int number) {
    if (std::is_constant_evaluated()) {
        return false;
    }
    noteReached(number);
    return isChosen(number);
}

// `left < M < right` is `left < right`, or what the fault makes of it.
template <int number, class Before, class After>
struct Binary {};
template <int number, class Before, class After>
inline constexpr Binary<number, Before, After> binary{};

template <class Left, int number, class Before, class After>
struct Bound {
    const Left& left;

    template <class Right>
    constexpr auto with(const Right& right) const {
        using Result = decltype(Before{}(left, right));
        return on(number) ? static_cast<Result>(After{}(left, right)) : Before{}(left, right);
    }
};

#define VORM_MUTANTS_BINARY(OPERATOR)                                                 \
    template <class Left, int number, class Before, class After>                      \
    constexpr Bound<Left, number, Before, After> operator OPERATOR(                   \
        const Left& left, Binary<number, Before, After>) {                            \
        return {left};                                                                \
    }                                                                                 \
    template <class Left, int number, class Before, class After, class Right>         \
    constexpr auto operator OPERATOR(const Bound<Left, number, Before, After>& bound, \
                                     const Right& right) {                            \
        return bound.with(right);                                                     \
    }
VORM_MUTANTS_BINARY(<)
VORM_MUTANTS_BINARY(<=)
VORM_MUTANTS_BINARY(>)
VORM_MUTANTS_BINARY(>=)
VORM_MUTANTS_BINARY(==)
VORM_MUTANTS_BINARY(!=)
VORM_MUTANTS_BINARY(+)
VORM_MUTANTS_BINARY(-)
#undef VORM_MUTANTS_BINARY

// `M ->* operand` is `!operand` or `-operand`, with the fault the operand.
template <int number, class Before>
struct Unary {};
template <int number, class Before>
inline constexpr Unary<number, Before> unary{};

template <int number, class Before, class Operand>
constexpr auto operator->*(Unary<number, Before>, const Operand& operand) {
    using Result = decltype(Before{}(operand));
    return on(number) ? static_cast<Result>(operand) : Before{}(operand);
}

template <int number, class Value>
constexpr Value instead(Value before, Value after) {
    return on(number) ? after : before;
}

// `left && known(n, x) || needed(n, x) && right`: with x true `left || right`, else `left &&
// right`, and the right operand is evaluated only where it counts.
inline thread_local std::array<bool, limit> leftWasTrue{};

inline bool known(int number, bool outcome) {
    leftWasTrue[static_cast<std::size_t>(number)] = true;
    return outcome;
}

inline bool needed(int number, bool outcome) {
    return std::exchange(leftWasTrue[static_cast<std::size_t>(number)], false) || outcome;
}

constexpr auto same = [](auto value) { return value; };

}  // namespace vorm_mutants

// A function that is called, or another one.
#define VORM_MUTANTS_CALL(number, before, after)                                  \
    [](const auto&... values) {                                                   \
        return ::vorm_mutants::on(number) ? after(values...) : before(values...); \
    }

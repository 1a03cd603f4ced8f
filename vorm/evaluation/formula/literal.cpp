#include "literal.hpp"

#include "number_text.hpp"

#include <vorm/assessments/expression/expression_factory.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <type_traits>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// A value, or what the type offers instead.
template <class T>
struct Read {
    std::optional<T> value;
    std::string instead;
};

template <class T>
Read<T> wholeNumber(const std::string& text) {
    using Limits = std::numeric_limits<T>;
    Read<T> result{std::nullopt,
                   std::to_string(Limits::min()) + " to " + std::to_string(Limits::max())};
    const Decimal number = decimalOf(text);
    const bool isFinite = text.find('n') == std::string::npos;
    if (!isFinite || number.exponent < 0 || number.exponent > Limits::digits10 + 1) {
        return result;
    }
    const std::string digits = (number.isNegative ? "-" : "") +
                               (number.digits.empty() ? "0" : number.digits) +
                               std::string(static_cast<std::size_t>(number.exponent), '0');
    T value = 0;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, value);
    if (stop == end && error == std::errc()) {
        result.value = value;
    }
    return result;
}

// Every digit of a finite double.
std::string digitsOf(double number) {
    std::array<char, 400> text;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, 0);
    return {text.data(), end.ptr};
}

template <class T>
Read<T> floatingNumber(const std::string& text) {
    using Nearest = std::conditional_t<std::is_same_v<T, float>, float, double>;
    const T value(nearestNumber<Nearest>(text));
    const double number = static_cast<double>(value);
    const bool isSymbolic = text.find('n') != std::string::npos;
    if (std::isinf(number) && !isSymbolic) {
        return {std::nullopt, "past the largest one"};
    }
    if (isWrittenWhole(text) && decimalOf(digitsOf(number)) != decimalOf(text)) {
        return {std::nullopt, "the nearest is " + digitsOf(number)};
    }
    return {value, ""};
}

Read<ValueType<FixedPoint>> fixedNumber(const std::string& text) {
    const auto number = nearestNumber<double>(text);
    if (!std::isfinite(number)) {
        return {std::nullopt, "there are only finite ones"};
    }
    const FixedPoint value(number);
    if (decimalOf(value.text()) != decimalOf(text)) {
        return {std::nullopt, "the nearest is " + value.text()};
    }
    return {ValueType<FixedPoint>(value), ""};
}

// The parser sees to it that a verdict or a bool has the text of one.
template <class T>
Read<T> read(const std::string& text) {
    if constexpr (std::is_same_v<T, bool>) {
        return {text == "true", ""};
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return {Verdict(*verdictOf(text)), ""};
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return fixedNumber(text);
    } else if constexpr (std::is_integral_v<T>) {
        return wholeNumber<T>(text);
    } else {
        static_assert(IsFloatingPoint<T>::value, "literals of this value type cannot be read");
        return floatingNumber<T>(text);
    }
}

template <class T>
Expression literal(const SyntaxNode& node) {
    const Read<T> result = read<T>(node.text);
    if (!result.value) {
        throw FormulaError(node.text + " is no value of " + valueTypeNames()[valueTypeIndex<T>] +
                               " (" + result.instead + ")",
                           node.where);
    }
    return ExpressionFactory().Constant(*result.value);
}

Expression storedFixed(const SyntaxNode& node) {
    try {
        const ValueType<FixedPoint> value(fixedPointOf(node.text, *node.storedType));
        return ExpressionFactory().Constant(value);
    } catch (const std::invalid_argument& problem) {
        std::string reason = problem.what();
        if (reason.ends_with('.')) {
            reason.pop_back();
        }
        throw FormulaError(reason, node.where,
                           "write the stored integer and the type: fixed(24, \"u16f4\")");
    }
}

}  // namespace

Expression literalOf(const SyntaxNode& node, std::size_t valueType) {
    if (node.storedType) {
        return storedFixed(node);
    }
    return boost::mp11::mp_with_index<boost::mp11::mp_size<ValueTypes>::value>(
        valueType,
        [&node](auto index) { return literal<boost::mp11::mp_at_c<ValueTypes, index>>(node); });
}

}  // namespace vorm::evaluation

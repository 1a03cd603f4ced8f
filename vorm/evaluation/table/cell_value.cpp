#include "cell_value.hpp"

#include <vorm/assessments/trace/value_type.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/number_text.hpp>

#include <stdexcept>

namespace vorm::evaluation {
namespace {

using assessments::FixedPoint;
using assessments::HalfFloat;
using assessments::ValueType;
using assessments::Verdict;

[[noreturn]] void fail(std::string_view text, const std::string& column, const std::string& kind,
                       std::string advice) {
    failAt({}, shown(text) + " in column " + shown(column) + " is no " + kind, std::move(advice));
}

[[noreturn]] void failForNumber(std::string_view text, const std::string& column) {
    const bool hasDigits = text.find_first_of("0123456789") != std::string_view::npos;
    if (hasDigits && text.find(',') != std::string_view::npos) {
        fail(
            text, column, "number",
            "the decimal separator is a point; a column of texts is declared with type = \"enum\"");
    }
    fail(text, column, "number",
         "leave the cell empty where there is no sample; a column of texts is declared with "
         "type = \"enum\"");
}

template <std::floating_point T>
T floatingValue(std::string_view text, const std::string& column) {
    const auto number = numberOf<T>(text);
    if (!number) [[unlikely]] {
        if (std::is_same_v<T, float> && numberOf<double>(text)) {
            fail(text, column, "float", "it is beyond the range of the type");
        }
        failForNumber(text, column);
    }
    return *number;
}

template <std::integral T>
T integerValue(std::string_view text, const std::string& column) {
    const auto number = numberOf<T>(text);
    if (!number) [[unlikely]] {
        const auto& name = valueTypeNames()[assessments::valueTypeIndex<T>];
        constexpr auto limits = std::numeric_limits<T>();
        fail(text, column, name,
             name + " holds the integers from " + std::to_string(+limits.min()) + " to " +
                 std::to_string(+limits.max()));
    }
    return *number;
}

bool isFalseText(std::string_view text) {
    return text == "false" || text == "False" || text == "FALSE";
}

bool isTrueText(std::string_view text) {
    return text == "true" || text == "True" || text == "TRUE";
}

bool truthValue(std::string_view text, const std::string& column) {
    if (isTrueText(text) || text == "1") {
        return true;
    }
    if (isFalseText(text) || text == "0") {
        return false;
    }
    fail(text, column, "bool", "it is true, false, 1 or 0");
}

ValueType<FixedPoint> fixedValue(std::string_view text, const std::string& column) {
    try {
        return ValueType<FixedPoint>(FixedPoint(floatingValue<double>(text, column)));
    } catch (const std::invalid_argument&) {
        fail(text, column, "fixed", "the type has no such number");
    }
}

Verdict verdictValue(std::string_view text, const std::string& column) {
    using assessments::resultEnum_t;
    if (text == "PASS") {
        return Verdict(resultEnum_t::PASS);
    }
    if (text == "FAIL") {
        return Verdict(resultEnum_t::FAIL);
    }
    if (text == "NO_RESULT") {
        return Verdict(resultEnum_t::NO_RESULT);
    }
    fail(text, column, "verdict", "it is PASS, FAIL or NO_RESULT");
}

}  // namespace

bool isTruthText(std::string_view text) {
    return isTrueText(text) || isFalseText(text);
}

template <class T>
T cellValue(std::string_view text, const std::string& column) {
    if constexpr (std::is_same_v<T, bool>) {
        return truthValue(text, column);
    } else if constexpr (std::is_integral_v<T>) {
        return integerValue<T>(text, column);
    } else if constexpr (std::is_same_v<T, HalfFloat>) {
        return HalfFloat(floatingValue<double>(text, column));
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return fixedValue(text, column);
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return verdictValue(text, column);
    } else {
        return floatingValue<T>(text, column);
    }
}

#define VORM_VALUE_TYPE(T) template T cellValue<T>(std::string_view, const std::string&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::evaluation

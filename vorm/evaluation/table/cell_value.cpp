#include "cell_value.hpp"

#include <vorm/assessments/trace/value_type.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>
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

[[noreturn]] void fail(std::string_view text, const std::string& subject, const std::string& kind,
                       std::string advice) {
    failAt({}, shown(text) + " in " + subject + " is no " + kind, std::move(advice));
}

[[noreturn]] void failForNumber(std::string_view text, const std::string& subject) {
    const bool hasDigits = text.find_first_of("0123456789") != std::string_view::npos;
    if (hasDigits && text.find(',') != std::string_view::npos) {
        fail(text, subject, "number",
             "the decimal separator is a point, unless [recording] decimal = \"comma\" says "
             "otherwise; "
             "a column of texts is declared with type = \"enum\"");
    }
    fail(text, subject, "number",
         "leave the cell empty where there is no sample; a column of texts is declared with "
         "type = \"enum\"");
}

template <std::floating_point T>
T floatingValue(std::string_view text, const std::string& subject) {
    const auto number = numberOf<T>(text);
    if (!number) [[unlikely]] {
        if (std::is_same_v<T, float> && numberOf<double>(text)) {
            fail(text, subject, "float", "it is beyond the range of the type");
        }
        failForNumber(text, subject);
    }
    return *number;
}

template <std::integral T>
T integerValue(std::string_view text, const std::string& subject) {
    const auto number = numberOf<T>(text);
    if (!number) [[unlikely]] {
        const auto& name = valueTypeNames()[assessments::valueTypeIndex<T>];
        constexpr auto limits = std::numeric_limits<T>();
        fail(text, subject, name,
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

bool truthValue(std::string_view text, const std::string& subject) {
    if (isTrueText(text) || text == "1") {
        return true;
    }
    if (isFalseText(text) || text == "0") {
        return false;
    }
    fail(text, subject, "bool", "it is true, false, 1 or 0");
}

ValueType<FixedPoint> fixedValue(std::string_view text, const std::string& subject) {
    try {
        return ValueType<FixedPoint>(FixedPoint(floatingValue<double>(text, subject)));
    } catch (const std::invalid_argument&) {
        fail(text, subject, "fixed", "the type has no such number");
    }
}

Verdict verdictValue(std::string_view text, const std::string& subject) {
    if (const auto verdict = verdictOf(text)) {
        return Verdict(*verdict);
    }
    fail(text, subject, "verdict", "it is PASS, FAIL or NO_RESULT");
}

}  // namespace

void failForPoint(const Cell& cell, const std::string& subject) {
    failAt({},
           shown(cell.text) + " in " + subject + " has a decimal point where numbers have a comma",
           "where numbers have a point: [recording] decimal = \"point\"; points between thousands "
           "are not read");
}

bool isTruthText(std::string_view text) {
    return isTrueText(text) || isFalseText(text);
}

template <class T>
T cellValue(std::string_view text, const std::string& subject) {
    if constexpr (std::is_same_v<T, bool>) {
        return truthValue(text, subject);
    } else if constexpr (std::is_integral_v<T>) {
        return integerValue<T>(text, subject);
    } else if constexpr (std::is_same_v<T, HalfFloat>) {
        return HalfFloat(floatingValue<double>(text, subject));
    } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
        return fixedValue(text, subject);
    } else if constexpr (std::is_same_v<T, Verdict>) {
        return verdictValue(text, subject);
    } else {
        static_assert(std::is_floating_point_v<T>, "cells of this value type cannot be read");
        return floatingValue<T>(text, subject);
    }
}

#define VORM_VALUE_TYPE(T) template T cellValue<T>(std::string_view, const std::string&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::evaluation

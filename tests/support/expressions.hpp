#pragma once

// Random formulas of every kind, and what a formula says as one text.

#include "choices.hpp"

#include <vorm/assessments.hpp>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

namespace vorm::test {

using namespace vorm::assessments;

inline boost::uuids::uuid idOf(std::uint8_t number) {
    boost::uuids::uuid id{};
    // Ids differ in any one of their bytes.
    id.data[number % 16] = number;
    return id;
}

/// The number of a signal of the function below.
inline std::uint8_t numberOf(const variable& node) {
    return *std::max_element(node.id.begin(), node.id.end());
}

/// The signal of that number; another name is another spelling of the same signal.
inline Expression signal(std::uint8_t number, const std::string& name = "x") {
    return variable(name + std::to_string(number), idOf(number));
}

/// A NaN with a payload of its own.
inline double nanOf(std::uint64_t payload) {
    return std::bit_cast<double>(0x7ff8'0000'0000'0000U | payload);
}

// What follows is for use inside a property or rc::gen::exec.

inline double anyNumber() {
    return anyOf<double>({0.0, -0.0, 1.0, 2.5, -3.0, 1e-7, nanOf(1), nanOf(2),
                          std::numeric_limits<double>::infinity()});
}

inline constantValue::Value anyValue() {
    const double number = anyNumber();
    const auto small = anyOf<std::int8_t>({-2, -1, 0, 1, 2});
    const bool flag = *rc::gen::arbitrary<bool>();
    const platform::NumericTypeDescriptor wide(platform::NumericScaling::BinaryPoint,
                                               platform::Signedness::Signed, 40, 1, 8, 0);
    return anyOf<constantValue::Value>(
        {number, static_cast<float>(number), HalfFloat(number), HalfFloat::fromBits(0x7e01), small,
         static_cast<std::uint8_t>(small), static_cast<std::int16_t>(small),
         static_cast<std::uint16_t>(small), std::int32_t{small}, static_cast<std::uint32_t>(small),
         std::int64_t{small}, static_cast<std::uint64_t>(small), flag,
         ValueType<FixedPoint>(FixedPoint(small)), ValueType<FixedPoint>(FixedPoint(small, wide)),
         Verdict(flag ? resultEnum_t::PASS : resultEnum_t::NO_RESULT)});
}

inline Expression anyFormula(std::size_t levels);

inline AliasArgument anyArgument(std::size_t levels) {
    switch (anyIndex(6)) {
        case 0:
            return *rc::gen::arbitrary<bool>();
        case 1:
            return static_cast<int>(anyIndex(2));
        case 2:
            return anyNumber();
        case 3:
            return anyOf<const char*>({"->", "1", "", nullptr});
        case 4:
            return anyOf<std::string>({"->", "1", ""});
        default:
            return anyFormula(levels);
    }
}

inline Expression anyAlias(std::size_t levels) {
    const auto argument = [levels] { return anyArgument(levels); };
    switch (anyIndex(3)) {
        case 0:
            return alias(anyFormula(levels));
        case 1:
            return alias(anyFormula(levels), argument());
        default:
            return alias(anyFormula(levels), argument(), argument());
    }
}

inline Expression anyLeaf() {
    switch (anyIndex(5)) {
        case 0:
            return nilClass();
        case 1:
            return constantValue(anyOf<std::int32_t>({1, 2}), anyOf<std::string>({"1", "c"}),
                                 anyValue(), anyOf<std::string>({"", "named"}));
        default:
            return signal(static_cast<std::uint8_t>(anyIndex(4)),
                          anyOf<std::string>({"x", "other"}));
    }
}

/// A formula of at most that many levels, the arguments of its aliases included.
inline Expression anyFormula(std::size_t levels) {
    if (levels <= 1) {
        return anyLeaf();
    }
    const auto child = [levels] { return anyFormula(levels - 1); };
    const auto op = anyOf<VORM_OP>({VORM_OP::Plus, VORM_OP::Minus, VORM_OP::UnaryMinus});
    const auto label = anyOf<std::string>({"+", "-"});
    switch (anyIndex(9)) {
        case 0:
            return unary_op(op, child(), label);
        case 1:
        case 2:
            return binary_op(op, child(), child(), label);
        case 3:
            return timed_unary_op(op, child(), label, anyNumber());
        case 4:
            return timedwindow_unary_op(op, child(), label, anyNumber(), anyNumber());
        case 5:
            return timedwindow_binary_op(op, child(), child(), label, anyNumber(), anyNumber());
        case 6:
            return cast_op(child(), anyOf<cast_op::Target>(
                                        {cast_op::castFlag<double>(), cast_op::castFlag<bool>()}));
        case 7:
            return anyAlias(levels - 1);
        default:
            return anyLeaf();
    }
}

/// What counts for the sameness of formulas, as a text; recursive, for formulas of few levels.
class Meaning : public boost::static_visitor<std::string> {
public:
    explicit Meaning(bool throughAliases) : throughAliases_(throughAliases) {}

    std::string of(const Expression& tree) const { return boost::apply_visitor(*this, tree); }

    std::string operator()(const nilClass&) const { return "nil"; }
    std::string operator()(const constantValue& node) const {
        const auto value = [](const auto& typed) { return valueText(typed); };
        return "constant " + std::to_string(node.tag) + " " + std::to_string(node.value.which()) +
               " " + boost::apply_visitor(value, node.value);
    }
    std::string operator()(const variable& node) const {
        return "signal " + std::string(node.id.begin(), node.id.end());
    }
    std::string operator()(const unary_op& node) const {
        return "u" + code(node.op) + "(" + of(node.child) + ")";
    }
    std::string operator()(const binary_op& node) const {
        return "b" + code(node.op) + "(" + of(node.lhs) + "," + of(node.rhs) + ")";
    }
    std::string operator()(const timed_unary_op& node) const {
        return "t" + number(node.offset) + (*this)(static_cast<const unary_op&>(node));
    }
    std::string operator()(const timedwindow_unary_op& node) const {
        return "w" + number(node.a) + number(node.b) + (*this)(static_cast<const unary_op&>(node));
    }
    std::string operator()(const timedwindow_binary_op& node) const {
        return "w" + number(node.a) + number(node.b) + (*this)(static_cast<const binary_op&>(node));
    }
    std::string operator()(const cast_op& node) const {
        return "c" + std::to_string(node.target.which()) +
               (*this)(static_cast<const unary_op&>(node));
    }
    std::string operator()(const alias& node) const {
        if (throughAliases_) {
            return of(node.body);
        }
        std::string text = "alias(" + of(node.body);
        for (const AliasArgument& argument : node.arguments) {
            text += "," + std::to_string(argument.which()) + argumentText(argument);
        }
        return text + ")";
    }

    static std::string number(double value) {
        if (value != value) {
            return "nan ";
        }
        std::ostringstream text;
        text << std::hexfloat << (value == 0 ? 0.0 : value) << ' ';
        return text.str();
    }

private:
    static std::string code(VORM_OP op) { return std::to_string(static_cast<int>(op)); }

    template <class T>
    static std::string valueText(const T& value) {
        if constexpr (std::is_same_v<T, Verdict>) {
            return std::to_string(static_cast<int>(value.get()));
        } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
            return value.get().text() + " " + value.get().descriptor().text();
        } else {
            return number(static_cast<double>(value));
        }
    }

    std::string argumentText(const AliasArgument& argument) const {
        switch (argument.which()) {
            case 2:
                return number(boost::get<double>(argument));
            case 3: {
                const char* text = boost::get<const char*>(argument);
                return text == nullptr ? "" : text;
            }
            case 4:
                return boost::get<std::string>(argument);
            case 5:
                return of(boost::get<Expression>(argument));
            default:
                return std::to_string(argument.which() == 0 ? boost::get<bool>(argument)
                                                            : boost::get<int>(argument));
        }
    }

    bool throughAliases_;
};

/// `op` applied to a signal as many times as it takes to have that many levels.
template <class Wrap>
Expression tower(std::size_t levels, Wrap wrap) {
    Expression tree = signal(0);
    for (std::size_t level = 1; level < levels; ++level) {
        tree = wrap(std::move(tree));
    }
    return tree;
}

inline constexpr std::size_t logicKindsWithoutWindows = 5;
inline constexpr std::size_t logicKinds = 15;

/// The end of a window, or none, or the end of what was recorded.
inline double orNoEnd(double b) {
    switch (anyIndex(8)) {
        case 0:
            return std::numeric_limits<double>::infinity();
        case 1:
            return std::numeric_limits<double>::max();
        default:
            return b;
    }
}

/// One kind of logic over operands that `deeper` gives, with windows between the numbers.
template <class Deeper>
Expression logicOf(std::size_t kind, double a, double b, const Deeper& deeper) {
    const ExpressionFactory factory;
    switch (kind) {
        case 0:
            return factory.Not(deeper());
        case 1:
            return factory.And(deeper(), deeper());
        case 2:
            return factory.Or(deeper(), deeper());
        case 3:
            return factory.Implies(deeper(), deeper());
        case 4:
            return factory.Shift(anyOf<double>({a, -a}), deeper());
        case 5:
            return factory.Globally(a, b, deeper());
        case 6:
            return factory.Eventually(-b, a, deeper());
        case 7:
            return factory.Globally(-b, -a, deeper());
        case 8:
            return factory.Until(deeper(), a, orNoEnd(b), deeper());
        case 9:
            return factory.Once(a, orNoEnd(b), deeper());
        case 10:
            return factory.Historically(a, orNoEnd(b), deeper());
        case 11:
            return factory.Since(deeper(), a, orNoEnd(b), deeper());
        case 12:
            return factory.Globally(a, orNoEnd(b), deeper());
        case 13:
            return binary_op(VORM_OP::Implies, deeper(), deeper(), "->");
        default:
            return factory.Eventually(a, orNoEnd(b), deeper());
    }
}

}  // namespace vorm::test

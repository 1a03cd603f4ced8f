#include "literal_text.hpp"

#include "quoted_text.hpp"
#include "spellings.hpp"
#include "token.hpp"

#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <boost/variant/apply_visitor.hpp>

#include <array>
#include <charconv>
#include <type_traits>

namespace vorm::evaluation {
namespace {

using namespace assessments;

std::string shortest(float number) {
    std::array<char, 64> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return number != number ? "nan" : std::string(text.data(), end);
}

std::string fixedText(const FixedPoint& number) {
    const bool isDefault = number.descriptor() == platform::NumericTypeDescriptor();
    return isDefault ? number.text()
                     : number.storedInteger() + ", \"" + number.descriptor().text() + '"';
}

struct LiteralText : boost::static_visitor<std::string> {
    template <class T>
    std::string operator()(const T& value) const {
        if constexpr (std::is_same_v<T, bool>) {
            return value ? "true" : "false";
        } else if constexpr (std::is_same_v<T, Verdict>) {
            return inQuotes(std::string(verdictName(value.get())), '"');
        } else if constexpr (std::is_same_v<T, ValueType<FixedPoint>>) {
            return fixedText(value.get());
        } else if constexpr (std::is_same_v<T, float>) {
            return shortest(value);
        } else if constexpr (std::is_integral_v<T>) {
            return std::to_string(value);
        } else {
            static_assert(std::is_same_v<T, double> || std::is_same_v<T, HalfFloat>,
                          "literals of this value type have no text");
            return shortestNumber(static_cast<double>(value));
        }
    }
};

}  // namespace

std::string nameText(const std::string& name) {
    if (const auto signal = signalOfHeldName(name)) {
        return heldName(nameText(*signal));
    }
    const bool isPlain = isName(name) && !isOperatorWord(name);
    return isPlain ? name : inQuotes(name, '"');
}

std::string literalText(const constantValue& literal, bool showsType) {
    constexpr std::int32_t plainLiteral = 1;
    if (literal.tag != plainLiteral) {
        return inQuotes(literal.label, '\'');
    }
    const auto type = static_cast<std::size_t>(literal.value.which());
    const bool isBare = type == valueTypeIndex<double> || type == valueTypeIndex<bool>;
    const std::string value = boost::apply_visitor(LiteralText(), literal.value);
    return isBare && !showsType ? value : valueTypeNames()[type] + "(" + value + ")";
}

}  // namespace vorm::evaluation

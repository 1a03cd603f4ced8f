#include "natural_order.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

// Takes the number that a text begins with, without zeros in front of it.
std::string_view takeNumber(std::string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), isDigit);
    std::string_view number = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text.remove_prefix(number.size());
    number.remove_prefix(std::min(number.find_first_not_of('0'), number.size()));
    return number;
}

}  // namespace

bool isNaturallyBefore(std::string_view one, std::string_view other) {
    const std::string_view wholeOne = one;
    const std::string_view wholeOther = other;
    while (!one.empty() && !other.empty()) {
        if (isDigit(one.front()) && isDigit(other.front())) {
            const std::string_view number = takeNumber(one);
            const std::string_view otherNumber = takeNumber(other);
            if (number != otherNumber) {
                return number.size() != otherNumber.size() ? number.size() < otherNumber.size()
                                                           : number < otherNumber;
            }
            continue;
        }
        if (one.front() != other.front()) {
            return static_cast<unsigned char>(one.front()) <
                   static_cast<unsigned char>(other.front());
        }
        one.remove_prefix(1);
        other.remove_prefix(1);
    }
    if (one.empty() != other.empty()) {
        return one.empty();
    }
    return wholeOne.size() != wholeOther.size() ? wholeOne.size() < wholeOther.size()
                                                : wholeOne < wholeOther;
}

}  // namespace vorm::evaluation

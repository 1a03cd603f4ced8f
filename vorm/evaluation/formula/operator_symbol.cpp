#include "operator_symbol.hpp"

#include <stdexcept>

namespace vorm::evaluation {

using assessments::VORM_OP;

std::string_view symbolOf(VORM_OP op) {
    switch (op) {
        case VORM_OP::Plus:
            return " + ";
        case VORM_OP::Minus:
            return " - ";
        case VORM_OP::Multiply:
            return " * ";
        case VORM_OP::Eq:
            return " == ";
        case VORM_OP::Neq:
            return " ~= ";
        case VORM_OP::Lt:
            return " < ";
        case VORM_OP::Leq:
            return " <= ";
        case VORM_OP::Gt:
            return " > ";
        case VORM_OP::Geq:
            return " >= ";
        case VORM_OP::And:
            return " & ";
        case VORM_OP::Or:
            return " | ";
        default:
            throw std::invalid_argument("the formula has an unknown operator of two operands");
    }
}

std::string_view prefixOf(VORM_OP op) {
    switch (op) {
        case VORM_OP::UnaryMinus:
            return "-";
        case VORM_OP::Not:
            return "~";
        case VORM_OP::Abs:
            return "abs";
        case VORM_OP::Slope:
            return "slope";
        case VORM_OP::Globally:
            return "Globally";
        case VORM_OP::Eventually:
            return "Eventually";
        case VORM_OP::Shift:
            return "Shift";
        case VORM_OP::EpsilonShift:
            return "EpsilonShift";
        default:
            throw std::invalid_argument("the formula has an unknown operator of one operand");
    }
}

}  // namespace vorm::evaluation

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
        case VORM_OP::None:
        case VORM_OP::Cast:
        case VORM_OP::UnaryMinus:
        case VORM_OP::Abs:
        case VORM_OP::Slope:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
        case VORM_OP::Not:
        case VORM_OP::Eventually:
        case VORM_OP::Globally:
        case VORM_OP::Until:
        case VORM_OP::Shift:
        case VORM_OP::EpsilonShift:
            break;
    }
    throw std::invalid_argument("the formula has an unknown operator of two operands");
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
        case VORM_OP::None:
        case VORM_OP::Cast:
        case VORM_OP::Plus:
        case VORM_OP::Minus:
        case VORM_OP::Multiply:
        case VORM_OP::Reserved8:
        case VORM_OP::Reserved9:
        case VORM_OP::Eq:
        case VORM_OP::Neq:
        case VORM_OP::Lt:
        case VORM_OP::Leq:
        case VORM_OP::Gt:
        case VORM_OP::Geq:
        case VORM_OP::And:
        case VORM_OP::Or:
        case VORM_OP::Until:
            break;
    }
    throw std::invalid_argument("the formula has an unknown operator of one operand");
}

}  // namespace vorm::evaluation

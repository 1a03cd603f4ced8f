#pragma once

#include <vorm/assessments/expression/unary_op.hpp>

#include <boost/variant/variant.hpp>

#include <string>
#include <utility>

namespace vorm::assessments {

/// The conversion of a formula's values to another value type; the only conversion there is.
struct VORM_ASSESSMENTS_EXPORT cast_op : unary_op {
    /// Stands for the value type T.
    template <class T>
    struct castFlag {};

    /// One alternative per value type, in the order of ValueTypes.
    using Target =
        boost::mp11::mp_transform<castFlag, boost::mp11::mp_rename<ValueTypes, boost::variant>>;

    Target target;

    cast_op(const Expression& operand, Target type, std::string symbol = "cast")
        : unary_op(VORM_OP::Cast, operand, std::move(symbol)), target(std::move(type)) {}
    cast_op(Expression&& operand, Target type, std::string symbol = "cast")
        : unary_op(VORM_OP::Cast, std::move(operand), std::move(symbol)), target(std::move(type)) {}

    cast_op(const cast_op& other, detail::WithoutChildren mark)
        : unary_op(other, mark), target(other.target) {}
};

}  // namespace vorm::assessments

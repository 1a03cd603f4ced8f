#pragma once

// The leaves of a formula, and its type before its operator nodes are known. Users include
// expression.hpp.

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/trace/value_type.hpp>

#include <boost/uuid/uuid.hpp>
#include <boost/variant/recursive_wrapper.hpp>
#include <boost/variant/variant.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace vorm::assessments {

/// The absence of a formula.
struct VORM_ASSESSMENTS_EXPORT nilClass {};

/// A literal. It is the same as another one of the same tag, type and value.
struct VORM_ASSESSMENTS_EXPORT constantValue {
    /// One alternative per value type, in the order of ValueTypes.
    using Value = boost::mp11::mp_rename<ValueTypes, boost::variant>;

    std::int32_t tag;   ///< 1 for every literal that the factory makes
    std::string label;  ///< the text of the literal
    Value value;
    std::string name;  ///< what its user calls it, perhaps empty

    constantValue(std::int32_t meaning, std::string text, Value literal, std::string given = {})
        : tag(meaning), label(std::move(text)), value(std::move(literal)), name(std::move(given)) {}
};

/// A signal. It is its id: the name is only for reading.
struct VORM_ASSESSMENTS_EXPORT variable {
    std::string name;
    boost::uuids::uuid id;

    variable(std::string signal, const boost::uuids::uuid& identity)
        : name(std::move(signal)), id(identity) {}
};

struct unary_op;
struct binary_op;
struct timed_unary_op;
struct timedwindow_unary_op;
struct timedwindow_binary_op;
struct cast_op;
struct alias;

/// A formula over signals: a tree of operators, with the semantics of a value.
///
/// A default one is nilClass. A copy copies the whole tree; a move takes a constant time and
/// leaves a tree that can be destroyed, assigned and read, but says nothing and is no operand. A
/// move can throw std::bad_alloc, so that a growing std::vector of formulas copies them. A node
/// never changes after construction: its fields are there to be read.
///
/// A tree has at most maximumExpressionLevels levels; the constructors of the nodes throw
/// AssessmentInternalException beyond that. Nothing in the library recurses over a tree, so that
/// the stack of the caller's thread does not limit it.
///
/// As with every boost::variant, a tree cannot be assigned one of its own sub-trees directly; copy
/// the sub-tree first.
using Expression =
    boost::variant<nilClass, constantValue, variable, boost::recursive_wrapper<unary_op>,
                   boost::recursive_wrapper<binary_op>, boost::recursive_wrapper<timed_unary_op>,
                   boost::recursive_wrapper<timedwindow_unary_op>,
                   boost::recursive_wrapper<timedwindow_binary_op>,
                   boost::recursive_wrapper<cast_op>, boost::recursive_wrapper<alias>>;

/// The most levels that a formula can have. A leaf is one level, an operator or an alias one more
/// than the deepest of its operands.
inline constexpr std::size_t maximumExpressionLevels = 100'000;

}  // namespace vorm::assessments

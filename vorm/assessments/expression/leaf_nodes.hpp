#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/trace/value_type.hpp>

#include <boost/uuid/uuid.hpp>
#include <boost/variant/variant.hpp>

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

}  // namespace vorm::assessments

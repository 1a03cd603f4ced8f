#pragma once

#include <vorm/assessments/value_types.hpp>

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// A type whose values are names. In a trace the values are the positions of the members, as
/// std::int32_t, and the trace's enumTypeName is `name`.
struct Enumeration {
    std::string name;
    std::vector<std::string> members;
    bool isGathered = false;  ///< not declared: it has the members that occur in a recording

    /// The position of a member, or nothing.
    std::optional<std::int32_t> valueOf(std::string_view member) const;
};

/// The type of a signal or of a formula's value. Two enumerations are the same type when their
/// names are.
struct SignalType {
    /// The index in ValueTypes; nothing where no data tell it yet. That of std::int32_t for an
    /// enumeration.
    std::optional<std::size_t> valueType;
    std::shared_ptr<const Enumeration> enumeration;  ///< or null

    template <class T>
    static SignalType of() {
        return {assessments::valueTypeIndex<T>, nullptr};
    }
    static SignalType of(std::shared_ptr<const Enumeration> enumeration);

    bool isKnown() const { return valueType.has_value(); }
    bool isEnumerated() const { return enumeration != nullptr; }
    template <class T>
    bool is() const {
        return valueType == assessments::valueTypeIndex<T> && enumeration == nullptr;
    }

    friend bool operator==(const SignalType& a, const SignalType& b);
};

/// The names of the value types in formulas and assessment files, by their index: double, float,
/// int8, uint8, ..., uint64, bool, half, fixed, verdict.
const std::vector<std::string>& valueTypeNames();

/// The index of the value type of that name, or nothing. `single` is float, `logical` is bool.
std::optional<std::size_t> valueTypeOf(std::string_view name);

/// Whether values of the type of that index can lie on lines between samples.
bool hasLines(std::size_t valueType);

/// `double`, `enumeration Mode`, or `unknown type`.
std::string typeText(const SignalType& type);

}  // namespace vorm::evaluation

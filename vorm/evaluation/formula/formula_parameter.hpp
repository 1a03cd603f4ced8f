#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vorm::evaluation {

enum class ParameterKind : std::uint8_t { Number, Bool, Text };

/// A value that formulas name, `$limit`, where a literal or a time may stand.
struct FormulaParameter {
    std::string name{};
    ParameterKind kind = ParameterKind::Text;
    std::string value{};   ///< a number or a bool as formulas write it, `-27.8`, or the text itself
    std::string source{};  ///< where the value was given, for messages: `limits.toml:3`, `--set`
    std::optional<std::string> initial{};  ///< the value that this one was set in place of
};

/// In the order in which they were declared; their names differ.
using FormulaParameters = std::vector<FormulaParameter>;

/// A value of that kind as people read it: `27.8`, `true`, `"active"`.
std::string parameterText(ParameterKind kind, const std::string& value);

/// The value itself. A number that is written without point and exponent is an integer, and another
/// one the nearest double.
std::variant<bool, std::int64_t, double, std::string> valueOf(const FormulaParameter& parameter);

/// The parameter of that name, or null.
const FormulaParameter* findParameter(const FormulaParameters& parameters, std::string_view name);

/// The names of all of them.
std::vector<std::string> namesOf(const FormulaParameters& parameters);

}  // namespace vorm::evaluation

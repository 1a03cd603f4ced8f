#pragma once

#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/trace/interpolation.hpp>
#include <vorm/evaluation/formula/definition_names.hpp>
#include <vorm/evaluation/formula/formula_error.hpp>
#include <vorm/evaluation/formula/formula_parameter.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/time/time_text.hpp>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

struct SyntaxNode;

/// A formula's text, read but not yet tied to signals. Copies share what was read.
class ParsedFormula {
public:
    /// Reads a text. Throws FormulaError, with its place in the text, where it is no formula: at
    /// the first place that does not fit, with what was expected there. Nesting deeper than
    /// maximumNesting is an error; long chains such as `a & b & c` are not nested. Linear in the
    /// text.
    ///
    /// From the loosest to the tightest:
    ///
    ///     p -> q, p implies q                   of several the right one first
    ///     p | q, p || q, p or q
    ///     p & q, p && q, p and q
    ///     p until[0, 5 s] q, also U and Until; p since[0, 5 s] q, also S and Since
    ///     x == y, ~=, !=, <, <=, >, >=, x in {1, 2}
    ///                                           several only in one direction: 0 <= x < y
    ///     x + y, x - y
    ///     x * y, x / y
    ///     ~p, !p, not p, -x, always[0, 5 s] p, eventually[0, 5 s] p, also G, Globally, F,
    ///     Eventually, historically[0, 5 s] p, once[0, 5 s] p, also H, Historically, O, Once;
    ///     min[0, 5 s] x, max, integral, mean, duration, count; Shift[1 s](x),
    ///     EpsilonShift[1](x), Rise[2 s](x, 5), Fall[2 s](x, 5); rise(p), fall(p), changed(x),
    ///     slope(x), abs(x), sign, sqrt, exp, log, sin, cos, round, floor, ceil, min(x, y), max,
    ///     pow; held(speed) of a signal; int8(x) and the other value types, (p), 12.5, true, nan,
    ///     inf, speed, "Volume Flow", 'N', $limit
    ///
    /// Chains of comparisons and `in` are read as the conjunction and the disjunction that they
    /// stand for.
    ///
    /// Intervals are closed, in seconds or with one of the units fs, ps, ns, us, ms, s, min, h.
    /// Their end may be inf, and `end` in what looks ahead, `begin` in what looks back; without an
    /// interval they are [0, inf]. A minus sign that touches a number is part of it. A value type
    /// of a literal alone is a literal of that type, `fixed(24, "u16f4")` the fixed-point number of
    /// that stored integer and type. `$limit` is the value of a parameter, never more than one
    /// operand: a number, a bool, or a text, which is a member of an enumeration and, with a unit,
    /// a time. `#` and `//` begin comments. Operators that are words, except always, eventually,
    /// until, and, or, implies, not, are names of signals where an operand stands and their bracket
    /// does not follow.
    ///
    /// What to_string of a formula prints is read, too, as far as it is clear: names are not quoted
    /// there, and implications inside other operators stand without brackets.
    ///
    /// Without parameters, null, any `$name` is an error.
    explicit ParsedFormula(std::string text,
                           std::shared_ptr<const FormulaParameters> parameters = nullptr);

    static constexpr std::size_t maximumNesting = 500;

    const std::string& text() const { return text_; }
    /// What was read, operands before their operators.
    const std::vector<SyntaxNode>& nodes() const { return *nodes_; }

    /// The names that may be signals or definitions, each once, and the quoted names that may as
    /// well be members of an enumeration. `held(x)` is one besides `x`.
    std::set<std::string> names() const;

    /// Whether the text could have named a parameter by `$name`.
    bool hasParameter(std::string_view name) const;

    /// An error of this text with its place, and with the values of the parameters that its span
    /// holds.
    FormulaError placed(const FormulaError& error) const;

private:
    std::string text_;
    std::shared_ptr<const FormulaParameters> parameters_;
    std::shared_ptr<const std::vector<SyntaxNode>> nodes_;
};

/// What the names in a formula mean.
struct FormulaNames {
    /// The type of the signal of that name, or nothing where there is none.
    std::function<std::optional<SignalType>(const std::string&)> signalType;
    /// Formulas that stand for their text wherever their name stands. They come before signals.
    std::map<std::string, ParsedFormula> definitions;
    /// All names of signals, for suggestions.
    std::vector<std::string> signalNames;
    /// What else may be the reason that a signal is not there, for the advice; or empty.
    std::string whySignalsMayMiss;
    /// The unit in which the tree counts its times: that of the traces it is for.
    ExactTime tick = second;
    /// Whether the signal of that name is held or linear, or nothing where that is not known.
    std::function<std::optional<assessments::INTERPOLATION_METHOD>(const std::string&)>
        interpolation = unknownInterpolation;

    static std::optional<assessments::INTERPOLATION_METHOD> unknownInterpolation(
        const std::string& /*signal*/) {
        return std::nullopt;
    }
};

/// A formula whose parts fit together.
struct Formula {
    assessments::Expression tree;
    SignalType type;                ///< of its values
    std::set<std::string> signals;  ///< the names of the signals that it reads, also by definitions
    TimeTexts times;                ///< how its times were written
    DefinitionNames names;          ///< of the definitions that it uses
};

/// Types a formula and builds its tree.
///
/// A literal takes the type of the operand that it meets. Throws FormulaError where a literal is
/// not exactly a value of that type (a decimal fraction may round to a floating type), where types
/// clash, where an operator does not take a line or takes nothing else, where a name means nothing,
/// where a window is none or one of numbers has no end, where definitions go in a circle, and where
/// the tree would have more than maximumFormulaNodes nodes. A signal of unknown type fits
/// everywhere, and so does one that may be a line or not. Signals become variables of
/// signalId(name); the literals of the enumeration members have the tag
/// enumerationTag(enumeration name), and that name as their name.
Formula buildFormula(const ParsedFormula& formula, const FormulaNames& names);

/// The tree of a formula as it is written, for tools that look at formulas only: nothing is typed,
/// literals are double unless their type is written, every name is a signal, and `'N'` is a member
/// of an enumeration without a name. Throws FormulaError for a literal that is not exactly a value
/// of its type and for more than maximumFormulaNodes nodes.
/// The tree counts its times in seconds.
assessments::Expression expressionOf(const ParsedFormula& formula);

inline constexpr std::size_t maximumFormulaNodes = 250'000;

/// The text of a formula, which reads back as the same formula (under ModuloAliases) by
/// expressionOf, and by buildFormula where it is well typed. Numbers are written in full, times as
/// `times` has them (without it the tree counts in seconds), names are
/// quoted where they need it. Rises and falls by a number keep their form, other aliases appear as
/// their bodies. Members of an enumeration come back by buildFormula only, and the text of a
/// tree that is nested deeper than maximumNesting is not read back. Throws std::invalid_argument
/// for a tree with nilClass or an operator that formulas do not have. Linear in the formula.
std::string formulaText(const assessments::Expression& formula,
                        const TimeTexts& times = TimeTexts());

}  // namespace vorm::evaluation

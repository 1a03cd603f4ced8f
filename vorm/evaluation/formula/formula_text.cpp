#include "alias_form.hpp"
#include "definition_names.hpp"
#include "formula.hpp"
#include "literal_text.hpp"
#include "node_counts.hpp"
#include "spellings.hpp"
#include "syntax_tree.hpp"

#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/window_end.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// A tree and the name of its definition.
using Named = std::pair<const Expression, std::string>;

// Where a part of a formula stands.
struct Place {
    bool isAlone = true;            // the text or a pair of brackets holds nothing else
    bool isConverted = false;       // it is the operand of a conversion
    VORM_OP chain = VORM_OP::None;  // it is the left operand of this operator
};

// Writes a formula part by part from a list of its own, since trees can be deeper than the stack.
class FormulaWriter : public boost::static_visitor<> {
public:
    FormulaWriter(const TimeTexts& times, const DefinitionNames& names)
        : times_(times), names_(names) {}

    /// All of the formula, or its name.
    std::string write(const Expression& formula, bool mayBeName);

    /// The definitions that stand in what was written by their names.
    const std::vector<const Named*>& named() const { return named_; }

    void operator()(const nilClass&) const {
        throw std::invalid_argument("the formula has an empty part");
    }
    void operator()(const constantValue& node) { text_ += literalText(node, place_.isConverted); }
    void operator()(const variable& node) { text_ += nameText(node.name); }
    void operator()(const unary_op& node) { prefix(prefixWord(node.op), node.child, {}); }
    void operator()(const timed_unary_op& node) {
        // Of an epsilon shift only the sign counts.
        const std::string distance =
            node.op == VORM_OP::EpsilonShift ? shortestNumber(node.offset) : times_.of(node.offset);
        prefix(std::string(prefixWord(node.op)) + "[" + distance + "]", node.child, {});
    }
    void operator()(const timedwindow_unary_op& node) {
        prefix(std::string(prefixWord(node.op)) + interval(node.op, node.a, node.b), node.child,
               {});
    }
    void operator()(const cast_op& node) {
        const auto type = static_cast<std::size_t>(node.target.which());
        prefix(valueTypeNames()[type], node.child, {.isConverted = true});
    }
    void operator()(const binary_op& node) {
        if (isCall(node.op)) {
            text_ += std::string(prefixWord(node.op)) + "(";
            later(")");
            later(node.rhs, {});
            later(", ");
            later(node.lhs, {});
            return;
        }
        infix(node.lhs, " " + std::string(infixWord(node.op)) + " ", node.rhs, node.op);
    }
    void operator()(const timedwindow_binary_op& node) {
        const std::string until(infixWord(node.op));
        infix(node.lhs, " " + until + interval(node.op, node.a, node.b) + " ", node.rhs,
              VORM_OP::None);
    }
    void operator()(const alias& node);

private:
    struct Part {
        const Expression* tree = nullptr;
        Place place;
        std::string text;
    };

    // Nothing for all of time from now on, or up to now; of a number that would be something else.
    std::string interval(VORM_OP op, double a, double b) const {
        const bool hasNoEnd = b == support::infinity;
        if (mayHaveNoEnd(op) && a == 0 && hasNoEnd) {
            return "";
        }
        const std::string end = hasNoEnd        ? "inf"
                                : b == toTheEnd ? support::looksBack(op) ? "begin" : "end"
                                                : times_.of(b);
        return "[" + times_.of(a) + ", " + end + "]";
    }
    void prefix(std::string_view word, const Expression& operand, const Place& place);
    void infix(const Expression& left, std::string_view symbol, const Expression& right,
               VORM_OP op);
    void later(const Expression& tree, const Place& place) { parts_.push_back({&tree, place, ""}); }
    void later(std::string_view text) { parts_.push_back({nullptr, {}, std::string(text)}); }

    bool writeName(const Expression& tree, const NodeCounts& counts);

    const TimeTexts& times_;
    const DefinitionNames& names_;
    std::vector<const Named*> named_;
    std::string text_;
    Place place_;
    std::vector<Part> parts_;
};

bool FormulaWriter::writeName(const Expression& tree, const NodeCounts& counts) {
    const Named* named = names_.hasOneOf(counts.of(tree)) ? names_.find(tree) : nullptr;
    if (named != nullptr) {
        text_ += nameText(named->second);
        named_.push_back(named);
    }
    return named != nullptr;
}

std::string FormulaWriter::write(const Expression& formula, bool mayBeName) {
    std::optional<NodeCounts> counts;
    if (!names_.empty()) {
        counts.emplace(formula);
    }
    later(formula, {});
    while (!parts_.empty()) {
        const Part part = std::move(parts_.back());
        parts_.pop_back();
        if (part.tree == nullptr) {
            text_ += part.text;
        } else if (!counts || (part.tree == &formula && !mayBeName) ||
                   !writeName(*part.tree, *counts)) {
            place_ = part.place;
            boost::apply_visitor(*this, *part.tree);
        }
    }
    return std::move(text_);
}

// What is written later is listed from its end.
void FormulaWriter::prefix(std::string_view word, const Expression& operand, const Place& place) {
    text_ += std::string(word) + "(";
    later(")");
    later(operand, place);
}

void FormulaWriter::infix(const Expression& left, std::string_view symbol, const Expression& right,
                          VORM_OP op) {
    const bool needsBrackets = !place_.isAlone && !continuesChain(op, place_.chain);
    text_ += needsBrackets ? "(" : "";
    later(needsBrackets ? ")" : "");
    later(right, {.isAlone = false});
    later(symbol);
    later(left, {.isAlone = false, .chain = op});
}

void FormulaWriter::operator()(const alias& node) {
    const std::optional<AliasForm> form = formOf(node, times_);
    if (!form) {
        later(node.body, place_);
        return;
    }
    text_ += form->before;
    later(form->after);
    later(*form->right, {});
    later(form->between);
    later(*form->left, {});
}

}  // namespace

std::string formulaText(const Expression& formula, const TimeTexts& times) {
    return FormulaWriter(times, {}).write(formula, false);
}

NamedFormula namedFormula(const Expression& formula, const TimeTexts& times,
                          const DefinitionNames& names, bool isItsDefinition) {
    FormulaWriter writer(times, names);
    NamedFormula written{writer.write(formula, !isItsDefinition), {}};
    std::vector<const Named*> pending = writer.named();
    for (std::size_t i = 0; i < pending.size(); ++i) {
        if (std::find(pending.begin(), pending.begin() + static_cast<std::ptrdiff_t>(i),
                      pending[i]) != pending.begin() + static_cast<std::ptrdiff_t>(i)) {
            continue;
        }
        FormulaWriter body(times, names);
        written.definitions.push_back({pending[i]->second, body.write(pending[i]->first, false)});
        pending.insert(pending.end(), body.named().begin(), body.named().end());
    }
    return written;
}

}  // namespace vorm::evaluation

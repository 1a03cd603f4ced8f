#include "alias_form.hpp"
#include "formula.hpp"
#include "literal_text.hpp"
#include "spellings.hpp"
#include "syntax_tree.hpp"

#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/static_visitor.hpp>

#include <stdexcept>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// Where a part of a formula stands.
struct Place {
    bool isAlone = true;            // the text or a pair of brackets holds nothing else
    bool isConverted = false;       // it is the operand of a conversion
    VORM_OP chain = VORM_OP::None;  // it is the left operand of this operator
};

// Writes a formula part by part from a list of its own, since trees can be deeper than the stack.
class FormulaWriter : public boost::static_visitor<> {
public:
    explicit FormulaWriter(const TimeTexts& times) : times_(times) {}

    std::string write(const Expression& formula) &&;

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
        prefix(std::string(prefixWord(node.op)) + interval(node.a, node.b), node.child, {});
    }
    void operator()(const cast_op& node) {
        const auto type = static_cast<std::size_t>(node.target.which());
        prefix(valueTypeNames()[type], node.child, {.isConverted = true});
    }
    void operator()(const binary_op& node) {
        infix(node.lhs, " " + std::string(infixWord(node.op)) + " ", node.rhs, node.op);
    }
    void operator()(const timedwindow_binary_op& node) {
        const std::string until(infixWord(node.op));
        infix(node.lhs, " " + until + interval(node.a, node.b) + " ", node.rhs, VORM_OP::None);
    }
    void operator()(const alias& node);

private:
    struct Part {
        const Expression* tree = nullptr;
        Place place;
        std::string text;
    };

    std::string interval(double a, double b) const {
        return "[" + times_.of(a) + ", " + times_.of(b) + "]";
    }
    void prefix(std::string_view word, const Expression& operand, const Place& place);
    void infix(const Expression& left, std::string_view symbol, const Expression& right,
               VORM_OP op);
    void later(const Expression& tree, const Place& place) { parts_.push_back({&tree, place, ""}); }
    void later(std::string_view text) { parts_.push_back({nullptr, {}, std::string(text)}); }

    const TimeTexts& times_;
    std::string text_;
    Place place_;
    std::vector<Part> parts_;
};

std::string FormulaWriter::write(const Expression& formula) && {
    later(formula, {});
    while (!parts_.empty()) {
        const Part part = std::move(parts_.back());
        parts_.pop_back();
        if (part.tree == nullptr) {
            text_ += part.text;
        } else {
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
    if (form->isInfix) {
        infix(*form->left, form->between, *form->right, VORM_OP::None);
        return;
    }
    text_ += form->before;
    later(form->after);
    if (form->right != nullptr) {
        later(*form->right, {});
        later(form->between);
    }
    later(*form->left, {});
}

}  // namespace

std::string formulaText(const Expression& formula, const TimeTexts& times) {
    return FormulaWriter(times).write(formula);
}

}  // namespace vorm::evaluation

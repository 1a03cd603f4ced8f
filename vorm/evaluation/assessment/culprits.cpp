#include "culprits.hpp"

#include <boost/variant/static_visitor.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace vorm::evaluation::detail {
namespace {

using namespace assessments;

constexpr double infinity = std::numeric_limits<double>::infinity();

// A node, and the span of time throughout which it has the value that is to be explained.
struct Question {
    const Expression* formula;
    bool value;
    double from;
    double to;
};

// Nothing where it is open.
std::optional<bool> valueAt(const Truth& truth, double time) {
    const std::int8_t value = *truth.valueAt(time);
    return value == isOpen ? std::nullopt : std::optional(value == certainlyTrue);
}

// The first time in [from, to] at which the value is `wanted`.
std::optional<double> firstTime(const Truth& truth, double from, double to, bool wanted) {
    const std::int8_t value = wanted ? certainlyTrue : certainlyFalse;
    for (auto point = truth.TimedPointIteratorForValueAt(from, true);
         point != truth.points.end() && point->time <= to; ++point) {
        if (point->value == value) {
            return std::max(from, point->time);
        }
    }
    return std::nullopt;
}

// Answers a question by the questions about the operands, or by the node itself.
class Descent : public boost::static_visitor<> {
public:
    Descent(const TruthOf& truthOf, const Question& question, std::vector<Question>& next,
            std::vector<DecidingPart>& parts)
        : truthOf_(truthOf), question_(question), next_(next), parts_(parts) {}

    template <class Leaf>
    void operator()(const Leaf&) const {
        answer();
    }

    void operator()(const alias& node) const { ask(node.body, question_.value); }

    void operator()(const unary_op& node) const {
        if (node.op == VORM_OP::Not) {
            ask(node.child, !question_.value);
        } else {
            answer();
        }
    }

    void operator()(const binary_op& node) const {
        if (node.op != VORM_OP::And && node.op != VORM_OP::Or) {
            answer();
            return;
        }
        // One operand is enough to make a conjunction false or a disjunction true.
        const bool oneIsEnough = (node.op == VORM_OP::Or) == question_.value;
        const std::size_t before = next_.size();
        for (const Expression* operand : {&node.lhs, &node.rhs}) {
            if (!oneIsEnough || holdsThroughout(*operand)) {
                ask(*operand, question_.value);
            }
        }
        if (next_.size() == before) {
            answer();  // now the one operand decides, now the other
        }
    }

    void operator()(const timed_unary_op& node) const {
        if (node.op == VORM_OP::EpsilonShift) {
            const double before = std::nextafter(question_.from, -infinity);
            ask(node.child, question_.value, before, before);
            return;
        }
        ask(node.child, question_.value, question_.from + node.offset, question_.to + node.offset);
    }

    void operator()(const timedwindow_unary_op& node) const {
        const double from = question_.from + node.a;
        const double to = question_.to + node.b;
        // One time is enough to make Globally false or Eventually true.
        if ((node.op == VORM_OP::Eventually) != question_.value) {
            ask(node.child, question_.value, from, to);
            return;
        }
        const double windowEnd = question_.from + node.b;
        if (const auto time = firstTime(*truthOf_(node.child), from, windowEnd, question_.value)) {
            ask(node.child, question_.value, *time, *time);
        } else {
            answer();
        }
    }

    void operator()(const timedwindow_binary_op& node) const {
        const double from = question_.from + node.a;
        const double to = question_.from + node.b;
        const auto reached = firstTime(*truthOf_(node.rhs), from, to, true);
        if (question_.value) {
            answer();
        } else if (!reached) {
            ask(node.rhs, false, from, to);
        } else if (const auto broken =
                       firstTime(*truthOf_(node.lhs), question_.from, *reached, false)) {
            ask(node.lhs, false, *broken, *broken);
        } else {
            answer();
        }
    }

private:
    void answer() const {
        parts_.push_back({question_.formula, question_.value, question_.from, question_.to});
    }

    void ask(const Expression& operand, bool value) const {
        ask(operand, value, question_.from, question_.to);
    }

    void ask(const Expression& operand, bool value, double from, double to) const {
        next_.push_back({&operand, value, from, to});
    }

    bool holdsThroughout(const Expression& operand) const {
        const SharedTruth truth = truthOf_(operand);
        return valueAt(*truth, question_.from) == question_.value &&
               !firstTime(*truth, question_.from, question_.to, !question_.value);
    }

    const TruthOf& truthOf_;
    const Question& question_;
    std::vector<Question>& next_;
    std::vector<DecidingPart>& parts_;
};

}  // namespace

std::vector<DecidingPart> decidingParts(const Expression& formula, double time,
                                        const TruthOf& truthOf) {
    std::vector<DecidingPart> parts;
    const auto value = valueAt(*truthOf(formula), time);
    std::vector<Question> pending;
    if (value) {
        pending.push_back({&formula, *value, time, time});
    }
    while (!pending.empty()) {
        const Question question = pending.back();
        pending.pop_back();
        std::vector<Question> next;
        const Descent descent(truthOf, question, next, parts);
        boost::apply_visitor(descent, *question.formula);
        pending.insert(pending.end(), next.rbegin(), next.rend());
    }
    return parts;
}

}  // namespace vorm::evaluation::detail

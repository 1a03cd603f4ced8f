#pragma once

// What formulas say of small recordings, read off tables. The recordings are such that nothing
// happens but at multiples of 1/32: between two of them, every truth value is constant and every
// number runs straight. So time is a row of slots 1/64 apart, in turn an instant and the open
// interval after it, and a quantity is known by its values at the instants and mid-interval.

#include "support/traces.hpp"

#include <vorm/assessments.hpp>
#include <vorm/assessments/expression/operator_family.hpp>
#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/time/window_end.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace vorm::test {

inline constexpr int slotsPerUnit = 64;
inline constexpr int alwaysSlot = 1'000'000;  // where constants end

// What courses tabulate: all slots on which anything happens; beyond nothing changes any more.
inline constexpr int firstSlot = 1060 * slotsPerUnit;
inline constexpr int lastSlot = 1170 * slotsPerUnit;

inline double timeOf(int slot) {
    return static_cast<double>(slot) / slotsPerUnit;
}
inline int slotOf(double time) {
    return static_cast<int>(std::lround(time * slotsPerUnit));
}
inline bool isInterval(int slot) {
    return slot % 2 != 0;
}

/// Numbers on the slots from first to last; a bool is 0 or 1. A constant has one.
struct SlotPiece {
    int first;
    int last;
    std::vector<double> values;
    bool isConstant = false;

    double at(int slot) const {
        return isConstant ? values[0] : values[static_cast<std::size_t>(slot - first)];
    }
};

using SlotPieces = std::vector<SlotPiece>;

inline SlotPiece tabulated(int first, int last, const std::function<double(int)>& value) {
    SlotPiece piece{first, last, {}};
    for (int slot = first; slot <= last; ++slot) {
        piece.values.push_back(value(slot));
    }
    return piece;
}

inline SlotPiece constantPiece(double value) {
    return {-alwaysSlot, alwaysSlot, {value}, true};
}

inline std::optional<double> numberAt(const SlotPieces& pieces, int slot) {
    for (const SlotPiece& piece : pieces) {
        if (piece.first <= slot && slot <= piece.last) {
            return piece.at(slot);
        }
    }
    return std::nullopt;
}

/// Truth or robustness on all slots: -1, 0 and 1 are false, open and true.
class Course {
public:
    template <class Function>
    explicit Course(Function value) {
        for (int slot = firstSlot; slot <= lastSlot; ++slot) {
            values_.push_back(value(slot));
        }
    }

    double at(int slot) const {
        return values_[static_cast<std::size_t>(std::clamp(slot, firstSlot, lastSlot) - firstSlot)];
    }

private:
    std::vector<double> values_;
};

/// The numbers that terms have.
class SlotNumbers : public boost::static_visitor<SlotPieces> {
public:
    using Signals = std::map<boost::uuids::uuid, SlotPieces>;

    explicit SlotNumbers(const Signals& signals) : signals_(signals) {}

    SlotPieces of(const Expression& formula) const { return boost::apply_visitor(*this, formula); }

    SlotPieces operator()(const constantValue& node) const {
        return {constantPiece(boost::apply_visitor(
            []<class T>(const T& typed) {
                if constexpr (std::is_convertible_v<T, double>) {
                    return static_cast<double>(typed);
                } else {
                    return nan;
                }
            },
            node.value))};
    }
    SlotPieces operator()(const variable& node) const { return signals_.at(node.id); }
    SlotPieces operator()(const cast_op& node) const { return of(node.child); }
    SlotPieces operator()(const unary_op& node) const {
        const SlotPieces x = of(node.child);
        switch (node.op) {
            case VORM_OP::Abs:
                return mapped(x, [](double v) { return std::fabs(v); });
            case VORM_OP::UnaryMinus:
                return mapped(x, [](double v) { return -v; });
            default:
                return slopes(x);
        }
    }
    SlotPieces operator()(const timed_unary_op& node) const {
        const int delay = slotOf(node.offset);
        return windowed(of(node.child), delay, delay, [](double, double next) { return next; });
    }
    SlotPieces operator()(const timedwindow_unary_op& node) const {
        if (node.op == VORM_OP::Duration || node.op == VORM_OP::Count) {
            return sums(node);
        }
        const bool greatest = node.op == VORM_OP::Eventually || node.op == VORM_OP::Greatest;
        return windowed(of(node.child), slotOf(node.a), slotOf(node.b), [=](double a, double b) {
            return greatest ? std::max(a, b) : std::min(a, b);
        });
    }
    SlotPieces operator()(const binary_op& node) const {
        return paired(of(node.lhs), of(node.rhs), [&](double a, double b) {
            switch (node.op) {
                case VORM_OP::Plus:
                    return a + b;
                case VORM_OP::Minus:
                    return a - b;
                case VORM_OP::Multiply:
                    return a * b;
                case VORM_OP::Minimum:
                    return std::min(a, b);
                default:
                    return std::max(a, b);
            }
        });
    }
    template <class Node>
    SlotPieces operator()(const Node&) const {
        return {};
    }

private:
    template <class Function>
    static SlotPieces mapped(SlotPieces pieces, Function function) {
        for (SlotPiece& piece : pieces) {
            std::transform(piece.values.begin(), piece.values.end(), piece.values.begin(),
                           function);
        }
        return pieces;
    }

    // The rise to the next instant; not known at the last time, from which nothing rises.
    static SlotPieces slopes(const SlotPieces& pieces) {
        SlotPieces result;
        for (const SlotPiece& x : pieces) {
            result.push_back(tabulated(x.first, x.last - 1, [&](int slot) {
                const int start = slot - (isInterval(slot) ? 1 : 0);
                return (x.at(start + 2) - x.at(start)) * slotsPerUnit / 2;
            }));
        }
        return dropEmpty(result);
    }

    // For how long a signal is true in a window, or in how many stretches.
    SlotPieces sums(const timedwindow_unary_op& node) const {
        const int a = slotOf(node.a);
        const int b = slotOf(node.b);
        SlotPieces result;
        for (const SlotPiece& x : of(node.child)) {
            const auto isTrue = [&](int slot) { return x.at(slot) == 1; };
            const auto duration = [&](int slot) {
                int halves = 0;
                for (int seen = slot + a; seen < slot + b; ++seen) {
                    // Half an interval lies between two neighbouring slots.
                    halves += isTrue(isInterval(seen) ? seen : seen + 1) ? 1 : 0;
                }
                return static_cast<double>(halves) / slotsPerUnit;
            };
            const auto count = [&](int slot) {
                double stretches = isTrue(slot + a) ? 1 : 0;
                for (int seen = slot + a + 1; seen <= slot + b; ++seen) {
                    stretches += isTrue(seen) && !isTrue(seen - 1) ? 1 : 0;
                }
                return stretches;
            };
            result.push_back(node.op == VORM_OP::Duration
                                 ? tabulated(x.first - a, x.last - b, duration)
                                 : tabulated(x.first - a, x.last - b, count));
        }
        return dropEmpty(result);
    }

    template <class Fold>
    static SlotPieces windowed(const SlotPieces& pieces, int a, int b, Fold fold) {
        SlotPieces result;
        for (const SlotPiece& x : pieces) {
            const auto value = [&](int slot) {
                double folded = x.at(slot + a);
                for (int seen = slot + a + 1; seen <= slot + b; ++seen) {
                    folded = fold(folded, x.at(seen));
                }
                return folded;
            };
            result.push_back(x.isConstant ? x : tabulated(x.first - a, x.last - b, value));
        }
        return dropEmpty(result);
    }

    template <class Function>
    static SlotPieces paired(const SlotPieces& left, const SlotPieces& right, Function function) {
        SlotPieces result;
        for (const SlotPiece& l : left) {
            for (const SlotPiece& r : right) {
                if (l.isConstant && r.isConstant) {
                    result.push_back(constantPiece(function(l.values[0], r.values[0])));
                } else {
                    result.push_back(
                        tabulated(std::max(l.first, r.first), std::min(l.last, r.last),
                                  [&](int slot) { return function(l.at(slot), r.at(slot)); }));
                }
            }
        }
        return dropEmpty(result);
    }

    static SlotPieces dropEmpty(SlotPieces pieces) {
        std::erase_if(pieces, [](const SlotPiece& piece) { return piece.values.empty(); });
        return pieces;
    }

    const Signals& signals_;
};

/// The truth or the robustness of formulas.
class SlotOracle : public boost::static_visitor<Course> {
public:
    using Meaning = evaluation::Meaning;

    SlotOracle(const SlotNumbers::Signals& signals, Meaning meaning)
        : signals_(signals),
          meaning_(meaning),
          certain_(meaning == Meaning::Boolean ? 1 : infinity),
          open_(meaning == Meaning::Boolean           ? 0
                : meaning == Meaning::LeastRobustness ? -infinity
                                                      : infinity) {}

    Course of(const Expression& formula) const { return boost::apply_visitor(*this, formula); }

    Course operator()(const constantValue& node) const { return isNotZero(node); }
    Course operator()(const variable& node) const { return isNotZero(node); }
    Course operator()(const cast_op& node) const { return isNotZero(node.child); }
    Course operator()(const alias& node) const { return of(node.body); }
    Course operator()(const nilClass&) const { return isNotZero(nilClass()); }
    Course operator()(const unary_op& node) const {
        if (node.op == VORM_OP::Rises || node.op == VORM_OP::Falls) {
            const ExpressionFactory f;
            const Expression before = f.EpsilonShift(1, node.child);
            return of(node.op == VORM_OP::Rises ? f.And(node.child, f.Not(before))
                                                : f.And(f.Not(node.child), before));
        }
        const Meaning opposite = meaning_ == Meaning::LeastRobustness ? Meaning::GreatestRobustness
                                 : meaning_ == Meaning::GreatestRobustness
                                     ? Meaning::LeastRobustness
                                     : meaning_;
        const Course x = SlotOracle(signals_, opposite).of(node.child);
        return Course([&](int slot) { return -x.at(slot); });
    }
    Course operator()(const timed_unary_op& node) const {
        const Course x = of(node.child);
        if (node.op == VORM_OP::Shift) {
            return Course([&](int slot) { return x.at(slot + slotOf(node.offset)); });
        }
        // At each instant what the interval before or after it says, where the instant is known;
        // at the first one that is known what it says itself.
        const int side = node.offset >= 0 ? -1 : 1;
        const Course truth = SlotOracle(signals_, Meaning::Boolean).of(node.child);
        int first = firstSlot;
        while (first < lastSlot && truth.at(first) == 0) {
            ++first;
        }
        return Course([&](int slot) {
            const bool stays = isInterval(slot) || (side < 0 && slot == first);
            return x.at(stays ? slot : slot + side);
        });
    }
    Course operator()(const timedwindow_unary_op& node) const {
        const Course x = of(node.child);
        const bool isSomeTime = node.op == VORM_OP::Eventually || node.op == VORM_OP::Once;
        const double sign = isSomeTime ? 1 : -1;
        const Looked looked = lookedAt(node);
        return Course([&](int slot) {
            double best = node.b == evaluation::toTheEnd ? -certain_ : -infinity;
            const auto [first, last] = looked.from(slot);
            for (int seen = first; seen <= last; ++seen) {
                best = std::max(best, sign * x.at(seen));
            }
            return sign * best;
        });
    }
    // The goal at some time from a to b ahead; until then the condition, and in any case up to a
    // ahead. In an interval the goal can be reached at its first time. Since is the same the other
    // way round.
    Course operator()(const timedwindow_binary_op& node) const {
        const Course condition = of(node.lhs);
        const Course goal = of(node.rhs);
        const Looked looked = lookedAt(node);
        const int step = node.op == VORM_OP::Since ? -1 : 1;
        return Course([&](int slot) {
            const int earliest = slot + step * slotOf(node.a);
            const auto [first, last] = looked.from(slot);
            const int latest = step > 0 ? last : first;
            double least = infinity;
            for (int seen = slot; seen != earliest + step; seen += step) {
                least = std::min(least, condition.at(seen));
            }
            double best = first <= last ? goal.at(earliest) : -certain_;
            best = std::min(least, best);
            for (int seen = earliest + step; step * seen <= step * latest; seen += step) {
                best = std::max(best, std::min(least, goal.at(seen)));
                least = std::min(least, condition.at(seen));
            }
            return best;
        });
    }
    Course operator()(const binary_op& node) const {
        if (node.op == VORM_OP::Implies) {
            return of(ExpressionFactory().Or(ExpressionFactory().Not(node.lhs), node.rhs));
        }
        if (node.op == VORM_OP::And || node.op == VORM_OP::Or) {
            const Course l = of(node.lhs);
            const Course r = of(node.rhs);
            const bool isAnd = node.op == VORM_OP::And;
            return Course([&](int slot) {
                return isAnd ? std::min(l.at(slot), r.at(slot)) : std::max(l.at(slot), r.at(slot));
            });
        }
        const SlotPieces l = SlotNumbers(signals_).of(node.lhs);
        const SlotPieces r = SlotNumbers(signals_).of(node.rhs);
        return Course([&](int slot) {
            const auto a = numberAt(l, slot);
            const auto b = numberAt(r, slot);
            return a && b ? compared(node.op, *a, *b) : open_;
        });
    }

private:
    // What a window looks at from a slot, where it may look at some slots only.
    struct Looked {
        int from_;
        int to_;
        int first_;
        int last_;

        std::pair<int, int> from(int slot) const {
            return {std::max(slot + from_, first_), std::min(slot + to_, last_)};
        }
    };

    template <class Node>
    Looked lookedAt(const Node& node) const {
        const bool looksBack = support::looksBack(node.op);
        const int a = slotOf(node.a);
        const int b = node.b < evaluation::toTheEnd ? slotOf(node.b) : lastSlot - firstSlot + a;
        Looked looked{looksBack ? -b : a, looksBack ? -a : b, -alwaysSlot, alwaysSlot};
        if (node.b == evaluation::toTheEnd) {
            const auto [first, last] = recordedSlots(node);
            (looksBack ? looked.first_ : looked.last_) = looksBack ? first : last;
        }
        return looked;
    }

    // From the first to the last slot at which any signal of the operands is known.
    std::pair<int, int> recordedSlots(const Expression& node) const {
        std::pair<int, int> slots{alwaysSlot, -alwaysSlot};
        support::forEachNode(node, [&](const Expression& tree) {
            if (const auto* signal = boost::get<variable>(&tree)) {
                for (const SlotPiece& piece : signals_.at(signal->id)) {
                    slots = {std::min(slots.first, piece.first),
                             std::max(slots.second, piece.last)};
                }
            }
        });
        return slots.first <= slots.second ? slots : std::pair{-alwaysSlot, alwaysSlot};
    }

    Course isNotZero(const Expression& term) const {
        const SlotPieces x = SlotNumbers(signals_).of(term);
        return Course([&](int slot) {
            const auto value = numberAt(x, slot);
            return !value ? open_ : *value != 0 ? certain_ : -certain_;
        });
    }

    double compared(VORM_OP op, double a, double b) const {
        if (meaning_ == Meaning::Boolean) {
            return relation(op, a, b) ? 1 : -1;
        }
        switch (op) {
            case VORM_OP::Gt:
            case VORM_OP::Geq:
                return a - b;
            case VORM_OP::Lt:
            case VORM_OP::Leq:
                return b - a;
            case VORM_OP::Eq:
                return -std::fabs(a - b);
            default:
                return std::fabs(a - b);
        }
    }

    static bool relation(VORM_OP op, double a, double b) {
        switch (op) {
            case VORM_OP::Gt:
                return a > b;
            case VORM_OP::Geq:
                return a >= b;
            case VORM_OP::Lt:
                return a < b;
            case VORM_OP::Leq:
                return a <= b;
            case VORM_OP::Eq:
                return a == b;
            default:
                return a != b;
        }
    }

    const SlotNumbers::Signals& signals_;
    Meaning meaning_;
    double certain_;
    double open_;
};

}  // namespace vorm::test

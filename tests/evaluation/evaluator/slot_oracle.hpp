#pragma once

// What formulas say of small recordings, read off tables. The recordings are such that nothing
// happens but at multiples of 1/32: between two of them, every truth value is constant and every
// number runs straight. So time is a row of slots 1/64 apart, in turn an instant and the open
// interval after it, and a quantity is known by its values at the instants and mid-interval.

#include "support/traces.hpp"

#include <vorm/assessments.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <vector>

namespace vorm::test {

inline constexpr int slotsPerUnit = 64;
inline constexpr int alwaysSlot = 1'000'000;  // where constants end

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

class SlotOracle : public boost::static_visitor<SlotPieces> {
public:
    SlotOracle(const std::map<boost::uuids::uuid, SlotPieces>& signals, evaluation::Meaning meaning)
        : signals_(signals), robust_(meaning == evaluation::Meaning::Robustness) {}

    SlotPieces of(const Expression& formula) const { return boost::apply_visitor(*this, formula); }

    SlotPieces operator()(const constantValue& node) const {
        const auto* truth = boost::get<bool>(&node.value);
        const double value = boost::apply_visitor(
            []<class T>(const T& typed) {
                if constexpr (std::is_convertible_v<T, double>) {
                    return static_cast<double>(typed);
                } else {
                    return nan;
                }
            },
            node.value);
        return {constantPiece(truth != nullptr ? certainty(value) : value)};
    }
    SlotPieces operator()(const variable& node) const {
        SlotPieces pieces = signals_.at(node.id);
        const bool isTruth = node.name[0] == 'p';
        return isTruth ? mapped(pieces, [this](double x) { return certainty(x); }) : pieces;
    }
    SlotPieces operator()(const unary_op& node) const {
        const SlotPieces x = node.op == VORM_OP::Not ? of(node.child) : term(node.child);
        switch (node.op) {
            case VORM_OP::Not:
                return mapped(x, [this](double v) { return robust_ ? -v : 1 - v; });
            case VORM_OP::Abs:
                return mapped(x, [](double v) { return std::fabs(v); });
            case VORM_OP::UnaryMinus:
                return mapped(x, [](double v) { return -v; });
            default:
                return slopes(x);
        }
    }
    SlotPieces operator()(const cast_op& node) const {
        const bool toBool = node.target.which() == int{valueTypeIndex<bool>};
        return mapped(term(node.child),
                      [&](double v) { return toBool ? certainty(v != 0 ? 1 : 0) : v; });
    }
    SlotPieces operator()(const timed_unary_op& node) const {
        const SlotPieces x = of(node.child);
        if (node.op == VORM_OP::EpsilonShift) {
            return neighbours(x, node.offset >= 0 ? -1 : 1);
        }
        const int delay = slotOf(node.offset);
        return windowed(x, delay, delay, [](double, double next) { return next; });
    }
    SlotPieces operator()(const timedwindow_unary_op& node) const {
        const bool greatest = node.op == VORM_OP::Eventually;
        return windowed(of(node.child), slotOf(node.a), slotOf(node.b), [=](double a, double b) {
            return greatest ? std::max(a, b) : std::min(a, b);
        });
    }
    SlotPieces operator()(const timedwindow_binary_op& node) const {
        return paired(of(node.lhs), of(node.rhs), [&](const SlotPiece& phi, const SlotPiece& psi) {
            return until(phi, psi, slotOf(node.a), slotOf(node.b));
        });
    }
    SlotPieces operator()(const binary_op& node) const {
        switch (node.op) {
            case VORM_OP::And:
                return pointwise(of(node.lhs), of(node.rhs),
                                 [](double a, double b) { return std::min(a, b); });
            case VORM_OP::Or:
                return pointwise(of(node.lhs), of(node.rhs),
                                 [](double a, double b) { return std::max(a, b); });
            default:
                return pointwise(term(node.lhs), term(node.rhs), [&](double a, double b) {
                    return robust_ ? distance(node.op, a, b) : relation(node.op, a, b);
                });
        }
    }
    SlotPieces operator()(const alias& node) const { return of(node.body); }
    SlotPieces operator()(const nilClass&) const { return {}; }

private:
    double certainty(double truth) const {
        return !robust_ ? truth : truth != 0 ? infinity : -infinity;
    }

    SlotPieces term(const Expression& formula) const {
        return SlotOracle(signals_, evaluation::Meaning::Boolean).of(formula);
    }

    static double relation(VORM_OP op, double a, double b) {
        switch (op) {
            case VORM_OP::Plus:
                return a + b;
            case VORM_OP::Minus:
                return a - b;
            case VORM_OP::Multiply:
                return a * b;
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

    static double distance(VORM_OP op, double a, double b) {
        switch (op) {
            case VORM_OP::Gt:
            case VORM_OP::Geq:
                return a - b;
            case VORM_OP::Lt:
            case VORM_OP::Leq:
                return b - a;
            case VORM_OP::Eq:
                return -std::fabs(a - b);
            case VORM_OP::Neq:
                return std::fabs(a - b);
            default:
                return relation(op, a, b);
        }
    }

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

    // At each instant what the interval before (-1) or after (1) it says.
    static SlotPieces neighbours(const SlotPieces& pieces, int side) {
        SlotPieces result;
        for (const SlotPiece& x : pieces) {
            const int last = side > 0 && !isInterval(x.last) ? x.last - 1 : x.last;
            result.push_back(x.isConstant ? x : tabulated(x.first, last, [&](int slot) {
                const bool stays = isInterval(slot) || (side < 0 && slot == x.first);
                return x.at(stays ? slot : slot + side);
            }));
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
            result.push_back(
                x.isConstant ? x : tabulated(std::max(x.first, x.first - a), x.last - b, value));
        }
        return dropEmpty(result);
    }

    // psi at some time from a to b ahead; until then phi, and in any case up to a ahead.
    static SlotPiece until(const SlotPiece& phi, const SlotPiece& psi, int a, int b) {
        if (phi.isConstant && psi.isConstant) {
            return constantPiece(std::min(phi.values[0], psi.values[0]));
        }
        const int last = psi.isConstant ? phi.last - a : std::min(phi.last, psi.last) - b;
        return tabulated(std::max(phi.first, psi.first), last, [&](int slot) {
            double best = -infinity;
            double least = phi.at(slot);
            for (int seen = slot; seen <= slot + a; ++seen) {
                least = std::min(least, phi.at(seen));
            }
            const int farthest = psi.isConstant ? slot + a : slot + b;
            for (int goal = slot + a; goal <= farthest; ++goal) {
                if (isInterval(goal)) {
                    least = std::min(least, phi.at(goal));
                }
                best = std::max(best, std::min(psi.at(goal), least));
                least = std::min(least, phi.at(goal));
            }
            return best;
        });
    }

    template <class Combine>
    static SlotPieces paired(const SlotPieces& left, const SlotPieces& right, Combine combine) {
        SlotPieces result;
        for (const SlotPiece& l : left) {
            for (const SlotPiece& r : right) {
                if (l.first <= r.last && r.first <= l.last) {
                    result.push_back(combine(l, r));
                }
            }
        }
        return dropEmpty(result);
    }

    template <class Function>
    static SlotPieces pointwise(const SlotPieces& left, const SlotPieces& right,
                                Function function) {
        return paired(left, right, [&](const SlotPiece& l, const SlotPiece& r) {
            if (l.isConstant && r.isConstant) {
                return constantPiece(function(l.values[0], r.values[0]));
            }
            return tabulated(std::max(l.first, r.first), std::min(l.last, r.last),
                             [&](int slot) { return function(l.at(slot), r.at(slot)); });
        });
    }

    static SlotPieces dropEmpty(SlotPieces pieces) {
        std::erase_if(pieces, [](const SlotPiece& piece) { return piece.values.empty(); });
        return pieces;
    }

    const std::map<boost::uuids::uuid, SlotPieces>& signals_;
    bool robust_;
};

}  // namespace vorm::test

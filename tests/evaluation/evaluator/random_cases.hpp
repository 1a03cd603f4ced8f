#pragma once

// Random recordings and formulas for the slot oracle. All times lie between 1024 and 2048, where a
// shift does not change what one representable step is: what holds for an instant only would else
// be lost to rounding. Samples are at multiples of 1/4, lines are
// level or rise or fall by 2 per unit, held numbers and limits are multiples of 1/2. Then all
// crossings, also of sums of two and of windows over lines, are on multiples of 1/32.

#include "slot_oracle.hpp"
#include "support/expressions.hpp"
#include "support/signals.hpp"

#include <map>

namespace vorm::test {

/// A recording, once as traces and once on slots.
struct Recording {
    std::map<boost::uuids::uuid, evaluation::SharedPieces> traces;
    std::map<boost::uuids::uuid, SlotPieces> slots;

    evaluation::SignalLookup lookup() const {
        return [this](const variable& signal) { return traces.at(signal.id); };
    }
};

inline constexpr double origin = 1100;

enum class Quality { Truth, Held, Linear, Integer };

inline Expression signalOf(Quality quality, std::size_t number) {
    static const char* const names[] = {"p", "held", "linear", "integer"};
    const auto kind = static_cast<std::size_t>(quality);
    return signal(static_cast<std::uint8_t>(1 + 4 * number + kind), names[kind]);
}

template <class T>
void addSignal(Recording& recording, Quality quality, std::size_t number) {
    const bool isLinear = quality == Quality::Linear;
    auto traces = std::make_shared<evaluation::TracePieces>();
    SlotPieces slots;
    const auto quarter = [](std::size_t count) { return 0.25 * static_cast<double>(count); };
    double time = origin + quarter(anyIndex(4));
    for (std::size_t pieces = anyIndex(3); pieces <= 2; ++pieces) {
        TimedTrace_T<T> typed(isLinear ? linear : held, -infinity);
        Signal plain;
        plain.method = isLinear ? linear : held;
        double value = quality == Quality::Truth
                           ? static_cast<double>(anyIndex(2))
                           : std::round(2 * quarter(anyIndex(9))) / (isLinear ? 1 : 2);
        for (std::size_t count = 1 + anyIndex(6); count > 0; --count) {
            typed.push_back({time, static_cast<T>(value)});
            plain.times.push_back(time);
            plain.values.push_back(static_cast<double>(static_cast<T>(value)));
            const double gap = quarter(1 + anyIndex(4));
            time += gap;
            const double other = isLinear ? value + gap * anyOf<double>({-2, 0, 2})
                                          : 0.5 * static_cast<double>(anyIndex(6));
            value = quality == Quality::Truth ? 1 - value : other;
        }
        const double known = plain.times.back() + (isLinear ? 0 : quarter(anyIndex(3)));
        typed.lastKnownTime = known;
        traces->push_back(std::move(typed));
        slots.push_back(tabulated(slotOf(plain.times.front()), slotOf(known),
                                  [&](int slot) { return plain.at(timeOf(slot)); }));
        time = known + quarter(1 + anyIndex(4));
    }
    const auto id = boost::get<variable>(signalOf(quality, number)).id;
    recording.traces[id] = traces;
    recording.slots[id] = slots;
}

inline Recording anyRecording() {
    Recording recording;
    for (const std::size_t number : {0U, 1U}) {
        addSignal<bool>(recording, Quality::Truth, number);
        addSignal<double>(recording, Quality::Held, number);
        addSignal<double>(recording, Quality::Linear, number);
        addSignal<std::int32_t>(recording, Quality::Integer, number);
    }
    return recording;
}

/// What may occur in a formula.
struct Ingredients {
    bool held = true;   ///< signals that step
    bool lines = true;  ///< signals that interpolate
    bool edges = true;  ///< what holds for one representable time
    bool windows = true;
};

/// Grows formulas whose values the slots hold.
class FormulaGrower {
public:
    explicit FormulaGrower(Ingredients ingredients) : with_(ingredients) {}

    Expression truth(std::size_t levels) {
        if (levels == 0) {
            return anyIndex(4) == 0 ? edge() : comparison();
        }
        const auto deeper = [&] { return truth(levels - 1); };
        const double a = 0.25 * static_cast<double>(anyIndex(4));
        const double b = a + 0.25 * static_cast<double>(anyIndex(6));
        const std::size_t kind =
            anyIndex(with_.windows ? logicKinds + 1 : logicKindsWithoutWindows);
        return kind == logicKinds ? truth(0) : logicOf(kind, a, b, deeper);
    }

private:
    Expression anySignal(Quality quality) { return signalOf(quality, anyIndex(2)); }

    Expression edge() {
        const Expression p = anySignal(Quality::Truth);
        switch (anyIndex(!with_.held ? 1 : with_.edges ? 4 : 2)) {
            case 0:
                return factory_.Constant(anyIndex(2) == 0);
            case 1:
                return p;
            case 2:
                return anyIndex(2) == 0
                           ? factory_.EpsilonShift(1, p)
                           : Expression(unary_op(anyOf<VORM_OP>({VORM_OP::Rises, VORM_OP::Falls}),
                                                 p, "edge"));
            default:
                return factory_.And(p, factory_.EpsilonShift(1, factory_.Not(p)));
        }
    }

    Expression comparison() {
        if (with_.held && anyIndex(6) == 0) {
            return sumOverWindow();
        }
        if (with_.held && anyIndex(5) == 0) {
            const Expression integer = anySignal(Quality::Integer);
            const cast_op::Target toBool = cast_op::castFlag<bool>();
            return anyIndex(2) == 0
                       ? Expression(cast_op(integer, toBool))
                       : related(integer,
                                 factory_.Constant(static_cast<std::int32_t>(anyIndex(3))));
        }
        const Expression limit = factory_.Constant(0.5 * static_cast<double>(anyIndex(9)));
        return anyIndex(4) == 0 ? related(number(), number()) : related(sum(), limit);
    }

    Expression sumOverWindow() {
        const double a = 0.25 * (static_cast<double>(anyIndex(8)) - 4);
        const double b = a + 0.25 * static_cast<double>(anyIndex(6));
        const Expression p = anySignal(Quality::Truth);
        return !with_.lines || anyIndex(2) == 0
                   ? related(timedwindow_unary_op(VORM_OP::Count, p, "count", a, b),
                             factory_.Constant(static_cast<std::int32_t>(anyIndex(4))))
                   : related(timedwindow_unary_op(VORM_OP::Duration, p, "duration", a, b),
                             factory_.Constant(0.5 * static_cast<double>(anyIndex(4))));
    }

    Expression related(const Expression& left, const Expression& right) {
        switch (anyIndex(6)) {
            case 0:
                return factory_.Gt(left, right);
            case 1:
                return factory_.Geq(left, right);
            case 2:
                return factory_.Lt(left, right);
            case 3:
                return factory_.Leq(left, right);
            case 4:
                return factory_.Eq(left, right);
            default:
                return factory_.Neq(left, right);
        }
    }

    Expression sum() {
        switch (anyIndex(8)) {
            case 6:
                return binary_op(anyOf<VORM_OP>({VORM_OP::Minimum, VORM_OP::Maximum}), number(),
                                 number(), "extremum");
            case 7:
                return with_.held ? binary_op(VORM_OP::Multiply, anySignal(Quality::Held),
                                              anySignal(Quality::Held), "*")
                                  : number();
            case 0:
                return factory_.Plus(number(), number());
            case 1:
                return factory_.Minus(number(), number());
            case 2:
                return factory_.Multiply(factory_.Constant(2.0), number());
            case 3:
                return with_.lines && with_.held ? factory_.Slope(anySignal(Quality::Linear))
                                                 : number();
            default:
                return number();
        }
    }

    Expression number() {
        const double a = 0.25 * static_cast<double>(anyIndex(4));
        const double b = a + 0.25 * static_cast<double>(anyIndex(4));
        const bool isLine = with_.lines && (!with_.held || anyIndex(2) == 0);
        const Expression x = anySignal(isLine ? Quality::Linear : Quality::Held);
        switch (anyIndex(with_.held ? 8 : 4)) {
            case 0:
                return factory_.Abs(factory_.UnaryMinus(x));
            case 1:
                return factory_.Shift(anyOf<double>({a, -a}), x);
            case 2:
                return factory_.Eventually(a, b, x);
            case 3:
                return timedwindow_unary_op(anyOf<VORM_OP>({VORM_OP::Least, VORM_OP::Greatest}), x,
                                            "extremum", -b, a);
            case 4:
                return cast_op(anySignal(Quality::Integer), cast_op::castFlag<double>());
            default:
                return x;
        }
    }

    ExpressionFactory factory_;
    Ingredients with_;
};

}  // namespace vorm::test

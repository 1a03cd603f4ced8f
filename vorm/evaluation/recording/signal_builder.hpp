#pragma once

// Makes the pieces of one signal from the cells of its column.

#include <vorm/evaluation/signal/sample_collector.hpp>
#include <vorm/evaluation/signal/sample_order.hpp>
#include <vorm/evaluation/table/cell_value.hpp>

namespace vorm::evaluation {

class SignalBuilder {
public:
    struct Result {
        SignalType type;
        RecordedPieces pieces;
    };

    virtual ~SignalBuilder() = default;

    /// A sample. Throws InputError, which names no place, for a cell that is no value of the type,
    /// and for a time that goes back or, unless the rules allow it, repeats.
    void append(double time, const Cell& cell) {
        if (cell.hasPoint) [[unlikely]] {
            checkPoint(cell);
        }
        order_.place(time, [&](SampleStep step) { take(step, time, cell.text); });
    }

    /// The signal's type and its pieces with the bias of the timeline; `name` is that of an
    /// enumeration which has none. Nothing is appended after this. Throws InputError where the
    /// timeline cannot tell two samples apart.
    virtual Result finish(const std::string& name, const Timeline& timeline) = 0;

protected:
    explicit SignalBuilder(SignalRules rules) : order_(std::move(rules)) {}

    const SignalRules& rules() const { return order_.rules(); }

private:
    void checkPoint(const Cell& cell) const;
    virtual bool isOfTexts() const { return false; }
    virtual void take(SampleStep step, double time, std::string_view text) = 0;

    SampleOrder order_;
};

/// For a column whose first value is that of the cell. Throws InputError where linear interpolation
/// is declared for a type that has none.
std::unique_ptr<SignalBuilder> makeSignalBuilder(const SignalRules& rules, const Cell& first);

}  // namespace vorm::evaluation

#pragma once

// Collects the samples of one signal, those of a line also as held where formulas ask for that: a
// line keeps no samples that lie on it.

#include <vorm/evaluation/signal/trace_collector.hpp>

#include <utility>

namespace vorm::evaluation {

/// What was recorded of a signal.
struct RecordedPieces {
    SharedPieces signal;
    SharedPieces held;  ///< its samples held; null for a line of which nobody asked for that
};

template <class T>
class SampleCollector {
public:
    SampleCollector(assessments::INTERPOLATION_METHOD interpolation, bool alsoHeld)
        : signal_(interpolation),
          isLine_(interpolation == assessments::INTERPOLATION_METHOD::LINEAR) {
        if (isLine_ && alsoHeld) {
            held_.emplace(assessments::INTERPOLATION_METHOD::ZOH);
        }
    }

    void add(SampleStep step, double time, const T& value) {
        signal_.add(step, time, value);
        if (held_) {
            held_->add(step, time, value);
        }
    }

    /// Nothing is added after this. Throws InputError as sharedPieces does.
    RecordedPieces take(const Timeline& timeline) {
        RecordedPieces pieces{sharedPieces(signal_.take(), timeline), nullptr};
        pieces.held = held_     ? sharedPieces(held_->take(), timeline)
                      : isLine_ ? nullptr
                                : pieces.signal;
        return pieces;
    }

    /// As TraceCollector has it.
    template <class U, class Conversion>
    TraceCollector<U> converted(const Conversion& conversion) const {
        return signal_.template converted<U>(conversion);
    }

private:
    TraceCollector<T> signal_;
    bool isLine_;
    std::optional<TraceCollector<T>> held_;
};

}  // namespace vorm::evaluation

#pragma once

#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/time/time_span.hpp>

#include <cstddef>
#include <string>
#include <vector>

namespace vorm::evaluation {

enum class DrawingKind {
    Lines,   ///< straight lines between samples
    Steps,   ///< values held to the next sample
    Switch,  ///< held, 0 or 1
    Levels,  ///< held; the values are positions in a list of names
};

/// A stretch throughout which a signal is known: from its first time to its end, both included.
struct DrawnPiece {
    std::vector<double> times;  ///< as the recording's timeline counts them
    std::vector<double> values;
    double end;
};

/// A signal as numbers, all of its samples or those that show its course.
struct SignalDrawing {
    std::string name;
    std::string unit;
    DrawingKind kind;
    std::vector<std::string> levels;  ///< the names of the values, of Levels
    std::vector<DrawnPiece> pieces;   ///< in time order
    /// How many the signal has in the time that is drawn; a held value that does not change is one.
    std::size_t samples = 0;

    /// How many samples are in the pieces.
    std::size_t shown() const;
};

/// All samples of a signal. Integers of 64 bits beyond 2^53 are rounded. Linear.
SignalDrawing drawingOf(const Signal& signal);

/// What is known in the span, and of each piece the sample next to it on either side: what is held
/// or lies on a line at its ends is as it was. Linear.
SignalDrawing within(SignalDrawing drawing, const CountedSpan& span);

/// How much of a drawing to keep.
struct Thinning {
    std::size_t buckets = 1000;     ///< of equal length, over the time of the signal
    std::size_t leaveAlone = 4000;  ///< a drawing of at most so many samples stays as it is
    /// Spans near whose ends all samples are kept, as many as `around` on either side of each end.
    std::vector<CountedSpan> fullAt;
    std::size_t around = 500;
};

/// The drawing with, of each bucket, the first and the last sample, the least and the greatest: no
/// extreme vanishes. A bucket ends with its piece, and where a NaN follows a number or a number a
/// NaN, so that no line is drawn where the signal has none. A drawing that was thinned can be
/// thinned again. Linear in the samples.
SignalDrawing thinned(SignalDrawing drawing, const Thinning& thinning);

}  // namespace vorm::evaluation

#include "signal_drawing.hpp"

#include <vorm/assessments/trace/value_traits.hpp>
#include <vorm/evaluation/signal/verdict_name.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace vorm::evaluation {
namespace {

using namespace assessments;

constexpr std::array verdicts{resultEnum_t::FAIL, resultEnum_t::NO_RESULT, resultEnum_t::PASS};

template <class T>
double numberOf(const T& value) {
    if constexpr (support::isVerdict<T>) {
        return static_cast<double>(std::find(verdicts.begin(), verdicts.end(), value.get()) -
                                   verdicts.begin());
    } else {
        return support::toDouble(value);
    }
}

DrawingKind kindOf(const Signal& signal) {
    const bool isLinear =
        std::any_of(signal.pieces->begin(), signal.pieces->end(), [](const TimedTrace& piece) {
            return piece.getInterpolation() == INTERPOLATION_METHOD::LINEAR;
        });
    if (signal.type.isEnumerated() || signal.type.is<Verdict>()) {
        return DrawingKind::Levels;
    }
    return signal.type.is<bool>() ? DrawingKind::Switch
           : isLinear             ? DrawingKind::Lines
                                  : DrawingKind::Steps;
}

std::vector<std::string> levelsOf(const SignalType& type) {
    std::vector<std::string> levels;
    if (type.is<Verdict>()) {
        for (const resultEnum_t verdict : verdicts) {
            levels.emplace_back(verdictName(verdict));
        }
    }
    return type.isEnumerated() ? type.enumeration->members : levels;
}

template <class T>
DrawnPiece pieceOf(const TimedTrace_T<T>& trace) {
    DrawnPiece piece;
    piece.times.reserve(trace.points.size());
    piece.values.reserve(trace.points.size());
    for (const auto& point : trace.points) {
        piece.times.push_back(point.time);
        piece.values.push_back(numberOf(point.value));
    }
    piece.end = trace.lastKnownTime;
    return piece;
}

// The samples of a bucket that are kept, by their position.
class Bucket {
public:
    void add(std::size_t position, double value) {
        if (first_ == none) {
            first_ = position;
        }
        last_ = position;
        if (least_ == none || value < leastValue_) {
            least_ = position;
            leastValue_ = value;
        }
        if (greatest_ == none || value > greatestValue_) {
            greatest_ = position;
            greatestValue_ = value;
        }
    }

    void keep(std::vector<bool>& kept) const {
        for (const std::size_t position : {first_, last_, least_, greatest_}) {
            if (position != none) {
                kept[position] = true;
            }
        }
    }

private:
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::size_t first_ = none;
    std::size_t last_ = none;
    std::size_t least_ = none;
    std::size_t greatest_ = none;
    double leastValue_ = 0;
    double greatestValue_ = 0;
};

// Which samples to keep, counted over all pieces.
class Choice {
public:
    Choice(const SignalDrawing& drawing, const Thinning& thinning)
        : kept_(drawing.shown()), thinning_(thinning) {
        for (const DrawnPiece& piece : drawing.pieces) {
            times_.insert(times_.end(), piece.times.begin(), piece.times.end());
        }
        keepBuckets(drawing);
        for (const CountedSpan& span : thinning.fullAt) {
            keepAround(span.first);
            keepAround(span.last);
        }
    }

    bool operator[](std::size_t position) const { return kept_[position]; }

private:
    // A bucket ends with its piece, and where numbers end or begin among samples that are none:
    // what is drawn stops and goes on where the signal does.
    void keepBuckets(const SignalDrawing& drawing) {
        const double begin = times_.front();
        const double length = times_.back() - begin;
        const auto buckets = static_cast<double>(thinning_.buckets);
        std::size_t position = 0;
        for (const DrawnPiece& piece : drawing.pieces) {
            Bucket bucket;
            double current = 0;
            bool isNan = false;
            for (std::size_t i = 0; i < piece.times.size(); ++i, ++position) {
                const double number = std::floor((piece.times[i] - begin) / length * buckets);
                if (number != current || std::isnan(piece.values[i]) != isNan) {
                    bucket.keep(kept_);
                    bucket = {};
                    current = number;
                    isNan = std::isnan(piece.values[i]);
                }
                bucket.add(position, piece.values[i]);
            }
            bucket.keep(kept_);
        }
    }

    void keepAround(double time) {
        const auto at = static_cast<std::size_t>(
            std::lower_bound(times_.begin(), times_.end(), time) - times_.begin());
        const std::size_t from = at - std::min(at, thinning_.around);
        const std::size_t to = std::min(kept_.size(), at + thinning_.around);
        std::fill(kept_.begin() + static_cast<std::ptrdiff_t>(from),
                  kept_.begin() + static_cast<std::ptrdiff_t>(to), true);
    }

    std::vector<double> times_;
    std::vector<bool> kept_;
    const Thinning& thinning_;
};

}  // namespace

std::size_t SignalDrawing::shown() const {
    std::size_t count = 0;
    for (const DrawnPiece& piece : pieces) {
        count += piece.times.size();
    }
    return count;
}

SignalDrawing drawingOf(const Signal& signal) {
    SignalDrawing drawing{signal.name, signal.unit, kindOf(signal), {}, {}, 0};
    drawing.levels = levelsOf(signal.type);
    for (const TimedTrace& piece : *signal.pieces) {
        drawing.pieces.push_back(piece.visit([](const auto& trace) { return pieceOf(trace); }));
    }
    drawing.samples = drawing.shown();
    return drawing;
}

SignalDrawing within(SignalDrawing drawing, const CountedSpan& span) {
    std::vector<DrawnPiece> pieces;
    for (DrawnPiece& piece : drawing.pieces) {
        if (piece.end < span.first || span.last < piece.times.front()) {
            continue;
        }
        const auto [before, after] =
            std::pair(std::upper_bound(piece.times.begin(), piece.times.end(), span.first) -
                          piece.times.begin(),
                      std::lower_bound(piece.times.begin(), piece.times.end(), span.last) -
                          piece.times.begin());
        const auto first = std::max<std::ptrdiff_t>(before - 1, 0);
        const auto end = std::min(after + 1, std::ssize(piece.times));
        const auto cut = [&](const std::vector<double>& all) {
            return std::vector<double>(all.begin() + first, all.begin() + end);
        };
        const bool goesOn = end < std::ssize(piece.times);
        pieces.push_back({cut(piece.times), cut(piece.values),
                          goesOn ? piece.times[static_cast<std::size_t>(end) - 1] : piece.end});
    }
    drawing.pieces = std::move(pieces);
    drawing.samples = drawing.shown();
    return drawing;
}

SignalDrawing thinned(SignalDrawing drawing, const Thinning& thinning) {
    if (drawing.shown() <= thinning.leaveAlone) {
        return drawing;
    }
    const Choice choice(drawing, thinning);
    std::vector<DrawnPiece> pieces;
    std::size_t position = 0;
    for (const DrawnPiece& piece : drawing.pieces) {
        DrawnPiece part{{}, {}, piece.end};
        for (std::size_t i = 0; i < piece.times.size(); ++i, ++position) {
            if (choice[position]) {
                part.times.push_back(piece.times[i]);
                part.values.push_back(piece.values[i]);
            }
        }
        if (!part.times.empty()) {
            pieces.push_back(std::move(part));
        }
    }
    drawing.pieces = std::move(pieces);
    return drawing;
}

}  // namespace vorm::evaluation

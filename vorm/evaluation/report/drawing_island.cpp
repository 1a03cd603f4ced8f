#include "drawing_island.hpp"

#include <vorm/evaluation/report/html_text.hpp>
#include <vorm/evaluation/report/interval_lines.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <algorithm>
#include <cmath>

namespace vorm::evaluation {
namespace {

// The script draws each of them by itself.
constexpr std::size_t mostCausesDrawn = 20;

// JSON has no infinity, but numbers that every reader of doubles takes for it.
std::string numberJson(double number) {
    if (std::isnan(number)) {
        return "null";
    }
    if (std::isinf(number)) {
        return number > 0 ? "1e999" : "-1e999";
    }
    return shortestNumber(number);
}

template <class List, class Write>
std::string listJson(const List& list, const Write& write) {
    std::string json = "[";
    for (const auto& item : list) {
        json += (json.size() == 1 ? "" : ",") + write(item);
    }
    return json + "]";
}

std::string kindName(DrawingKind kind) {
    switch (kind) {
        case DrawingKind::Lines:
            return "lines";
        case DrawingKind::Steps:
            return "steps";
        case DrawingKind::Switch:
            return "truth";
        case DrawingKind::Levels:
            break;
    }
    return "levels";
}

class IslandWriter {
public:
    IslandWriter(const RecordingDrawing& drawing, const RecordingOutcome& outcome,
                 std::size_t mostExplained)
        : drawing_(drawing),
          outcome_(outcome),
          clock_(outcome.times.clock),
          times_(clock_),
          mostExplained_(mostExplained) {
        origin_ = wholeSeconds(firstTime());
    }

    std::string write() const {
        std::string assessments;
        for (std::size_t i = 0; i < drawing_.assessments.size(); ++i) {
            const auto& drawn = drawing_.assessments[i];
            assessments += (i == 0 ? "" : ",") +
                           (drawn ? assessmentJson(*drawn, outcome_.assessments[i]) : "null");
        }
        return R"({"origin":)" + jsonText(origin_.text()) + R"(,"clock":)" + clockJson() +
               R"(,"signals":)" +
               listJson(drawing_.signals,
                        [&](const SignalDrawing& signal) { return signalJson(signal); }) +
               R"(,"assessments":[)" + assessments + "]}";
    }

private:
    // Times near zero are shown as they are.
    static ExactTime wholeSeconds(ExactTime time) {
        constexpr ExactTime near = 1'000'000 * second;
        return -near < time && time < near ? ExactTime()
                                           : (time.attoseconds() / second.attoseconds()) * second;
    }

    ExactTime firstTime() const {
        std::optional<ExactTime> first;
        for (const SignalDrawing& signal : drawing_.signals) {
            for (const DrawnPiece& piece : signal.pieces) {
                if (std::isfinite(piece.times.front())) {
                    const ExactTime time = drawing_.timeline.timeAt(piece.times.front());
                    first = std::min(first.value_or(time), time);
                }
            }
        }
        return first.value_or(ExactTime());
    }

    // What is assessed, from its first time to its last.
    TimeSpan whole() const {
        std::optional<TimeSpan> whole;
        for (std::size_t i = 0; i < drawing_.assessments.size(); ++i) {
            if (drawing_.assessments[i]) {
                const auto& [from, to] =
                    std::pair(outcome_.assessments[i].from, outcome_.assessments[i].to);
                whole = whole ? TimeSpan{std::min(whole->start, from), std::max(whole->end, to)}
                              : TimeSpan{from, to};
            }
        }
        return whole.value_or(TimeSpan());
    }

    // All that tells dates, so that no page asks its browser for a time zone.
    std::string clockJson() const {
        const TimeSpan span = whole();
        const auto offsets =
            clock_ ? clock_->offsets(span.start, span.end) : std::vector<TimeZone::Offset>();
        if (offsets.empty()) {
            return "null";
        }
        const auto offset = [](const TimeZone::Offset& one) {
            return R"({"since":)" + one.since.text() + R"(,"ahead":)" + one.ahead.text() + "}";
        };
        return R"({"zone":)" + jsonText(clock_->zoneName()) + R"(,"origin":)" +
               jsonText(clock_->utcOf(origin_).text()) + R"(,"offsets":)" +
               listJson(offsets, offset) + "}";
    }

    std::string timeJson(ExactTime time) const { return (time - origin_).text(); }

    std::string signalJson(const SignalDrawing& signal) const {
        const auto text = [](const std::string& level) { return jsonText(level); };
        return R"({"name":)" + jsonText(signal.name) + R"(,"unit":)" + jsonText(signal.unit) +
               R"(,"kind":")" + kindName(signal.kind) + R"(","levels":)" +
               listJson(signal.levels, text) + R"(,"samples":)" + std::to_string(signal.samples) +
               R"(,"shown":)" + std::to_string(signal.shown()) + R"(,"pieces":)" +
               listJson(signal.pieces, [&](const DrawnPiece& piece) { return pieceJson(piece); }) +
               "}";
    }

    std::string pieceJson(const DrawnPiece& piece) const {
        const auto time = [&](double counted) {
            return timeJson(drawing_.timeline.timeAt(counted));
        };
        return R"({"t":)" + listJson(piece.times, time) + R"(,"v":)" +
               listJson(piece.values, numberJson) + R"(,"end":)" + time(piece.end) + "}";
    }

    std::string spansJson(const std::vector<TimeSpan>& spans) const {
        return listJson(spans, [&](const TimeSpan& span) {
            return timeJson(span.start) + "," + timeJson(span.end);
        });
    }

    std::string assessmentJson(const AssessmentDrawing& drawn,
                               const AssessmentOutcome& outcome) const {
        const auto threshold = [](const Threshold& line) {
            return R"({"signal":)" + std::to_string(line.signal) + R"(,"value":)" +
                   numberJson(line.value) + "}";
        };
        const auto position = [](std::size_t signal) { return std::to_string(signal); };
        return R"({"from":)" + timeJson(outcome.from) + R"(,"to":)" + timeJson(outcome.to) +
               R"(,"failures":)" + spansJson(outcome.failures) + R"(,"open":)" +
               spansJson(drawn.open) + R"(,"signals":)" + listJson(drawn.signals, position) +
               R"(,"thresholds":)" + listJson(drawn.thresholds, threshold) + R"(,"causes":)" +
               causesJson(outcome) + "}";
    }

    std::string causesJson(const AssessmentOutcome& outcome) const {
        std::vector<const Cause*> causes;
        const std::size_t count = std::min(outcome.explanations.size(), mostExplained_);
        for (std::size_t i = 0; i < count; ++i) {
            const std::vector<Cause>& all = outcome.explanations[i].causes;
            for (std::size_t k = 0; k < std::min(all.size(), mostCausesDrawn); ++k) {
                causes.push_back(&all[k]);
            }
        }
        return listJson(causes, [&](const Cause* cause) {
            return R"({"signals":)" + positionsJson(cause->signals) + R"(,"from":)" +
                   timeJson(cause->span.start) + R"(,"to":)" + timeJson(cause->span.end) +
                   R"(,"text":)" + jsonText(causeText(*cause, times_)) + "}";
        });
    }

    std::string positionsJson(const std::vector<std::string>& names) const {
        std::vector<std::size_t> positions;
        for (std::size_t i = 0; i < drawing_.signals.size(); ++i) {
            if (std::find(names.begin(), names.end(), drawing_.signals[i].name) != names.end()) {
                positions.push_back(i);
            }
        }
        return listJson(positions, [](std::size_t position) { return std::to_string(position); });
    }

    const RecordingDrawing& drawing_;
    const RecordingOutcome& outcome_;
    const std::optional<WallClock>& clock_;
    const TimeWriter times_;
    const std::size_t mostExplained_;
    ExactTime origin_;
};

}  // namespace

std::string drawingIsland(const RecordingDrawing& drawing, const RecordingOutcome& outcome,
                          std::size_t mostExplained) {
    return IslandWriter(drawing, outcome, mostExplained).write();
}

}  // namespace vorm::evaluation

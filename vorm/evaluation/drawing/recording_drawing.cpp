#include "recording_drawing.hpp"

#include <vorm/assessments/expression/tree_walk.hpp>
#include <vorm/assessments/trace/value_traits.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

bool isComparison(VORM_OP op) {
    return VORM_OP::Eq <= op && op <= VORM_OP::Geq;
}

std::optional<double> finiteNumber(const constantValue& literal) {
    return boost::apply_visitor(
        [](const auto& value) -> std::optional<double> {
            using T = std::decay_t<decltype(value)>;
            if constexpr (support::isVerdict<T> || support::isBool<T>) {
                return std::nullopt;
            } else {
                const double number = support::toDouble(value);
                return std::isfinite(number) ? std::optional(number) : std::nullopt;
            }
        },
        literal.value);
}

// Each constant that a signal is compared with, by the name of the signal.
template <class Take>
void forEachThreshold(const Expression& formula, const Take& take) {
    support::forEachNode(formula, [&](const Expression& node) {
        const auto* comparison = boost::get<binary_op>(&node);
        if (comparison == nullptr || !isComparison(comparison->op)) {
            return;
        }
        for (const auto& [one, other] : {std::pair(&comparison->lhs, &comparison->rhs),
                                         std::pair(&comparison->rhs, &comparison->lhs)}) {
            const auto* signal = boost::get<variable>(one);
            const auto* literal = boost::get<constantValue>(other);
            if (signal != nullptr && literal != nullptr) {
                if (const auto number = finiteNumber(*literal)) {
                    take(signal->name, *number);
                }
            }
        }
    });
}

class Drawer {
public:
    Drawer(const AssessmentFile& file, const AssessedRecording& assessed,
           const DrawingOptions& options)
        : file_(file),
          recording_(assessed.recording),
          options_(options),
          names_(namesIn(file, assessed.recording)),
          drawing_{assessed.number, assessed.recording.timeline, {}, {}} {}

    RecordingDrawing draw(const std::vector<AssessmentOutcome>& outcomes) {
        for (const AssessmentOutcome& outcome : outcomes) {
            const bool hasPassed = outcome.verdict == resultEnum_t::PASS &&
                                   (outcome.passesThroughout() || !options_.strict);
            const bool isDrawn = !outcome.error && (options_.drawsAll || !hasPassed);
            drawing_.assessments.push_back(isDrawn ? std::optional(drawingOf(outcome))
                                                   : std::nullopt);
        }
        for (std::size_t i = 0; i < signals_.size(); ++i) {
            Thinning thinning = options_.thinning;
            thinning.fullAt = std::move(fullAt_[i]);
            drawing_.signals.push_back(
                thinned(within(vorm::evaluation::drawingOf(*signals_[i]), ranges_[i]), thinning));
        }
        return std::move(drawing_);
    }

private:
    AssessmentDrawing drawingOf(const AssessmentOutcome& outcome) {
        const Formula formula =
            typedAssessment(file_, file_.find(outcome.name), names_, recording_).formula;
        AssessmentDrawing drawing;
        support::forEachNode(formula.tree, [&](const Expression& node) {
            if (const auto* signal = boost::get<variable>(&node)) {
                const std::size_t position = positionOf(signal->name);
                if (std::find(drawing.signals.begin(), drawing.signals.end(), position) ==
                    drawing.signals.end()) {
                    drawing.signals.push_back(position);
                    addFullSpans(outcome, position);
                    addRange(outcome, position);
                }
            }
        });
        forEachThreshold(formula.tree, [&](const std::string& signal, double value) {
            const Threshold threshold{positionOf(signal), value};
            if (!recording_.find(signal)->type.isEnumerated() &&
                std::none_of(drawing.thresholds.begin(), drawing.thresholds.end(),
                             [&](const Threshold& other) {
                                 return other.signal == threshold.signal &&
                                        other.value == threshold.value;
                             })) {
                drawing.thresholds.push_back(threshold);
            }
        });
        drawing.open = outcome.openSpans;
        if (outcome.verdict == resultEnum_t::NO_RESULT && drawing.open.empty()) {
            drawing.open = {{outcome.from, outcome.to}};
        }
        return drawing;
    }

    void addRange(const AssessmentOutcome& outcome, std::size_t signal) {
        CountedSpan& range = ranges_[signal];
        range.first = std::min(range.first, recording_.timeline.at(outcome.from));
        range.last = std::max(range.last, recording_.timeline.at(outcome.to));
    }

    std::size_t positionOf(const std::string& name) {
        const auto [found, isNew] = positions_.emplace(name, signals_.size());
        if (isNew) {
            signals_.push_back(recording_.find(name));
            fullAt_.emplace_back();
            ranges_.push_back({std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity()});
        }
        return found->second;
    }

    void addFullSpans(const AssessmentOutcome& outcome, std::size_t signal) {
        const std::size_t count = std::min(outcome.failures.size(), options_.mostFullIntervals);
        for (std::size_t i = 0; i < count; ++i) {
            const TimeSpan& span = outcome.failures[i];
            fullAt_[signal].push_back(
                {recording_.timeline.at(span.start), recording_.timeline.at(span.end)});
        }
    }

    const AssessmentFile& file_;
    const Recording& recording_;
    const DrawingOptions& options_;
    const FormulaNames names_;
    RecordingDrawing drawing_;
    std::map<std::string, std::size_t> positions_;
    std::vector<const Signal*> signals_;
    std::vector<std::vector<CountedSpan>> fullAt_;
    std::vector<CountedSpan> ranges_;  // from the first to the last time of what draws the signal
};

}  // namespace

RecordingDrawing drawRecording(const AssessmentFile& file, const AssessedRecording& assessed,
                               const DrawingOptions& options) {
    return Drawer(file, assessed, options).draw(assessed.outcome.assessments);
}

}  // namespace vorm::evaluation

#include "outcome.hpp"

#include <algorithm>

namespace vorm::evaluation {

TimeSpan AssessmentOutcome::failureWithCauses(std::size_t failure) const {
    TimeSpan span = failures[failure];
    for (const Cause& cause : explanations[failure].causes) {
        span = {std::min(span.start, cause.span.start), std::max(span.end, cause.span.end)};
    }
    return span;
}

double AssessmentOutcome::openShare() const {
    if (verdict == assessments::resultEnum_t::NO_RESULT) {
        return 1;
    }
    // Ends of spans are rounded, those of the range are not.
    return from == to ? 0 : std::min(1.0, open.seconds() / (to - from).seconds());
}

bool AssessmentOutcome::fails(bool strict) const {
    return strict ? !error && !passesThroughout() : verdict == assessments::resultEnum_t::FAIL;
}

bool AssessmentOutcome::passesThroughout() const {
    return verdict == assessments::resultEnum_t::PASS && openSpans.empty();
}

bool RecordingOutcome::hasFailures(bool strict) const {
    return std::any_of(assessments.begin(), assessments.end(),
                       [strict](const auto& assessment) { return assessment.failsRun(strict); });
}

bool RunOutcome::hasErrors() const {
    return std::any_of(recordings.begin(), recordings.end(), [](const auto& recording) {
        return recording.error ||
               std::any_of(recording.assessments.begin(), recording.assessments.end(),
                           [](const auto& assessment) { return assessment.error.has_value(); });
    });
}

bool RunOutcome::hasFailures() const {
    return std::any_of(recordings.begin(), recordings.end(),
                       [this](const auto& recording) { return recording.hasFailures(strict); });
}

}  // namespace vorm::evaluation

#include "outcome.hpp"

#include <algorithm>

namespace vorm::evaluation {
namespace {

template <class Holds>
bool anyAssessment(const RunOutcome& run, Holds holds) {
    return std::any_of(run.recordings.begin(), run.recordings.end(), [&](const auto& recording) {
        return std::any_of(recording.assessments.begin(), recording.assessments.end(), holds);
    });
}

}  // namespace

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

bool AssessmentOutcome::passesThroughout() const {
    return verdict == assessments::resultEnum_t::PASS && openSpans.empty();
}

bool RunOutcome::hasErrors() const {
    return std::any_of(recordings.begin(), recordings.end(),
                       [](const auto& recording) { return recording.error.has_value(); }) ||
           anyAssessment(*this,
                         [](const auto& assessment) { return assessment.error.has_value(); });
}

bool RunOutcome::hasFailures() const {
    return anyAssessment(*this, [this](const auto& assessment) {
        return strict ? !assessment.error && assessment.severity == Severity::Error &&
                            !assessment.passesThroughout()
                      : assessment.failsAsError();
    });
}

}  // namespace vorm::evaluation

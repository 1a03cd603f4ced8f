#include "outcome_mark.hpp"

namespace vorm::evaluation {
namespace {

Mark failedAs(Severity severity) {
    switch (severity) {
        case Severity::Warning:
            return Mark::Warned;
        case Severity::Info:
            return Mark::Informed;
        case Severity::Error:
            break;
    }
    return Mark::Failed;
}

}  // namespace

using assessments::resultEnum_t;

Mark markOf(const AssessmentOutcome& outcome, bool strict) {
    if (outcome.error) {
        return Mark::Error;
    }
    switch (outcome.verdict) {
        case resultEnum_t::FAIL:
            return failedAs(outcome.severity);
        case resultEnum_t::NO_RESULT:
            return Mark::NoResult;
        case resultEnum_t::PASS:
            break;
    }
    return strict && !outcome.passesThroughout() ? Mark::Open : Mark::Passed;
}

MarkCounts countMarks(const std::vector<Mark>& marks) {
    MarkCounts counts{};
    for (const Mark mark : marks) {
        ++of(mark, counts);
    }
    return counts;
}

}  // namespace vorm::evaluation

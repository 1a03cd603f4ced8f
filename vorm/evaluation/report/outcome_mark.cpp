#include "outcome_mark.hpp"

namespace vorm::evaluation {

using assessments::resultEnum_t;

std::size_t markOf(const AssessmentOutcome& outcome, bool strict) {
    if (outcome.error) {
        return 0;
    }
    switch (outcome.verdict) {
        case resultEnum_t::FAIL:
            return 1;
        case resultEnum_t::NO_RESULT:
            return 2;
        case resultEnum_t::PASS:
            break;
    }
    return strict && !outcome.passesThroughout() ? 3 : 4;
}

}  // namespace vorm::evaluation

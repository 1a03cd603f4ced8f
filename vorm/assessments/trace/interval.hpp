#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

/// One stretch of time in which a requirement fails: from the first failing sample to the next
/// passing one, or to the end of what is known. Times are in the signal's unit.
struct VORM_ASSESSMENTS_EXPORT VORM_Interval {
    double start;
    double end;

    friend bool operator==(const VORM_Interval&, const VORM_Interval&) = default;
};

}  // namespace vorm::assessments

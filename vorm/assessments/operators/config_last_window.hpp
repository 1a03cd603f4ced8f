#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

/// A process-wide setting of the windowed operators on bool traces; the library only reads it. Set
/// it before evaluating: it is not guarded against use from several threads at once.
///
/// A window that reaches beyond lastKnownTime has no result, and so the result of a window of
/// width w is known up to lastKnownTime - w. With `minimize` set, the last windows are looked at
/// only as far as it takes to decide them: the result stays known for as long as the value that
/// decides a window on its own (true for Eventually, false for Globally) has been seen in it. A
/// window wider than the known span has no result either way.
/// Values at times that are known without the setting never change.
struct VORM_ASSESSMENTS_EXPORT configLastWindow {
    static bool minimize;
};

}  // namespace vorm::assessments

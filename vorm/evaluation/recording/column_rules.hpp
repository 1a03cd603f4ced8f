#pragma once

// The rules for the samples of a column, as a layout states them.

#include <vorm/evaluation/recording/recording_layout.hpp>

namespace vorm::evaluation {

/// Those of the column's declaration, or of the layout where it has none (null).
SignalRules rulesFor(const std::string& column, const SignalLayout* declaration,
                     const RecordingLayout& layout, const Timeline& timeline);

}  // namespace vorm::evaluation

#pragma once

#include <vorm/evaluation/table/table_layout.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// How one signal stands in a recording. What is not given is found out or taken from the layout.
struct SignalLayout {
    std::string name;
    std::string column;  ///< empty: the name
    /// Of a recording of several files: its name without folder, or its path as given; or empty.
    std::string file;
    std::optional<SignalType> type;
    std::optional<assessments::INTERPOLATION_METHOD> interpolation;
    std::string unit;
    std::optional<ExactTime> maxGap;
    std::optional<EqualTimes> equalTimes;
    SourceLocation where;  ///< of its declaration, for messages
};

/// How recordings are to be read. The default one takes CSV as most programs write it.
struct RecordingLayout : TableLayout {
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    std::optional<ExactTime> maxGap;
    std::vector<SignalLayout> signals;
};

}  // namespace vorm::evaluation

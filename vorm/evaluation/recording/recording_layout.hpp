#pragma once

#include <vorm/assessments/trace/interpolation.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorm::evaluation {

/// What to do with a sample at the time of the one before it.
enum class EqualTimes { Refuse, First, Last };

/// Which instant is time 0 of the traces.
struct TimeOrigin {
    struct AsRecorded {};   ///< times stay as they are, but for their unit
    struct FirstSample {};  ///< the first row of the recording that has the least time
    struct FirstOf {        ///< the first row of that file of the recording
        std::string file;
    };
    struct At {  ///< a time as the files write it
        std::string time;
    };
    using Choice = std::variant<AsRecorded, FirstSample, FirstOf, At>;
};

struct TimeLayout {
    /// The columns whose cells, joined by a blank, are the time. Empty: the one column called
    /// time, timestamp, t or alike, with a unit or without, else an error.
    std::vector<std::string> columns;
    std::optional<TimeUnit> unit;  ///< nothing: the header's, else seconds
    /// As TimeFormat reads it, `%m/%d/%Y %H:%M:%S`; without an unreadable conversion. Empty:
    /// numbers.
    std::string format;
    /// The unit in which times are counted: those that are whole numbers of it are exact.
    TimeUnit resolution = *timeUnitOf("ns");
    TimeOrigin::Choice origin = TimeOrigin::AsRecorded();
    EqualTimes equalTimes = EqualTimes::Refuse;
};

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

/// Where rows carry one value each (long form): the columns, or the keys of JSON lines.
struct LongForm {
    std::string nameColumn = "name";
    std::string valueColumn = "value";
};

/// How recordings are to be read. The default one takes CSV as most programs write it.
struct RecordingLayout {
    std::optional<char> delimiter;  ///< nothing: comma, semicolon or tab, whichever the header has
    TimeLayout time;
    std::optional<LongForm> longForm;
    assessments::INTERPOLATION_METHOD interpolation = assessments::INTERPOLATION_METHOD::ZOH;
    std::optional<ExactTime> maxGap;
    std::vector<SignalLayout> signals;
};

}  // namespace vorm::evaluation

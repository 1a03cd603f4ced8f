#pragma once

#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/source/declared_encoding.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vorm::evaluation {

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

/// Where rows carry one value each (long form): the columns, or the keys of JSON lines.
struct LongForm {
    std::string nameColumn = "name";
    std::string valueColumn = "value";
};

/// How the tables of a recording are written.
struct TableLayout {
    /// Of the files without a byte order mark. Nothing: told by their first bytes.
    std::optional<DeclaredEncoding> encoding;
    std::optional<char> delimiter;  ///< nothing: comma, semicolon or tab, whichever the header has
    TimeLayout time;
    std::optional<LongForm> longForm;
};

}  // namespace vorm::evaluation

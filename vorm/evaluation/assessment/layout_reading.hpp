#pragma once

// What the keys of [recording] say, each read by a function of its own; included by the sources of
// this folder only. Those that a signal can have, too, are read here for both.

#include <vorm/evaluation/assessment/fault_collection.hpp>
#include <vorm/evaluation/assessment/layout_keys.hpp>
#include <vorm/evaluation/assessment/toml_table.hpp>

namespace vorm::evaluation::detail {

struct LayoutReading {
    LayoutKey key;
    /// Takes over a value that is there.
    void (*read)(TomlTable& table, const char* key, RecordingLayout& layout);
    std::string needs = {};  ///< a key before this one; or empty
};

const std::vector<LayoutReading>& layoutReadings();

/// Changes what the table says of that key, if it does.
void readKey(const LayoutReading& reading, TomlTable& table, RecordingLayout& layout);

/// Changes what the table says, and refuses keys that are none.
void readLayout(TomlTable& table, RecordingLayout& layout, const FaultCollection& faults);

std::optional<EqualTimes> equalTimes(TomlTable& table);
std::optional<assessments::INTERPOLATION_METHOD> interpolation(TomlTable& table);
std::optional<ExactTime> maxGap(TomlTable& table);

}  // namespace vorm::evaluation::detail

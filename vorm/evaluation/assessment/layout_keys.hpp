#pragma once

#include <vorm/evaluation/recording/recording_layout.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

/// A key of [recording] in assessment files, whose value is a text or for some keys a list of
/// texts.
struct LayoutKey {
    std::string name;
    /// A word for its value, or all that it can be, words for other values among them: `NAME`,
    /// `wide|long`, `recorded|first|NUMBER`.
    std::string value;
    std::string meaning;  ///< one clause without a full stop
    bool isList = false;
};

/// All of them, as docs/assessment_files.md describes them.
const std::vector<LayoutKey>& layoutKeys();

/// What one key is to be.
struct LayoutSetting {
    std::string key;
    std::vector<std::string> texts;  ///< one, unless the key's value is a list
    std::string source;              ///< what messages call it: `--unit`
};

/// The layout with these changes, which mean what they would in an assessment file. Throws
/// InputError, whose place is the setting's source, for what would be refused there.
RecordingLayout layoutWith(RecordingLayout layout, const std::vector<LayoutSetting>& settings);

}  // namespace vorm::evaluation

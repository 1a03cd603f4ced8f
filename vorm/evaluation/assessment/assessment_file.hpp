#pragma once

#include <vorm/evaluation/assessment/formula_source.hpp>
#include <vorm/evaluation/assessment/range_limit.hpp>
#include <vorm/evaluation/assessment/severity.hpp>
#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

/// A formula of an assessment file.
struct SourcedFormula {
    FormulaSource source;
    ParsedFormula formula;
};

/// A requirement with a name.
struct Assessment {
    std::string name;
    std::string description;
    Severity severity = Severity::Error;
    std::vector<std::string> tags;  ///< each once
    SourcedFormula requirement;
    std::optional<RangeLimit> from;  ///< nothing: from the first time of its signals
    std::optional<RangeLimit> to;    ///< included; nothing: to the last time of its signals
};

/// Requirements, what their formulas have in common, and how recordings for them are to be read.
struct AssessmentFile {
    std::string name;         ///< the path, for messages
    std::string title;        ///< or empty
    std::string fingerprint;  ///< of its text
    RecordingLayout layout;
    FormulaParameters parameters;  ///< as the file declares them, or as they were set
    std::map<std::string, SourcedFormula> definitions;
    std::vector<Assessment> assessments;  ///< in the order of the file; their names differ

    /// The assessment of that name. Throws InputError with the nearest names where there is none.
    const Assessment& find(std::string_view assessment) const;
};

/// What a parameter is to be in the place of the value in the file.
struct ParameterSetting {
    std::string name;
    std::string value;   ///< of the kind that the file's value has; numbers as TOML writes them
    std::string source;  ///< what messages call it: `--set`
};

/// Reads an assessment file, a text in TOML 1.0; docs/assessment_files.md describes its keys.
/// Throws InputError, with line and column, for a file that cannot be read, is no TOML, has keys
/// that nothing reads, values of a wrong kind, formulas that are none, or no assessment at all;
/// and, with the setting's source as its place, for a setting of a parameter that the file does not
/// declare, of another kind than its value there, or of one that is set already.
AssessmentFile readAssessmentFile(const std::string& path,
                                  const std::vector<ParameterSetting>& settings = {});

/// The same for a text in memory; `name` stands for it in messages.
AssessmentFile parseAssessmentFile(std::string_view text, const std::string& name,
                                   const std::vector<ParameterSetting>& settings = {});

/// What of an assessment file can be read, and what is wrong with the rest.
struct PartlyReadFile {
    AssessmentFile file;
    std::vector<InputError> errors;     ///< in the order in which the file is read
    std::set<std::string> unreadNames;  ///< of signals and definitions that are not in `file`
    bool hasLayout = true;  ///< whether all of [recording] can be read, and [signals] is a table
};

/// Reads an assessment file to its end, whatever is wrong in it: of each key, definition and
/// assessment the first fault is told, but nothing that only follows from another one. Throws
/// InputError for what cannot be read at all, is no TOML, or for a setting, as readAssessmentFile
/// does.
PartlyReadFile readPartly(const std::string& path,
                          const std::vector<ParameterSetting>& settings = {});

/// The same for a text in memory.
PartlyReadFile parsePartly(std::string_view text, const std::string& name,
                           const std::vector<ParameterSetting>& settings = {});

}  // namespace vorm::evaluation

#pragma once

// Reads the tables of an assessment file key by key; included by the sources of this folder only.
// Every failure is an InputError at the value in question, and what nobody asked for is refused.

#include <vorm/evaluation/assessment/fault_collection.hpp>
#include <vorm/evaluation/assessment/formula_source.hpp>
#include <vorm/evaluation/assessment/range_limit.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/exact_time.hpp>

#include <toml++/toml.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vorm::evaluation::detail {

/// The text of a file and its tables.
struct TomlDocument {
    std::string name;
    std::string_view text;
    toml::table root;

    /// Throws InputError where the text is no TOML.
    TomlDocument(std::string_view content, std::string documentName);

    SourceLocation placeOf(const toml::node& node) const;
    /// A problem at a value, without its message.
    InputProblem problemAt(const toml::node& node) const;
    [[noreturn]] void fail(const toml::node& node, std::string message,
                           std::string advice = {}) const;
    /// What stands in the file for a value.
    std::string_view textAt(const toml::node& node) const;
    /// The digits of a number, with all that the file has of it but underscores.
    std::string digitsOf(const toml::node& number) const;
    /// A string value as a formula's text.
    FormulaSource formulaAt(const toml::value<std::string>& value) const;
};

/// One table whose keys are asked for by name.
class TomlTable {
public:
    /// `what` names the table in messages: `[recording]`.
    TomlTable(const TomlDocument& document, const toml::table& table, std::string what);

    std::optional<std::string> text(const char* key);
    /// The position of the value among the choices.
    std::optional<std::size_t> choice(const char* key, const std::vector<std::string>& choices);
    /// A number of seconds, or a text such as "500 ms".
    std::optional<ExactTime> duration(const char* key);
    /// As duration, or a date or a time of day: `2026-11-22 10:30:00`, `10:30:00`, in quotes or
    /// not.
    std::optional<RangeLimit> rangeLimit(const char* key);
    /// A text, or an array of texts that is not empty.
    std::optional<std::vector<std::string>> texts(const char* key);
    /// The value itself, or null.
    const toml::node* node(const char* key);
    /// A table of its own, or nothing.
    std::optional<TomlTable> table(const char* key, const std::string& name);
    const toml::value<std::string>& requiredText(const char* key);

    /// Calls visit(key, node) for every key in the order of the file.
    template <class Visit>
    void forEach(Visit visit) const {
        for (const auto& [key, value] : inOrder()) {
            visit(key, *value);
        }
    }

    /// Refuses the value of a key.
    [[noreturn]] void fail(const char* key, std::string message, std::string advice = {}) const;
    /// Refuses keys that were not asked for, each with those that could have been meant.
    void refuseOthers(const FaultCollection& faults = FaultCollection(nullptr)) const;

private:
    [[noreturn]] void refuseKey(const std::string& key, const toml::node& value) const;
    const toml::value<std::string>& requireText(const toml::node& node, const char* key) const;
    std::vector<std::pair<std::string, const toml::node*>> inOrder() const;

    const TomlDocument& document_;
    const toml::table& table_;
    std::string what_;
    std::vector<std::string> known_;
};

}  // namespace vorm::evaluation::detail

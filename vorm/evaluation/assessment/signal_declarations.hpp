#pragma once

// The tables [enumerations] and [signals] of an assessment file; included by the sources of this
// folder only.

#include <vorm/evaluation/assessment/toml_table.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

namespace vorm::evaluation::detail {

/// Reads enumerations, and then signals, which may be of them.
class SignalDeclarations {
public:
    /// The document has to outlive the object.
    explicit SignalDeclarations(const TomlDocument& document) : document_(document) {}

    /// Throws InputError for what is no list of members.
    void readEnumeration(const std::string& name, const toml::node& node);

    /// Nothing for a signal of an enumeration that could not be read. Throws InputError for keys
    /// and values that are none.
    std::optional<SignalLayout> signal(const std::string& name, const toml::node& node) const;

private:
    void readKeys(TomlTable& table, SignalLayout& signal) const;
    void requireLines(TomlTable& table, const SignalLayout& signal) const;
    std::optional<SignalType> typeOf(TomlTable& table, const std::string& signal) const;

    const TomlDocument& document_;
    std::map<std::string, std::shared_ptr<const Enumeration>> enumerations_;  ///< null: unread
};

}  // namespace vorm::evaluation::detail

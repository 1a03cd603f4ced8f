#include "toml_table.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/time/clock_text.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <algorithm>

namespace vorm::evaluation::detail {
namespace {

std::string_view lineOf(std::string_view text, std::size_t number) {
    for (; number > 1; --number) {
        text.remove_prefix(std::min(text.size(), text.find('\n') + 1));
    }
    std::string_view line = text.substr(0, text.find('\n'));
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

toml::table parsed(std::string_view text, const std::string& name) {
    try {
        return toml::parse(text, name);
    } catch (const toml::parse_error& error) {
        InputProblem problem;
        problem.message = std::string(error.description());
        problem.where = {name, error.source().begin.line, error.source().begin.column};
        problem.excerpt = std::string(lineOf(text, error.source().begin.line));
        problem.caret =
            error.source().begin.column - std::min<std::size_t>(1, error.source().begin.column);
        problem.caretWidth = problem.excerpt.empty() ? 0 : 1;
        problem.advice =
            "the file has to be TOML: text values stand in quotes, for example "
            "formula = \"speed < 20\"";
        throw InputError(std::move(problem));
    }
}

std::size_t offsetOf(std::string_view text, const toml::source_position& position) {
    std::size_t offset = 0;
    for (auto line = position.line; line > 1; --line) {
        offset = std::min(text.size(), text.find('\n', offset)) + 1;
    }
    // Columns count characters, and strings begin after keys, which may be in any alphabet.
    for (auto column = position.column; column > 1 && offset < text.size(); --column) {
        do {
            ++offset;
        } while (offset < text.size() &&
                 (static_cast<unsigned char>(text[offset]) & 0xc0U) == 0x80U);
    }
    return std::min(offset, text.size());
}

// Of a number and a unit, or of seconds without one.
std::optional<ExactTime> durationOf(std::string_view text) {
    text = trimmed(text);
    const std::size_t end = std::min(text.size(), text.find_last_of("0123456789.") + 1);
    const std::string_view unit = trimmed(text.substr(end));
    const auto known = timeUnitOf(unit.empty() ? "s" : unit);
    return known ? ExactTime::of(trimmed(text.substr(0, end)), known->length) : std::nullopt;
}

}  // namespace

TomlDocument::TomlDocument(std::string_view content, std::string documentName)
    : name(std::move(documentName)), text(content), root(parsed(content, name)) {}

SourceLocation TomlDocument::placeOf(const toml::node& node) const {
    return {name, node.source().begin.line, node.source().begin.column};
}

void TomlDocument::fail(const toml::node& node, std::string message, std::string advice) const {
    InputProblem problem = problemAt(node);
    problem.message = std::move(message);
    problem.advice = std::move(advice);
    throw InputError(std::move(problem));
}

InputProblem TomlDocument::problemAt(const toml::node& node) const {
    InputProblem problem;
    problem.where = placeOf(node);
    problem.excerpt = std::string(lineOf(text, problem.where.line));
    problem.caret = problem.where.column - std::min<std::size_t>(1, problem.where.column);
    problem.caretWidth = 1;
    if (node.source().end.line == node.source().begin.line &&
        node.source().end.column > node.source().begin.column) {
        problem.caretWidth = node.source().end.column - node.source().begin.column;
    }
    return problem;
}

std::string_view TomlDocument::textAt(const toml::node& node) const {
    const std::size_t begin = offsetOf(text, node.source().begin);
    const std::size_t end = std::max(begin, offsetOf(text, node.source().end));
    return text.substr(begin, end - begin);
}

std::string TomlDocument::digitsOf(const toml::node& number) const {
    std::string digits(trimmed(textAt(number)));
    std::erase(digits, '_');
    return digits;
}

FormulaSource TomlDocument::formulaAt(const toml::value<std::string>& value) const {
    const std::string_view raw = textAt(value);
    const std::string& formula = value.get();
    FormulaSource source{formula, placeOf(value), false};
    const bool isMultiLine = raw.starts_with(R"(""")") || raw.starts_with("'''");
    const std::size_t at =
        raw.find(formula, std::min<std::size_t>(isMultiLine ? 3 : 1, raw.size()));
    if (at == std::string_view::npos) {
        return source;
    }
    const std::string_view skipped = raw.substr(0, at);
    const std::size_t newline = skipped.rfind('\n');
    source.verbatim = true;
    if (newline == std::string_view::npos) {
        source.where.column += at;
    } else {
        source.where.line +=
            static_cast<std::size_t>(std::count(skipped.begin(), skipped.end(), '\n'));
        source.where.column = at - newline;
    }
    return source;
}

TomlTable::TomlTable(const TomlDocument& document, const toml::table& table, std::string what)
    : document_(document), table_(table), what_(std::move(what)) {}

const toml::node* TomlTable::node(const char* key) {
    if (std::find(known_.begin(), known_.end(), key) == known_.end()) {
        known_.emplace_back(key);
    }
    return table_.get(key);
}

const toml::value<std::string>& TomlTable::requireText(const toml::node& node,
                                                       const char* key) const {
    if (const auto* value = node.as_string()) {
        return *value;
    }
    document_.fail(node, "'" + std::string(key) + "' has to be a text in quotes");
}

const toml::value<std::string>& TomlTable::requiredText(const char* key) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        document_.fail(table_, what_ + " has no '" + key + "'",
                       "add " + std::string(key) + " = \"...\"");
    }
    return requireText(*value, key);
}

std::optional<std::string> TomlTable::text(const char* key) {
    const toml::node* value = node(key);
    return value == nullptr ? std::nullopt : std::optional(requireText(*value, key).get());
}

std::optional<std::size_t> TomlTable::choice(const char* key,
                                             const std::vector<std::string>& choices) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::string& chosen = requireText(*value, key).get();
    const auto found = std::find(choices.begin(), choices.end(), chosen);
    if (found == choices.end()) {
        document_.fail(*value, "'" + chosen + "' is no " + key,
                       "it is one of " + quotedList(choices, choices.size()));
    }
    return static_cast<std::size_t>(found - choices.begin());
}

std::optional<ExactTime> TomlTable::duration(const char* key) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    std::optional<ExactTime> time;
    if (value->is_number()) {
        // All digits that the file has, which may be more than those of a double.
        time = ExactTime::of(document_.digitsOf(*value), second);
        const auto number = value->value<double>();
        if (!time && number) {
            time = ExactTime::ofSeconds(*number);  // of `0x1F` and the like
        }
    } else if (const auto* given = value->as_string()) {
        time = durationOf(given->get());
    }
    if (!time) {
        document_.fail(*value, "'" + std::string(key) + "' is no time",
                       "write a number of seconds, or a number and one of the units " +
                           std::string(timeUnitNames) + " in quotes: \"500 ms\"");
    }
    return time;
}

std::optional<RangeLimit> TomlTable::rangeLimit(const char* key) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const auto* text = value->as_string();
    const std::string written(text != nullptr ? text->get() : document_.textAt(*value));
    if (read(written, TimeNotation::Iso) || isTimeOfDay(written)) {
        return RangeLimit(written, document_.problemAt(*value));
    }
    if (!value->is_number() && !(text != nullptr && durationOf(written))) {
        document_.fail(*value, "'" + std::string(key) + "' is no time",
                       "write a number of seconds, a number with one of the units " +
                           std::string(timeUnitNames) +
                           " in quotes, \"500 ms\", or, for recordings with dates, a date or a "
                           "time of day: \"2026-11-22 10:30:00\", \"10:30:00\"");
    }
    return RangeLimit(*duration(key), document_.problemAt(*value));
}

std::optional<std::vector<std::string>> TomlTable::texts(const char* key) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const toml::array* list = value->as_array();
    if (list == nullptr) {
        return std::vector<std::string>{requireText(*value, key).get()};
    }
    std::vector<std::string> texts;
    for (const toml::node& element : *list) {
        texts.push_back(requireText(element, key).get());
    }
    if (texts.empty()) {
        document_.fail(*value, "'" + std::string(key) + "' is empty");
    }
    return texts;
}

std::optional<TomlTable> TomlTable::table(const char* key, const std::string& name) {
    const toml::node* value = node(key);
    if (value == nullptr) {
        return std::nullopt;
    }
    if (!value->is_table()) {
        document_.fail(*value, "'" + std::string(key) + "' has to be a table",
                       "put its keys below a line " + name);
    }
    return TomlTable(document_, *value->as_table(), name);
}

std::vector<std::pair<std::string, const toml::node*>> TomlTable::inOrder() const {
    std::vector<std::pair<std::string, const toml::node*>> entries;
    for (const auto& [key, value] : table_) {
        entries.emplace_back(key.str(), &value);
    }
    const auto position = [](const auto& entry) {
        const auto& begin = entry.second->source().begin;
        return std::pair(begin.line, begin.column);
    };
    std::stable_sort(entries.begin(), entries.end(),
                     [&](const auto& a, const auto& b) { return position(a) < position(b); });
    return entries;
}

void TomlTable::fail(const char* key, std::string message, std::string advice) const {
    document_.fail(*table_.get(key), std::move(message), std::move(advice));
}

void TomlTable::refuseOthers(const FaultCollection& faults) const {
    forEach([&](const std::string& key, const toml::node& value) {
        if (std::find(known_.begin(), known_.end(), key) == known_.end()) {
            faults.attempt([&] { refuseKey(key, value); });
        }
    });
}

void TomlTable::refuseKey(const std::string& key, const toml::node& value) const {
    std::string advice = suggestion(key, known_);
    if (advice.empty()) {
        advice = "it can have " + quotedList(known_, known_.size());
    }
    document_.fail(value, "unknown key '" + key + "' in " + what_, std::move(advice));
}

}  // namespace vorm::evaluation::detail

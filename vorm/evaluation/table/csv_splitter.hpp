#pragma once

// Comma, semicolon or tab separated records, as T. Shafranovich, "Common Format and MIME Type for
// Comma-Separated Values (CSV) Files" (2005), describes them, cell by cell. Lines without a quote,
// which are nearly all, take a short way.

#include <vorm/evaluation/table/row_reader.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <deque>
#include <optional>

namespace vorm::evaluation {

class CsvSplitter {
public:
    explicit CsvSplitter(char delimiter) : delimiter_(delimiter) {}

    /// The texts of the cells of a line without a quote; what else is known of cells that are there
    /// already stays.
    void splitLine(std::string_view line, std::vector<Cell>& cells) const;

    /// The cells of the record at the beginning of the text, in it or in memory that the next call
    /// changes, and its length with the line feed. Nothing where the text ends within the record
    /// and is not `whole`. Throws InputError where quotes are not as they have to be, with places
    /// in the file whose line the text begins.
    std::optional<std::size_t> splitRecord(std::string_view text, bool whole,
                                           const SourceLocation& line, std::vector<Cell>& cells);

private:
    std::optional<std::size_t> takeQuoted(std::string_view text, std::size_t quote, bool whole,
                                          const SourceLocation& line, std::vector<Cell>& cells);
    std::optional<std::size_t> takePlain(std::string_view text, std::size_t begin, bool whole,
                                         std::vector<Cell>& cells) const;
    bool isBlank(char c) const { return c != delimiter_ && (c == ' ' || c == '\t'); }

    char delimiter_;
    std::deque<std::string> unescaped_;
};

/// The place of a character in a text that begins with that line.
SourceLocation placeIn(std::string_view text, const char* position, const SourceLocation& line);

/// Whether it is a line that is no row where such lines are comments.
inline bool isComment(std::string_view line) {
    return trimmed(line).starts_with('#');
}

/// Whether it is a line without anything in it.
inline bool isLineEnd(std::string_view line) {
    return line == "\n" || line == "\r\n" || line == "\r";
}

}  // namespace vorm::evaluation

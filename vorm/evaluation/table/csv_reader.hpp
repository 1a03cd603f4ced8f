#pragma once

// Comma, semicolon or tab separated rows, as T. Shafranovich, "Common Format and MIME Type for
// Comma-Separated Values (CSV) Files" (2005), describes them. Lines without a quote, which are
// nearly all, take a short way.

#include <vorm/evaluation/table/row_reader.hpp>

#include <deque>
#include <optional>

namespace vorm::evaluation {

class CsvReader final : public RowReader {
public:
    /// Reads the header, whose cells are those of the first row so far. Without a delimiter it is
    /// the one of comma, semicolon and tab that the header has most of.
    CsvReader(std::string path, ByteWindow bytes, std::optional<char> delimiter);

    bool next() override;
    SourceLocation where(std::size_t cell) const override;

private:
    void readHeader(std::optional<char> delimiter);
    bool readRecord();
    void splitPlain(std::string_view line);
    void splitQuoted();
    std::optional<std::size_t> quotedRecordSize(std::string_view text);
    std::optional<std::size_t> takeQuoted(std::string_view text, std::size_t quote);
    std::optional<std::size_t> takePlain(std::string_view text, std::size_t begin);
    bool isBlank(char c) const { return c != delimiter_ && (c == ' ' || c == '\t'); }
    SourceLocation placeOf(const char* position) const;
    [[noreturn]] void failForSize() const;

    char delimiter_ = ',';
    std::size_t line_ = 0;
    std::size_t nextLine_ = 1;
    std::size_t recordSize_ = 0;
    std::deque<std::string> unescaped_;
};

}  // namespace vorm::evaluation

#include "csv_reader.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>
#include <cstring>

namespace vorm::evaluation {
namespace {

constexpr auto npos = std::string_view::npos;

char detectedDelimiter(std::string_view header) {
    std::array<std::size_t, 3> counts{};
    constexpr std::string_view delimiters = ",;\t";
    bool isQuoted = false;
    for (const char c : header) {
        isQuoted = isQuoted != (c == '"');
        const std::size_t found = delimiters.find(c);
        if (!isQuoted && found != npos) {
            ++counts[found];
        }
    }
    const auto most = std::max_element(counts.begin(), counts.end());
    return delimiters[static_cast<std::size_t>(most - counts.begin())];
}

bool isLineEnd(std::string_view line) {
    return line == "\n" || line == "\r\n" || line == "\r";
}

// Whether something but the end follows a carriage return that stands outside quotes.
bool hasBareReturn(std::string_view line) {
    const std::size_t found = line.find('\r');
    return found != npos && line.find_first_not_of("\r\n", found) != npos &&
           std::count(line.data(), line.data() + found, '"') % 2 == 0;
}

}  // namespace

CsvReader::CsvReader(std::string path, ByteWindow bytes, std::optional<char> delimiter)
    : RowReader(std::move(path), std::move(bytes)) {
    readHeader(delimiter);
}

void CsvReader::readHeader(std::optional<char> delimiter) {
    const std::string_view line = bytes_.line().value_or(std::string_view());
    if (hasBareReturn(line)) {
        failAt({path_}, "has lines that end with a carriage return alone",
               "save it with line feeds (LF or CRLF) as line ends");
    }
    delimiter_ = delimiter.value_or(detectedDelimiter(line));
    if (!readRecord()) {
        failAt({path_}, "is empty");
    }
    for (const Cell& cell : cells_) {
        columns_.emplace_back(cell.text);
    }
}

bool CsvReader::next() {
    if (!readRecord()) {
        return false;
    }
    if (cells_.size() != columns_.size()) {
        failAt({path_, line_},
               "has " + std::to_string(cells_.size()) + " cells, but the header " +
                   std::to_string(columns_.size()),
               "cells that contain the delimiter stand in quotes");
    }
    return true;
}

bool CsvReader::readRecord() {
    bytes_.consume(recordSize_);
    recordSize_ = 0;
    for (;;) {
        line_ = nextLine_++;
        const auto line = bytes_.line();
        if (!line) {
            failForSize();
        }
        if (line->empty()) {
            return false;
        }
        if (!isLineEnd(*line)) {
            if (std::memchr(line->data(), '"', line->size()) == nullptr) {
                splitPlain(*line);
            } else {
                splitQuoted();
            }
            return true;
        }
        bytes_.consume(line->size());
    }
}

void CsvReader::splitPlain(std::string_view line) {
    recordSize_ = line.size();
    for (const char end : {'\n', '\r'}) {
        if (!line.empty() && line.back() == end) {
            line.remove_suffix(1);
        }
    }
    // Cells are written in place: this loop is most of what a column costs that nobody wants.
    std::size_t count = 0;
    const char* begin = line.data();
    const char* const end = begin + line.size();
    for (const char* position = begin;; ++position) {
        if (position == end || *position == delimiter_) {
            if (count == cells_.size()) {
                cells_.emplace_back();
            }
            cells_[count++] = {trimmed({begin, static_cast<std::size_t>(position - begin)}), begin};
            if (position == end) {
                cells_.resize(count);
                return;
            }
            begin = position + 1;
        }
    }
}

void CsvReader::splitQuoted() {
    for (;;) {
        if (const auto size = quotedRecordSize(bytes_.rest())) {
            recordSize_ = *size;
            const std::string_view record = bytes_.rest().substr(0, recordSize_);
            const auto lines = std::count(record.begin(), record.end(), '\n');
            nextLine_ = line_ + std::max<std::size_t>(static_cast<std::size_t>(lines), 1);
            return;
        }
        if (!bytes_.readOn() && !bytes_.isAtEnd()) {
            failForSize();
        }
    }
}

// Nothing where the text ends within the record and may go on.
std::optional<std::size_t> CsvReader::quotedRecordSize(std::string_view text) {
    cells_.clear();
    unescaped_.clear();
    for (std::size_t begin = 0;;) {
        std::size_t first = begin;
        while (first < text.size() && isBlank(text[first])) {
            ++first;
        }
        const bool isQuoted = first < text.size() && text[first] == '"';
        const auto end = isQuoted ? takeQuoted(text, first) : takePlain(text, begin);
        if (!end) {
            return std::nullopt;
        }
        if (*end == text.size() || text[*end] != delimiter_) {
            return std::min(*end + 1, text.size());
        }
        begin = *end + 1;
    }
}

// Both give the position of the delimiter or line feed after the cell, or the end of the text.
std::optional<std::size_t> CsvReader::takePlain(std::string_view text, std::size_t begin) {
    std::size_t end = begin;
    while (end < text.size() && text[end] != delimiter_ && text[end] != '\n') {
        ++end;
    }
    if (end == text.size() && !bytes_.isAtEnd()) {
        return std::nullopt;
    }
    std::string_view cell = text.substr(begin, end - begin);
    const bool endsLine = end == text.size() || text[end] == '\n';
    if (endsLine && cell.ends_with('\r')) {
        cell.remove_suffix(1);
    }
    cells_.push_back({trimmed(cell), text.data() + begin});
    return end;
}

std::optional<std::size_t> CsvReader::takeQuoted(std::string_view text, std::size_t quote) {
    std::size_t end = text.find('"', quote + 1);
    bool hasQuotes = false;
    while (end != npos && end + 1 < text.size() && text[end + 1] == '"') {
        hasQuotes = true;
        end = text.find('"', end + 2);
    }
    if (end == npos && bytes_.isAtEnd()) {
        failAt(placeOf(text.data() + quote), "the quote that opens here is never closed");
    }
    if (end == npos) {
        return std::nullopt;
    }
    std::size_t after = end + 1;
    while (after < text.size() && (isBlank(text[after]) || text[after] == '\r')) {
        ++after;
    }
    if (after == text.size() && !bytes_.isAtEnd()) {
        return std::nullopt;
    }
    if (after < text.size() && text[after] != delimiter_ && text[after] != '\n') {
        failAt(placeOf(text.data() + after), "there is text after a closing quote",
               "a quote within quotes is written twice");
    }
    std::string_view cell = text.substr(quote + 1, end - quote - 1);
    if (hasQuotes) {
        std::string& unescaped = unescaped_.emplace_back();
        for (std::size_t i = 0; i < cell.size(); i += cell[i] == '"' ? 2 : 1) {
            unescaped += cell[i];
        }
        cell = unescaped;
    }
    cells_.push_back({trimmed(cell), text.data() + quote});
    return after;
}

SourceLocation CsvReader::where(std::size_t cell) const {
    return placeOf(cells_[cell].begin);
}

SourceLocation CsvReader::placeOf(const char* position) const {
    const std::string_view before(bytes_.rest().data(),
                                  static_cast<std::size_t>(position - bytes_.rest().data()));
    const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t lineBegin = before.rfind('\n') + 1;
    return {path_, line_ + lines, charactersIn(before.substr(lineBegin)) + 1};
}

void CsvReader::failForSize() const {
    failAt({path_, line_},
           "the row is longer than " + std::to_string(ByteWindow::greatestSize >> 20U) + " MiB",
           "look for a quote that is not closed, or for binary data");
}

}  // namespace vorm::evaluation

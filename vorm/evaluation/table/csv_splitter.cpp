#include "csv_splitter.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>

namespace vorm::evaluation {

void CsvSplitter::splitLine(std::string_view line, std::vector<Cell>& cells) const {
    for (const char end : {'\n', '\r'}) {
        if (!line.empty() && line.back() == end) {
            line.remove_suffix(1);
        }
    }
    // Cells are written in place: this loop is most of what a column costs that nobody wants. What
    // is written could be the delimiter, for all that the compiler knows of it as a member.
    const char delimiter = delimiter_;
    std::size_t count = 0;
    const char* begin = line.data();
    const char* const end = begin + line.size();
    for (const char* position = begin;; ++position) {
        if (position == end || *position == delimiter) {
            if (count == cells.size()) {
                cells.emplace_back();
            }
            Cell& cell = cells[count++];
            cell.text = trimmed({begin, static_cast<std::size_t>(position - begin)});
            cell.begin = begin;
            if (position == end) {
                cells.resize(count);
                return;
            }
            begin = position + 1;
        }
    }
}

std::optional<std::size_t> CsvSplitter::splitRecord(std::string_view text, bool whole,
                                                    const SourceLocation& line,
                                                    std::vector<Cell>& cells) {
    cells.clear();
    unescaped_.clear();
    for (std::size_t begin = 0;;) {
        std::size_t first = begin;
        while (first < text.size() && isBlank(text[first])) {
            ++first;
        }
        const bool isQuoted = first < text.size() && text[first] == '"';
        const auto end = isQuoted ? takeQuoted(text, first, whole, line, cells)
                                  : takePlain(text, begin, whole, cells);
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
std::optional<std::size_t> CsvSplitter::takePlain(std::string_view text, std::size_t begin,
                                                  bool whole, std::vector<Cell>& cells) const {
    std::size_t end = begin;
    while (end < text.size() && text[end] != delimiter_ && text[end] != '\n') {
        ++end;
    }
    if (end == text.size() && !whole) {
        return std::nullopt;
    }
    std::string_view cell = text.substr(begin, end - begin);
    const bool endsLine = end == text.size() || text[end] == '\n';
    if (endsLine && cell.ends_with('\r')) {
        cell.remove_suffix(1);
    }
    cells.push_back({trimmed(cell), text.data() + begin});
    return end;
}

std::optional<std::size_t> CsvSplitter::takeQuoted(std::string_view text, std::size_t quote,
                                                   bool whole, const SourceLocation& line,
                                                   std::vector<Cell>& cells) {
    constexpr auto npos = std::string_view::npos;
    std::size_t end = text.find('"', quote + 1);
    bool hasQuotes = false;
    while (end != npos && end + 1 < text.size() && text[end + 1] == '"') {
        hasQuotes = true;
        end = text.find('"', end + 2);
    }
    if (end == npos && whole) {
        failAt(placeIn(text, text.data() + quote, line),
               "the quote that opens here is never closed");
    }
    if (end == npos) {
        return std::nullopt;
    }
    std::size_t after = end + 1;
    while (after < text.size() && (isBlank(text[after]) || text[after] == '\r')) {
        ++after;
    }
    if (after == text.size() && !whole) {
        return std::nullopt;
    }
    if (after < text.size() && text[after] != delimiter_ && text[after] != '\n') {
        failAt(placeIn(text, text.data() + after, line), "there is text after a closing quote",
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
    cells.push_back({trimmed(cell), text.data() + quote});
    return after;
}

SourceLocation placeIn(std::string_view text, const char* position, const SourceLocation& line) {
    const std::string_view before =
        text.substr(0, static_cast<std::size_t>(position - text.data()));
    const auto lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    const std::size_t lineBegin = before.rfind('\n') + 1;
    return {line.file, line.line + lines, charactersIn(before.substr(lineBegin)) + 1};
}

}  // namespace vorm::evaluation

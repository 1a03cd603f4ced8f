#include "csv_reader.hpp"

#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <cstring>
#include <utility>

namespace vorm::evaluation {
namespace {

// Whether something but the end follows a carriage return that stands outside quotes.
bool hasBareReturn(std::string_view line) {
    constexpr auto npos = std::string_view::npos;
    const std::size_t found = line.find('\r');
    return found != npos && line.find_first_not_of("\r\n", found) != npos &&
           std::count(line.data(), line.data() + found, '"') % 2 == 0;
}

[[noreturn]] void failForSize(const SourceLocation& where) {
    failAt(where,
           "the row is longer than " + std::to_string(ByteWindow::greatestSize >> 20U) + " MiB",
           "look for a quote that is not closed, or for binary data");
}

}  // namespace

CsvReader::CsvReader(std::string path, ByteWindow bytes, const Dialect& dialect)
    : RowReader(std::move(path), std::move(bytes)),
      decimal_(dialect.decimal),
      hasComments_(dialect.hasComments),
      areNamesDeclared_(dialect.areNamesDeclared),
      leastCells_(dialect.leastCells),
      mostCells_(dialect.mostCells),
      nextLine_(dialect.rowsLine),
      recordSize_(dialect.rowsBegin),
      splitter_(dialect.delimiter) {
    columns_ = dialect.columns;
    units_ = dialect.units;
    while (bytes_.rest().size() < recordSize_ && bytes_.readOn()) {
    }
}

bool CsvReader::next() {
    for (;;) {
        if (!readRecord()) {
            return false;
        }
        if (cells_.front().text.empty() && !isRow()) {
            continue;
        }
        if (fits()) [[likely]] {
            break;
        }
        if (!leavesOutBadRows_) {
            return endAtBadRow();
        }
        leaveOut();
    }
    if (cells_.size() != columns_.size()) {
        cells_.resize(columns_.size());
    }
    if (decimal_ == ',') {
        takeDecimals();
    }
    return true;
}

bool CsvReader::fits() const {
    const std::size_t count = cells_.size();
    return count >= leastCells_ && count <= mostCells_ &&
           (count <= columns_.size() || !hasCellWithoutColumn());
}

// A recording that was stopped while it wrote a row ends within it.
bool CsvReader::endAtBadRow() {
    const SourceLocation where{path_, line_};
    const std::string cells = std::to_string(cells_.size());
    const std::string columns = std::to_string(columns_.size());
    if (cells_.size() < leastCells_ && !readRecord()) {
        cutRow_ = path_ + ":" + std::to_string(where.line) + ": the last row has " + cells +
                  " of " + columns + " cells and is left out";
        return false;
    }
    failAt(where,
           "has " + cells +
               (areNamesDeclared_ ? " cells, but the declared names are "
                                  : " cells, but the header ") +
               columns,
           "cells that contain the delimiter stand in quotes; rows that do not fit can be left "
           "out: [recording] bad_rows = \"skip\"");
}

bool CsvReader::isRow() const {
    return std::any_of(cells_.begin(), cells_.end(),
                       [](const Cell& cell) { return !cell.text.empty(); });
}

// Rows may end with the delimiter; only a header that does so, too, lets them go on behind it.
bool CsvReader::hasCellWithoutColumn() const {
    return !columns_.back().empty() && !cells_.back().text.empty();
}

bool CsvReader::readRecord() {
    bytes_.consume(recordSize_);
    recordSize_ = 0;
    for (;;) {
        line_ = nextLine_++;
        const auto line = bytes_.line();
        if (!line) {
            failForSize({path_, line_});
        }
        if (line->empty()) {
            return false;
        }
        if (!isLineEnd(*line) && !(hasComments_ && isComment(*line))) {
            if (std::memchr(line->data(), '"', line->size()) == nullptr) {
                recordSize_ = line->size();
                splitter_.splitLine(*line, cells_);
            } else {
                splitQuoted();
            }
            return true;
        }
        bytes_.consume(line->size());
    }
}

void CsvReader::splitQuoted() {
    for (;;) {
        const std::string_view rest = bytes_.rest();
        if (const auto size =
                splitter_.splitRecord(rest, bytes_.isAtEnd(), {path_, line_}, cells_)) {
            recordSize_ = *size;
            const std::string_view record = rest.substr(0, recordSize_);
            const auto lines = std::count(record.begin(), record.end(), '\n');
            nextLine_ = line_ + std::max<std::size_t>(static_cast<std::size_t>(lines), 1);
            return;
        }
        if (!bytes_.readOn() && !bytes_.isAtEnd()) {
            failForSize({path_, line_});
        }
    }
}

void CsvReader::takeDecimals() {
    numbers_.resize(cells_.size());
    for (std::size_t i = 0; i < cells_.size(); ++i) {
        Cell& cell = cells_[i];
        cell.hasPoint = false;
        if (auto number = withDecimalPoint(cell.text)) {
            numbers_[i] = std::move(*number);
            cell.text = numbers_[i];
        } else {
            cell.hasPoint = hasDecimalPoint(cell.text);
        }
    }
}

SourceLocation CsvReader::where(std::size_t cell) const {
    const SourceLocation line{path_, line_};
    const char* const position = cells_[cell].begin;
    return position == nullptr ? line : placeIn(bytes_.rest(), position, line);
}

Dialect dialectOf(ByteWindow& bytes, const TableLayout& layout, const std::string& path) {
    // Wide tables have few rows in a part of a block.
    constexpr std::size_t enough = 20;
    constexpr std::size_t most = std::size_t{4} << 20U;
    for (std::size_t size = ByteWindow::defaultBlockSize / 4;; size *= 2) {
        while (bytes.rest().size() <= size && bytes.readOn()) {
        }
        const bool whole = bytes.rest().size() <= size && bytes.isAtEnd();
        const std::string_view text = bytes.rest().substr(0, size);
        if (hasBareReturn(text.substr(0, text.find('\n')))) {
            failAt({path}, "has lines that end with a carriage return alone",
                   "save it with line feeds (LF or CRLF) as line ends");
        }
        auto dialect = detectDialect(text, whole, layout, path);
        if (dialect && (whole || dialect->firstRows.size() >= enough || size >= most)) {
            return std::move(*dialect);
        }
        if (whole) {
            failAt({path}, "is empty");
        }
        if (size >= ByteWindow::greatestSize) {
            failForSize({path, 1});
        }
    }
}

}  // namespace vorm::evaluation

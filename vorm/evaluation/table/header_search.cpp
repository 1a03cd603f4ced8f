#include "header_search.hpp"

#include <vorm/evaluation/table/header_block.hpp>

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>

namespace vorm::evaluation {
namespace {

constexpr std::size_t scoredRows = 20;

bool isNumeric(CellKind kind) {
    return kind == CellKind::Number || kind == CellKind::CommaNumber;
}

class Scoring {
public:
    Scoring(const std::vector<SampleLine>& lines, bool hasComments, const TableLayout& layout)
        : lines_(lines), hasComments_(hasComments), layout_(layout) {}

    double of(std::size_t header) const {
        const SampleLine& line = lines_[header];
        if (!has(line, CellKind::Text) || has(line, CellKind::Time) || line.problem) {
            return 0;
        }
        const auto rows = rowsAfter(header);
        double cells = 0;
        for (std::size_t column = 0; column < line.cells.size(); ++column) {
            if (!line.cells[column].empty()) {
                cells += cellsOf(column, rows);
            }
        }
        const auto names = static_cast<double>(widthOf(line));
        const auto width = static_cast<double>(columnsIn(rows, widthOf(line)));
        constexpr double poor = 0.5;
        return cells * std::min(names, width) / std::max(names, width) *
               (hasNumbers(line) ? poor : 1) * (line.isComment ? poor : 1);
    }

    /// Whether the line has numbers, as a line beside it has in the same columns, or stands right
    /// under a line of as many texts.
    bool isLikeRow(std::size_t index) const {
        const SampleLine& line = lines_[index];
        const SampleLine* above = index > 0 ? &lines_[index - 1] : nullptr;
        const SampleLine* below = index + 1 < lines_.size() ? &lines_[index + 1] : nullptr;
        return hasNumbers(line) &&
               ((above != nullptr && (areAlike(*above, line) || isHeaderOf(*above, line))) ||
                (below != nullptr && areAlike(*below, line)));
    }

    /// Whether a line above is the same, as where recordings were put behind each other.
    bool isRepeated(std::size_t index) const {
        return std::any_of(
            lines_.begin(), lines_.begin() + static_cast<std::ptrdiff_t>(index),
            [&](const SampleLine& above) { return above.cells == lines_[index].cells; });
    }

private:
    static bool has(const SampleLine& line, CellKind kind) {
        return std::find(line.kinds.begin(), line.kinds.end(), kind) != line.kinds.end();
    }
    static bool hasNumbers(const SampleLine& line) {
        return std::any_of(line.kinds.begin(), line.kinds.end(), isNumeric);
    }

    // The last cell is no column where rows seem to end with the delimiter, unless it has a name.
    static std::size_t columnsIn(const std::vector<const SampleLine*>& rows, std::size_t names) {
        std::size_t widest = 1;
        std::size_t filled = 1;
        for (const SampleLine* row : rows) {
            widest = std::max(widest, row->cells.size());
            filled = std::max(filled, widthOf(*row));
        }
        return filled < widest && names < widest ? widest - 1 : widest;
    }

    static bool areAlike(const SampleLine& a, const SampleLine& b) {
        return std::equal(a.kinds.begin(), a.kinds.end(), b.kinds.begin(), b.kinds.end(),
                          [](CellKind one, CellKind other) {
                              return isNumeric(one) == isNumeric(other) || one == CellKind::Empty ||
                                     other == CellKind::Empty;
                          });
    }

    static bool isHeaderOf(const SampleLine& above, const SampleLine& line) {
        return above.cells.size() == line.cells.size() && has(above, CellKind::Text) &&
               !hasNumbers(above);
    }

    std::vector<const SampleLine*> rowsAfter(std::size_t header) const {
        std::vector<const SampleLine*> rows;
        for (std::size_t i = headerBlock(lines_, header, layout_).rows;
             i < lines_.size() && rows.size() < scoredRows; ++i) {
            if (mayBeRow(i, header) && !areTextsAmidRows(i, header, rows)) {
                rows.push_back(&lines_[i]);
            }
        }
        if (layout_.badRows == BadRows::Skip) {
            leaveOutBadRows(rows);
        }
        return rows;
    }

    bool mayBeRow(std::size_t line, std::size_t header) const {
        return !isCutOff(line, header) && !(hasComments_ && lines_[line].isComment) &&
               !isEmpty(lines_[line]) && lines_[line].cells != lines_[header].cells;
    }

    // Below a header that names a time a line of texts is no row right under it or behind rows,
    // unless it names another time; elsewhere texts may be the names.
    bool areTextsAmidRows(std::size_t line, std::size_t header,
                          const std::vector<const SampleLine*>& rows) const {
        const bool isBehindRow = !rows.empty() && !isOfTexts(*rows.front());
        const bool isFirst =
            rows.empty() && line + 1 < lines_.size() && !isOfTexts(lines_[line + 1]);
        return namesTime(lines_[header]) && (isBehindRow || isFirst) &&
               isNoRowOf(lines_[header], lines_[line]);
    }

    static bool isNoRowOf(const SampleLine& header, const SampleLine& line) {
        return isOfTexts(line) && (!namesTime(line) || nameOneTime(header, line));
    }

    // Of a recording that stopped amid a row.
    bool isCutOff(std::size_t row, std::size_t header) const {
        return row + 1 == lines_.size() && lines_[row].cells.size() < lines_[header].cells.size();
    }

    // How many numbers and times there are in a column; none where it holds texts.
    static double cellsOf(std::size_t column, const std::vector<const SampleLine*>& rows) {
        double count = 0;
        for (const SampleLine* row : rows) {
            if (column < row->kinds.size()) {
                const CellKind kind = row->kinds[column];
                if (kind == CellKind::Text) {
                    return 0;
                }
                count += kind == CellKind::Empty ? 0 : 1;
            }
        }
        return count;
    }

    const std::vector<SampleLine>& lines_;
    bool hasComments_;
    const TableLayout& layout_;
};

}  // namespace

std::size_t usualWidth(const std::vector<const SampleLine*>& rows) {
    std::map<std::size_t, std::size_t> counts;
    for (const SampleLine* row : rows) {
        ++counts[row->cells.size()];
    }
    const auto usual =
        std::max_element(counts.begin(), counts.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return usual == counts.end() ? 0 : usual->first;
}

void leaveOutBadRows(std::vector<const SampleLine*>& rows) {
    const std::size_t width = usualWidth(rows);
    std::erase_if(rows, [&](const SampleLine* row) { return row->cells.size() != width; });
    std::vector<bool> areValues;
    for (std::size_t column = 0; column < width; ++column) {
        const auto count = std::count_if(rows.begin(), rows.end(), [&](const SampleLine* row) {
            return row->kinds[column] != CellKind::Text && row->kinds[column] != CellKind::Empty;
        });
        areValues.push_back(2 * static_cast<std::size_t>(count) > rows.size());
    }
    std::erase_if(rows, [&](const SampleLine* row) {
        return std::inner_product(
            row->kinds.begin(), row->kinds.end(), areValues.begin(), false, std::logical_or<>(),
            [](CellKind kind, bool isValue) { return isValue && kind == CellKind::Text; });
    });
}

HeaderSearch::HeaderSearch(std::string_view text, bool whole, const TableLayout& layout,
                           const std::string& path, std::size_t most)
    : layout_(layout), path_(path) {
    for (const char delimiter : delimiters(text)) {
        splits_.push_back({delimiter, sampleLines(text, whole, delimiter, layout, path, most)});
    }
}

bool HeaderSearch::hasLines() const {
    return std::any_of(splits_.begin(), splits_.end(),
                       [](const Split& split) { return !split.lines.empty(); });
}

bool HeaderSearch::hasComments() const {
    const auto& lines = splits_.front().lines;
    return std::any_of(lines.begin(), lines.end(),
                       [](const SampleLine& line) { return line.isComment; });
}

HeaderChoice HeaderSearch::best(bool hasComments) const {
    HeaderChoice best;
    for (const Split& split : splits_) {
        const Scoring scoring(split.lines, hasComments, layout_);
        for (std::size_t i = 0; i < split.lines.size(); ++i) {
            const std::size_t line = split.lines[i].number;
            if ((layout_.header ? line != *layout_.header : scoring.isLikeRow(i)) ||
                (layout_.firstRow && line >= *layout_.firstRow)) {
                continue;
            }
            const double score = scoring.of(i);
            if (score > best.score && (layout_.header || !scoring.isRepeated(i))) {
                best = {&split.lines, i, split.delimiter, score};
            }
        }
    }
    if (best.score > 0 && !layout_.header) {
        refuseHeaderAbove(best);
    }
    return best;
}

void HeaderSearch::refuseHeaderAbove(const HeaderChoice& best) const {
    const auto& lines = *best.lines;
    for (std::size_t i = 0; i < best.header; ++i) {
        const SampleLine& above = lines[i];
        if (isOfTexts(above) && nameOneTime(above, lines[best.header]) &&
            hasRows(best, i, above.cells.size())) {
            const std::string line = std::to_string(lines[best.header].number);
            failAt(
                {path_, above.number}, "looks like the header, and so does line " + line,
                "split the file between them, or say which is to be read: [recording] header = " +
                    line);
        }
    }
}

// Whether rows stand between that line and the header. A single one with texts in it is rather what
// is told about the recording.
bool HeaderSearch::hasRows(const HeaderChoice& best, std::size_t above, std::size_t width) {
    std::size_t rows = 0;
    std::size_t withoutTexts = 0;
    for (std::size_t i = above + 1; i < best.header; ++i) {
        const SampleLine& line = (*best.lines)[i];
        const bool isRow = line.cells.size() >= width && !isOfTexts(line);
        rows += isRow ? 1 : 0;
        withoutTexts += isRow && std::find(line.kinds.begin(), line.kinds.end(), CellKind::Text) ==
                                     line.kinds.end()
                            ? 1
                            : 0;
    }
    return rows > 1 || withoutTexts > 0;
}

HeaderChoice HeaderSearch::named() {
    Split* best = nullptr;
    std::size_t most = 0;
    for (Split& split : splits_) {
        if (const std::size_t count = linesThatFitNames(split); count > most) {
            most = count;
            best = &split;
        }
    }
    if (best == nullptr) {
        return {};
    }
    const SampleLine& row = firstRowOf(*best);
    const auto at = best->lines.begin() + (&row - best->lines.data());
    const auto header = best->lines.insert(at, headerAbove(*best, row));
    return {&best->lines, static_cast<std::size_t>(header - best->lines.begin()), best->delimiter,
            static_cast<double>(most)};
}

std::size_t HeaderSearch::linesThatFitNames(const Split& split) const {
    return static_cast<std::size_t>(std::count_if(
        split.lines.begin(), split.lines.end(),
        [this](const SampleLine& line) { return isBelowHeader(line) && fitsNames(line); }));
}

bool HeaderSearch::isBelowHeader(const SampleLine& line) const {
    return line.number >= layout_.firstRow.value_or(1) &&
           line.number > layout_.header.value_or(0) && !line.isComment;
}

bool HeaderSearch::fitsNames(const SampleLine& line) const {
    return widthOf(line) <= layout_.names.size() && line.cells.size() >= layout_.names.size() &&
           !line.problem;
}

// One that fits, or has numbers or times although it does not: it is not left out in silence.
const SampleLine& HeaderSearch::firstRowOf(const Split& split) const {
    return *std::find_if(split.lines.begin(), split.lines.end(), [&](const SampleLine& line) {
        return isBelowHeader(line) && (fitsNames(line) || !isOfTexts(line));
    });
}

// A line of the declared names, of no length.
SampleLine HeaderSearch::headerAbove(const Split& split, const SampleLine& row) const {
    SampleLine header;
    header.cells = layout_.names;
    header.kinds.assign(header.cells.size(), CellKind::Text);
    header.number = header.nextNumber = 1;
    if (&row != split.lines.data()) {
        const SampleLine& above = *(&row - 1);
        header.number = above.number;
        header.nextNumber = above.nextNumber;
        header.end = above.end;
    }
    return header;
}

HeaderChoice HeaderSearch::fallback() const {
    HeaderChoice choice;
    for (const Split& split : splits_) {
        std::size_t header = 0;
        while (layout_.header && header + 1 < split.lines.size() &&
               split.lines[header].number < *layout_.header) {
            ++header;
        }
        const auto cells =
            split.lines.empty() ? 0 : static_cast<double>(split.lines[header].cells.size());
        if (cells > choice.score) {
            choice = {&split.lines, header, split.delimiter, cells};
        }
    }
    return choice;
}

std::string HeaderSearch::delimiters(std::string_view text) const {
    constexpr std::string_view declaration = "sep=";
    if (layout_.delimiter) {
        return {*layout_.delimiter};
    }
    if (text.starts_with(declaration) && text.size() > declaration.size() &&
        std::string_view("\r\n\"").find(text[declaration.size()]) == std::string_view::npos) {
        return {text[declaration.size()]};
    }
    // Commas come last, since they may be decimal ones: of equals the first counts.
    std::string found;
    for (const char delimiter : {'\t', ';'}) {
        if (text.find(delimiter) != std::string_view::npos) {
            found += delimiter;
        }
    }
    return found + ',';
}

}  // namespace vorm::evaluation

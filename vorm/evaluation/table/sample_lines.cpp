#include "sample_lines.hpp"

#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/table/csv_splitter.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation {
namespace {

// What a comment says, which may be a header.
std::string_view uncommented(std::string_view line) {
    line = trimmed(line);
    line.remove_prefix(std::min(line.find_first_not_of('#'), line.size()));
    return line;
}

// Gives the lines of the text that are not empty, without those that end behind it.
class LineSplitting {
public:
    LineSplitting(std::string_view text, bool whole, char delimiter, const TableLayout& layout,
                  const std::string& path)
        : text_(text), whole_(whole), layout_(layout), path_(path), splitter_(delimiter) {}

    std::vector<SampleLine> split(std::size_t most) {
        std::vector<SampleLine> lines;
        while (begin_ < text_.size() && lines.size() < most) {
            const std::string_view rest = text_.substr(begin_);
            const std::size_t feed = rest.find('\n');
            if (feed == std::string_view::npos && !whole_) {
                break;
            }
            const std::string_view text = rest.substr(0, std::min(feed, rest.size() - 1) + 1);
            SampleLine line;
            line.number = number_;
            line.isComment = isComment(text);
            if (!splitOff(text, line)) {
                break;
            }
            if (!isLineEnd(text)) {
                takeCells(line);
                lines.push_back(std::move(line));
            }
        }
        return lines;
    }

private:
    // Goes on behind the record that begins with that line; false where the text ends before that.
    bool splitOff(std::string_view text, SampleLine& line) {
        std::size_t size = text.size();
        if (line.isComment) {
            splitter_.splitLine(uncommented(text), cells_);
        } else if (text.find('"') == std::string_view::npos) {
            splitter_.splitLine(text, cells_);
        } else {
            try {
                const auto record =
                    splitter_.splitRecord(text_.substr(begin_), whole_, {path_, number_}, cells_);
                if (!record) {
                    return false;
                }
                size = *record;
            } catch (const InputError& error) {
                // Above the table, or with another delimiter, quotes need not be those of cells.
                line.problem = error;
                splitter_.splitLine(text, cells_);
            }
        }
        const std::string_view record = text_.substr(begin_, size);
        begin_ += size;
        number_ += static_cast<std::size_t>(std::count(record.begin(), record.end(), '\n'));
        line.nextNumber = number_;
        line.end = begin_;
        return true;
    }

    void takeCells(SampleLine& line) const {
        for (const Cell& cell : cells_) {
            const auto& missing = layout_.missing;
            const bool isMissing =
                std::find(missing.begin(), missing.end(), cell.text) != missing.end();
            line.cells.emplace_back(cell.text);
            line.kinds.push_back(isMissing ? CellKind::Empty : kindOf(cell.text));
        }
    }

    std::string_view text_;
    bool whole_;
    const TableLayout& layout_;
    const std::string& path_;
    CsvSplitter splitter_;
    std::vector<Cell> cells_;
    std::size_t begin_ = 0;
    std::size_t number_ = 1;
};

// Without their units, in lower case.
std::vector<std::string> timeNames(const SampleLine& line) {
    std::vector<std::string> names;
    for (const std::string& cell : line.cells) {
        const ColumnHeader header = columnHeaders({cell}).front();
        const TimeName name = timeNameOf(header);
        if (name == TimeName::Time || name == TimeName::Usual) {
            names.push_back(lowerCase(header.name));
        }
    }
    return names;
}

}  // namespace

std::vector<SampleLine> sampleLines(std::string_view text, bool whole, char delimiter,
                                    const TableLayout& layout, const std::string& path,
                                    std::size_t most) {
    return LineSplitting(text, whole, delimiter, layout, path).split(most);
}

bool isEmpty(const SampleLine& line) {
    return std::all_of(line.cells.begin(), line.cells.end(),
                       [](const std::string& cell) { return cell.empty(); });
}

bool isOfTexts(const SampleLine& line) {
    return std::all_of(line.kinds.begin(), line.kinds.end(), [](CellKind kind) {
        return kind == CellKind::Text || kind == CellKind::Empty;
    });
}

bool namesTime(const SampleLine& line) {
    return !timeNames(line).empty();
}

bool nameOneTime(const SampleLine& a, const SampleLine& b) {
    const auto names = timeNames(a);
    const auto others = timeNames(b);
    return std::find_first_of(names.begin(), names.end(), others.begin(), others.end()) !=
           names.end();
}

std::size_t widthOf(const SampleLine& line) {
    const auto last = std::find_if(line.cells.rbegin(), line.cells.rend(),
                                   [](const std::string& cell) { return !cell.empty(); });
    return static_cast<std::size_t>(line.cells.rend() - last);
}

}  // namespace vorm::evaluation

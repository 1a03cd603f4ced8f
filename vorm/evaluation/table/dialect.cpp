#include "dialect.hpp"

#include <vorm/evaluation/table/header_block.hpp>
#include <vorm/evaluation/table/header_search.hpp>
#include <vorm/evaluation/table/unit_row.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace vorm::evaluation {
namespace {

using Cells = std::vector<std::string>;

constexpr std::size_t fewLines = 250;
constexpr std::size_t manyLines = 10'000;

// Everything about the table that the chosen header heads.
class Description {
public:
    Description(const HeaderChoice& choice, bool hasComments, const TableLayout& layout,
                const std::string& path)
        : lines_(*choice.lines), header_(lines_[choice.header]), place_{path, header_.number} {
        if (header_.problem) {
            throw InputError(*header_.problem);
        }
        dialect_.delimiter = choice.delimiter;
        dialect_.hasComments = hasComments;
        dialect_.headerLine = header_.number;
        dialect_.columns = header_.cells;
        dialect_.areNamesDeclared = !layout.names.empty();
        takeRows(choice.header, layout);
        takeWidths();
        takeDecimal(choice.header, layout);
        takeBlock(choice.header);
        remark(layout);
    }

    Dialect take() { return std::move(dialect_); }

private:
    void takeRows(std::size_t header, const TableLayout& layout) {
        block_ = headerBlock(lines_, header, layout);
        if (layout.firstRow &&
            (header_.number >= *layout.firstRow || block_.rows == lines_.size())) {
            failAt(place_, "has no row in line " + std::to_string(*layout.firstRow) +
                               ", the declared first one, below this header");
        }
        if (block_.units) {
            for (const std::string& unit : lines_[*block_.units].cells) {
                dialect_.units.push_back(unitIn(unit));
            }
            dialect_.units.resize(header_.cells.size());
        }
        const SampleLine& last = lines_[block_.rows - 1];
        dialect_.rowsBegin = last.end;
        dialect_.rowsLine = last.nextNumber;
        for (std::size_t i = block_.rows; i < lines_.size(); ++i) {
            const SampleLine& line = lines_[i];
            if (!isEmpty(line) && !(dialect_.hasComments && line.isComment)) {
                rows_.push_back(&line);
            }
        }
        if (layout.badRows == BadRows::Skip) {
            leaveOutBadRows(rows_);
        }
    }

    // Rows have as many cells as the header, but for three ways to write more or less: a header
    // that ends with the delimiter lets rows go on, rows may end with it, and remarks may be left
    // out.
    void takeWidths() {
        const std::size_t columns = header_.cells.size();
        const std::size_t cells = rows_.empty() ? columns : usualWidth(rows_);
        dialect_.leastCells = dialect_.mostCells = columns;
        if (cells > columns && (header_.cells.back().empty() || endsEmpty(columns))) {
            dialect_.mostCells = cells;
        }
        if (cells + 1 == columns && isRemark(header_.cells.back())) {
            dialect_.leastCells = cells;
        }
        // What is too short is left out or refused, and tells nothing.
        std::erase_if(rows_, [this](const SampleLine* row) {
            return row->cells.size() < dialect_.leastCells;
        });
    }

    bool endsEmpty(std::size_t columns) const {
        return std::all_of(rows_.begin(), rows_.end(), [&](const SampleLine* row) {
            return row->cells.size() <= columns ||
                   (row->cells.size() == columns + 1 && row->cells.back().empty());
        });
    }

    static bool isRemark(std::string_view name) {
        constexpr auto names = std::to_array<std::string_view>(
            {"comment", "comments", "note", "notes", "remark", "remarks"});
        return std::find(names.begin(), names.end(), lowerCase(name)) != names.end();
    }

    // How numbers with a mark look, which is a decimal one or stands between thousands.
    struct Marks {
        bool areThere = false;
        bool areDecimal = false;                // some can be nothing else
        const std::string* doubtful = nullptr;  // one that stands below or above larger integers
    };

    Marks marksOf(CellKind kind, char mark) const {
        Marks marks;
        for (std::size_t column = 0; column < header_.cells.size(); ++column) {
            const std::string* doubtful = nullptr;
            bool hasLargeIntegers = false;
            for (const SampleLine* row : rows_) {
                if (column >= row->cells.size()) {
                    continue;
                }
                const std::string& cell = row->cells[column];
                if (row->kinds[column] == kind && cell.find(mark) != std::string::npos) {
                    marks.areThere = true;
                    const bool mayBeBoth = mayHaveThousands(cell, mark);
                    marks.areDecimal = marks.areDecimal || !mayBeBoth;
                    doubtful = mayBeBoth ? &cell : doubtful;
                } else if (row->kinds[column] == CellKind::Number) {
                    hasLargeIntegers = hasLargeIntegers || cell.size() >= 3;
                }
            }
            marks.doubtful = doubtful != nullptr && hasLargeIntegers ? doubtful : marks.doubtful;
        }
        return marks;
    }

    void findDecimal() {
        const Marks commas = marksOf(CellKind::CommaNumber, ',');
        const Marks points = marksOf(CellKind::Number, '.');
        if (!commas.areDecimal && !points.areDecimal) {
            const std::string* const doubtful =
                commas.doubtful != nullptr ? commas.doubtful : points.doubtful;
            if (doubtful != nullptr || (commas.areThere && points.areThere)) {
                failAt(place_,
                       (doubtful != nullptr ? shown(*doubtful) : std::string("numbers")) +
                           " may have a decimal mark or one between thousands",
                       R"(say which: [recording] decimal = "point" or "comma")");
            }
        }
        const bool areCommas = commas.areThere && (commas.areDecimal || !points.areThere);
        if (areCommas && !points.areDecimal) {
            dialect_.decimal = ',';
        }
    }

    void takeDecimal(std::size_t header, const TableLayout& layout) {
        const Cells* declared = lineOf("Decimal_Separator", header);
        if (layout.decimal) {
            dialect_.decimal = *layout.decimal;
        } else if (declared != nullptr && declared->size() > 1) {
            dialect_.decimal = (*declared)[1] == "," ? ',' : '.';
        } else if (dialect_.delimiter != ',') {
            findDecimal();
        }
        for (const SampleLine* row : rows_) {
            dialect_.firstRows.push_back(row->cells);
            for (std::string& cell : dialect_.firstRows.back()) {
                cell = pointed(cell);
            }
        }
    }

    // What some programs write above a table, each cell above the column that it is of.
    void takeBlock(std::size_t header) {
        const auto take = [&](std::string_view key, std::vector<std::string>& values) {
            if (const Cells* line = lineOf(key, header)) {
                values = *line;
                values.front().clear();
                values.resize(header_.cells.size());
                for (std::string& value : values) {
                    value = pointed(value);
                }
            }
        };
        take("Y_Unit_Label", dialect_.units);
        take("X0", dialect_.starts);
        take("Delta_X", dialect_.steps);
    }

    std::string pointed(const std::string& cell) const {
        const auto number = dialect_.decimal == ',' ? withDecimalPoint(cell) : std::nullopt;
        return number.value_or(cell);
    }

    const Cells* lineOf(std::string_view key, std::size_t header) const {
        for (std::size_t i = header; i-- > 0;) {
            if (lines_[i].cells.front() == key) {
                return &lines_[i].cells;
            }
        }
        return nullptr;
    }

    void remark(const TableLayout& layout) {
        auto& remarks = dialect_.remarks;
        if (dialect_.delimiter != ',') {
            const std::string name = dialect_.delimiter == '\t'  ? "tabs"
                                     : dialect_.delimiter == ';' ? "semicolons"
                                                                 : shown({&dialect_.delimiter, 1});
            remarks.push_back("cells are separated by " + name);
        }
        if (dialect_.decimal == ',') {
            remarks.emplace_back("numbers have a decimal comma");
        }
        if (dialect_.headerLine > 1 && !layout.header && layout.names.empty()) {
            remarks.push_back("the header is line " + std::to_string(dialect_.headerLine));
        }
        if (block_.units) {
            remarks.push_back("line " + std::to_string(lines_[*block_.units].number) +
                              " has the units");
        }
        if (block_.units && block_.rows > *block_.units + 1 && !layout.firstRow) {
            remarks.push_back("line " + std::to_string(lines_[block_.rows - 1].number) +
                              " below the units is no row");
        }
        if (dialect_.hasComments) {
            remarks.emplace_back("lines that begin with # are comments");
        }
        if (const std::size_t nameless = namelessColumns(); nameless > 0) {
            remarks.push_back(std::to_string(nameless) +
                              (nameless == 1 ? " column has no name and is not read"
                                             : " columns have no name and are not read"));
        }
    }

    // Those that have values.
    std::size_t namelessColumns() const {
        std::size_t count = 0;
        for (std::size_t column = 0; column < dialect_.mostCells; ++column) {
            const bool isNamed = column < header_.cells.size() && !header_.cells[column].empty();
            count +=
                !isNamed && std::any_of(rows_.begin(), rows_.end(), [&](const SampleLine* row) {
                    return column < row->cells.size() && !row->cells[column].empty();
                });
        }
        return count;
    }

    const std::vector<SampleLine>& lines_;
    const SampleLine& header_;
    SourceLocation place_;
    std::vector<const SampleLine*> rows_;
    HeaderBlock block_;
    Dialect dialect_;
};

}  // namespace

std::optional<Dialect> detectDialect(std::string_view text, bool whole, const TableLayout& layout,
                                     const std::string& path) {
    for (const std::size_t most : {fewLines, manyLines}) {
        HeaderSearch search(text, whole, layout, path, most);
        if (!search.hasLines()) {
            return std::nullopt;
        }
        bool hasComments = search.hasComments();
        if (!layout.names.empty()) {
            const HeaderChoice choice = search.named();
            if (choice.score > 0) {
                return Description(choice, hasComments, layout, path).take();
            }
            if (most == manyLines) {
                failAt({path},
                       "has no row of " + std::to_string(layout.names.size()) +
                           " cells, as many as there are names",
                       "[recording] names has one for each column");
            }
            continue;
        }
        HeaderChoice choice = search.best(hasComments);
        if (choice.score == 0 && hasComments) {
            hasComments = false;
            choice = search.best(hasComments);
        }
        if (choice.score > 0) {
            return Description(choice, hasComments, layout, path).take();
        }
        if (most == manyLines) {
            return Description(search.fallback(), hasComments, layout, path).take();
        }
    }
    return std::nullopt;
}

}  // namespace vorm::evaluation

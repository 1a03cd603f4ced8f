#pragma once

// The rows of a delimited table, one after the other.

#include <vorm/evaluation/table/csv_splitter.hpp>
#include <vorm/evaluation/table/dialect.hpp>
#include <vorm/evaluation/table/row_reader.hpp>

#include <string>
#include <vector>

namespace vorm::evaluation {

class CsvReader final : public RowReader {
public:
    /// Of bytes of that dialect.
    CsvReader(std::string path, ByteWindow bytes, const Dialect& dialect);

    bool next() override;
    std::string_view text() const override { return bytes_.rest().substr(0, recordSize_); }
    SourceLocation where(std::size_t cell) const override;

private:
    bool readRecord();
    void splitQuoted();
    bool isRow() const;
    bool fits() const;
    bool endAtBadRow();
    bool hasCellWithoutColumn() const;
    void takeDecimals();

    char decimal_;
    bool hasComments_;
    bool areNamesDeclared_;
    std::size_t leastCells_;
    std::size_t mostCells_;
    std::size_t nextLine_;
    std::size_t recordSize_;
    CsvSplitter splitter_;
    std::vector<std::string> numbers_;  // those with a decimal comma, one for each cell
};

/// The dialect of the bytes, of which nothing is consumed. Throws InputError where there is no
/// line, or none that ends within the greatest size of the window.
Dialect dialectOf(ByteWindow& bytes, const TableLayout& layout, const std::string& path);

}  // namespace vorm::evaluation

#pragma once

// Rows kept to be read in the order of their times.

#include <vorm/evaluation/table/table.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

class SortedRows {
public:
    /// Keeps the row of the table; `times` are those that it has, one for each of the table's.
    void keep(const Table& table, std::vector<std::optional<ExactTime>> times);

    /// Calls visit(time, cells) for each row that has that one of the times, in their order; rows
    /// of one time stay in the order of the file. An InputError that names no place gets the row's.
    void forEach(std::size_t which, const std::string& path,
                 const std::function<void(ExactTime, const std::vector<Cell>&)>& visit) const;

private:
    struct Row {
        std::size_t line;
        std::vector<std::optional<ExactTime>> times;
        std::vector<std::string> texts;
        std::vector<Cell> cells;  // whose texts are those
    };

    std::vector<Row> rows_;
};

}  // namespace vorm::evaluation

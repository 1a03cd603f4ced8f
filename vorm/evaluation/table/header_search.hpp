#pragma once

// Which line of a text heads a table, and what separates its cells.

#include <vorm/evaluation/table/sample_lines.hpp>

namespace vorm::evaluation {

/// One way to read the text.
struct HeaderChoice {
    const std::vector<SampleLine>* lines = nullptr;  ///< of the search
    std::size_t header = 0;                          ///< which of them
    char delimiter = ',';
    double score = 0;
};

/// Looks at that many lines of a text with each delimiter that may be meant. See detectDialect for
/// what counts.
class HeaderSearch {
public:
    HeaderSearch(std::string_view text, bool whole, const TableLayout& layout,
                 const std::string& path, std::size_t most);

    bool hasLines() const;
    bool hasComments() const;

    /// The best choice; of a score of 0 where nothing looks like a table.
    HeaderChoice best(bool hasComments) const;

    /// The declared line, or else the first one, with the delimiter that it has most of.
    HeaderChoice fallback() const;

private:
    struct Split {
        char delimiter;
        std::vector<SampleLine> lines;
    };

    std::string delimiters(std::string_view text) const;

    const TableLayout& layout_;
    std::vector<Split> splits_;
};

}  // namespace vorm::evaluation

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

/// The number of cells that most rows have; 0 where there are none.
std::size_t usualWidth(const std::vector<const SampleLine*>& rows);

/// Leaves out the rows that do not fit to the others: those with another number of cells than most,
/// and those with a text where most have a number or a time.
void leaveOutBadRows(std::vector<const SampleLine*>& rows);

/// Looks at that many lines of a text with each delimiter that may be meant. See detectDialect for
/// what counts.
class HeaderSearch {
public:
    HeaderSearch(std::string_view text, bool whole, const TableLayout& layout,
                 const std::string& path, std::size_t most);

    bool hasLines() const;
    bool hasComments() const;

    /// The best choice; of a score of 0 where nothing looks like a table. Throws InputError where a
    /// header above it has rows and the same time: these would be lost.
    HeaderChoice best(bool hasComments) const;

    /// The declared names, which head the first line that has as many cells, or a number or a time,
    /// with the delimiter that makes most lines of as many cells; of a score of 0 where there is
    /// none.
    HeaderChoice named();

    /// The declared line, or else the first one, with the delimiter that it has most of.
    HeaderChoice fallback() const;

private:
    struct Split {
        char delimiter;
        std::vector<SampleLine> lines;
    };

    void refuseHeaderAbove(const HeaderChoice& best) const;
    static bool hasRows(const HeaderChoice& best, std::size_t above, std::size_t width);
    std::string delimiters(std::string_view text) const;

    std::size_t linesThatFitNames(const Split& split) const;
    bool isBelowHeader(const SampleLine& line) const;
    bool fitsNames(const SampleLine& line) const;
    const SampleLine& firstRowOf(const Split& split) const;
    SampleLine headerAbove(const Split& split, const SampleLine& row) const;

    const TableLayout& layout_;
    const std::string& path_;
    std::vector<Split> splits_;
};

}  // namespace vorm::evaluation

#pragma once

// One JSON object a line. The keys of the first one are
// the columns.

#include <vorm/evaluation/table/row_reader.hpp>

#include <deque>

namespace vorm::evaluation {

class JsonLinesReader final : public RowReader {
public:
    /// Looks at the first object for the keys.
    JsonLinesReader(std::string path, ByteWindow bytes);

    bool next() override;
    std::string_view text() const override { return bytes_.rest().substr(0, lineSize_); }
    SourceLocation where(std::size_t) const override { return {path_, line_}; }

private:
    class ObjectHandler;

    bool goToLine();
    void parse(bool takesNewKeys);

    std::size_t lineSize_ = 0;
    bool isAhead_ = false;  // the line is the row that next() goes to
    std::deque<std::string> texts_;
};

}  // namespace vorm::evaluation

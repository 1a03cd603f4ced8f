#include "row_reader.hpp"

namespace vorm::evaluation {

void RowReader::leaveOut() {
    firstLeftOut_ = leftOut_++ == 0 ? line_ : firstLeftOut_;
}

std::vector<std::string> RowReader::warnings() const {
    std::vector<std::string> warnings;
    if (leftOut_ > 0) {
        warnings.push_back(
            path_ + ": " +
            (leftOut_ == 1
                 ? "a row that does not fit is left out, in"
                 : std::to_string(leftOut_) + " rows that do not fit are left out, the first in") +
            " line " + std::to_string(firstLeftOut_));
    }
    if (!cutRow_.empty()) {
        warnings.push_back(cutRow_);
    }
    return warnings;
}

}  // namespace vorm::evaluation

#include "operand_cursor.hpp"

namespace vorm::assessments::support {

template <class T>
void OperandCursor<T>::fill() {
    // A block after another keeps the sample in force in front.
    const std::size_t kept = block_.empty() ? 0 : 1;
    const auto left = static_cast<std::size_t>(end_ - source_);
    const std::size_t count = std::min(left, blockSize - kept);
    const auto last = source_ + static_cast<std::ptrdiff_t>(count);
    if (kept == 0) {
        block_.assign(source_, last);
    } else {
        block_.front() = block_.back();
        block_.resize(kept + count, block_.front());
        std::copy(source_, last, block_.begin() + 1);
    }
    source_ = last;
    next_ = kept;
}

#define VORM_VALUE_TYPE(T) template void OperandCursor<T>::fill();
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments::support

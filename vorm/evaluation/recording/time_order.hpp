#pragma once

// The times of rows, made to go on where they go back.

#include <vorm/evaluation/table/table_layout.hpp>

#include <cstddef>
#include <optional>
#include <string>

namespace vorm::evaluation {

class TimeOrder {
public:
    /// Of times that clocks show, or of others.
    TimeOrder(TimesBack choice, bool isOfClocks) : choice_(choice), isOfClocks_(isOfClocks) {}

    /// The time at which the next row counts, and nothing where it does not. Rows that go back are
    /// passed through where they are refused or sorted.
    std::optional<ExactTime> next(ExactTime time) {
        time += shift_;
        if (last_ && time < *last_) [[unlikely]] {
            return nextBack(time);
        }
        step_ = last_ && time > *last_ ? time - *last_ : step_;
        last_ = time;
        return time;
    }

    /// Whether the time is before the one that was reached.
    bool goesBack(ExactTime time) const { return last_ && time + shift_ < *last_; }
    /// The time that was reached.
    std::optional<ExactTime> reached() const { return last_; }

    /// What was done, or nothing: `times go back 2 times: ...`.
    std::string warning() const;

private:
    std::optional<ExactTime> nextBack(ExactTime time);

    TimesBack choice_;
    bool isOfClocks_;
    ExactTime shift_;
    ExactTime step_;  // between the two rows before
    std::optional<ExactTime> last_;
    std::size_t count_ = 0;  // of the rows dropped, or of the times that times went back
};

}  // namespace vorm::evaluation

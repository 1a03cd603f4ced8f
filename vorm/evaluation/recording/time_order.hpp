#pragma once

// The times of rows, made to go on where they go back.

#include <vorm/evaluation/table/table_layout.hpp>

#include <cstddef>
#include <limits>
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
        if (time <= reached_) [[unlikely]] {
            return time == reached_ ? time : nextBack(time);
        }
        before_ = reached_;
        reached_ = time;
        return time;
    }

    /// Whether the time is before the one that was reached.
    bool goesBack(ExactTime time) const { return time + shift_ < reached_; }
    /// The time that was reached: of the latest row that counts.
    ExactTime reached() const { return reached_; }

    /// What was done, or nothing: `times go back 2 times: ...`.
    std::string warning() const;

private:
    static constexpr ExactTime beforeAll{std::numeric_limits<WideInteger>::min()};

    std::optional<ExactTime> nextBack(ExactTime time);
    ExactTime step() const { return before_ == beforeAll ? ExactTime() : reached_ - before_; }

    TimesBack choice_;
    bool isOfClocks_;
    ExactTime shift_;
    ExactTime reached_ = beforeAll;
    ExactTime before_ = beforeAll;  // the time before the one that was reached
    std::size_t count_ = 0;         // of the rows dropped, or of the times that times went back
};

}  // namespace vorm::evaluation

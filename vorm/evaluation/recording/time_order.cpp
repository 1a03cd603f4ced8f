#include "time_order.hpp"

#include <vorm/evaluation/time/time_text.hpp>

namespace vorm::evaluation {

// Of a time that is before the one that was reached.
std::optional<ExactTime> TimeOrder::nextBack(ExactTime time) {
    ++count_;
    switch (choice_) {
        case TimesBack::Drop:
            return std::nullopt;
        case TimesBack::Shift: {
            ExactTime later = reached_ - time + step();
            if (isOfClocks_) {
                constexpr ExactTime hour = 3'600 * second;
                const WideInteger behind = (reached_ - time).attoseconds();
                later = (behind / hour.attoseconds() + 1) * hour;
            }
            shift_ += later;
            before_ = time + later - step();
            reached_ = time + later;
            return reached_;
        }
        case TimesBack::Refuse:
        case TimesBack::Sort:
        case TimesBack::Split:
            return time;
    }
    return time;
}

std::string TimeOrder::warning() const {
    const std::string times = std::to_string(count_) + (count_ == 1 ? " time" : " times");
    const std::string rows = std::to_string(count_) + (count_ == 1 ? " row" : " rows");
    switch (count_ == 0 ? TimesBack::Refuse : choice_) {
        case TimesBack::Drop:
            return rows + " before a time that was reached " + (count_ == 1 ? "is" : "are") +
                   " left out";
        case TimesBack::Shift:
            return "times go back " + times + "; the last rows are " + timeWithUnit(shift_) +
                   " later than they say";
        case TimesBack::Sort:
            return rows + (count_ == 1 ? " stands behind later ones and is sorted"
                                       : " stand behind later ones and are sorted");
        case TimesBack::Refuse:
        case TimesBack::Split:
            return {};
    }
    return {};
}

}  // namespace vorm::evaluation

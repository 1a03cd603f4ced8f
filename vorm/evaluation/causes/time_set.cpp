#include "time_set.hpp"

#include <vorm/assessments/trace/time_step.hpp>

#include <algorithm>
#include <utility>

namespace vorm::evaluation::detail {

using assessments::support::infinity;
using assessments::support::nextTime;
using assessments::support::previousTime;

TimeSet::TimeSet(std::vector<CountedSpan> spans) {
    std::sort(spans.begin(), spans.end(),
              [](const CountedSpan& a, const CountedSpan& b) { return a.first < b.first; });
    for (const CountedSpan& span : spans) {
        if (!spans_.empty() && span.first <= nextTime(spans_.back().last)) {
            spans_.back().last = std::max(spans_.back().last, span.last);
        } else {
            spans_.push_back(span);
        }
    }
}

TimeSet TimeSet::plus(double a, double b) const {
    std::vector<CountedSpan> spans;
    for (const CountedSpan& span : spans_) {
        spans.push_back({span.first + a, span.last + b});
    }
    return TimeSet(std::move(spans));
}

TimeSet TimeSet::mirrored() const {
    TimeSet mirror;
    for (auto span = spans_.rbegin(); span != spans_.rend(); ++span) {
        mirror.spans_.push_back({-span->last, -span->first});
    }
    return mirror;
}

TimeSet TimeSet::joined(const TimeSet& other) const {
    std::vector<CountedSpan> spans = spans_;
    spans.insert(spans.end(), other.spans_.begin(), other.spans_.end());
    return TimeSet(std::move(spans));
}

TimeSet TimeSet::without(const CountedSpan& span) const {
    const TimeSet before = within({-infinity, previousTime(span.first)});
    return before.joined(within({nextTime(span.last), infinity}));
}

TimeSet TimeSet::within(const CountedSpan& span) const {
    TimeSet part;
    for (const CountedSpan& each : spans_) {
        const CountedSpan common{std::max(each.first, span.first), std::min(each.last, span.last)};
        if (common.first <= common.last) {
            part.spans_.push_back(common);
        }
    }
    return part;
}

TimeSet TimeSet::where(const Truth& truth, std::int8_t value) const {
    TimeSet part;
    for (const CountedSpan& span : spans_) {
        auto point = truth.TimedPointIteratorForValueAt(span.first, true);
        while (point != truth.points.end() && point->time <= span.last) {
            const double first = std::max(span.first, point->time);
            const bool hasValue = point->value == value;
            ++point;
            const bool ends = point != truth.points.end() && point->time <= span.last;
            if (hasValue) {
                part.spans_.push_back({first, ends ? previousTime(point->time) : span.last});
            }
        }
    }
    return part;
}

}  // namespace vorm::evaluation::detail

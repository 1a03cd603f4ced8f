#include "time_line.hpp"

#include <vorm/assessments/trace/time_step.hpp>

#include <cmath>
#include <optional>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// Between whole seconds doubles have all that lines are made of: what is read off there is rounded
// once.
std::set<double> withWholeSeconds(const std::set<double>& numbers) {
    std::set<double> all = numbers;
    for (const double number : numbers) {
        // Without the minus of a zero.
        all.insert({std::floor(number) + 0.0, std::ceil(number) + 0.0});
    }
    return all;
}

class TimeLine {
public:
    void add(double time, double seconds) {
        if (last_ != nullptr && !(time > last_->time && seconds > last_->value)) {
            return;
        }
        TimedPoint<double> point{time, seconds, 0};
        if (last_ != nullptr) {
            last_->setDerivative(point);
            point.derivative = last_->derivative;
        }
        // A builder would leave out what lies on the line as far as doubles tell.
        trace_.points.push_back(point);
        last_ = &trace_.points.back();
    }

    TimedTrace_T<double> until(double end) && {
        trace_.lastKnownTime = end;
        return std::move(trace_);
    }

private:
    TimedTrace_T<double> trace_{INTERPOLATION_METHOD::LINEAR, -support::infinity};
    TimedPoint<double>* last_ = nullptr;
};

}  // namespace

SharedPieces timeLine(const Timeline& timeline, const CountedSpan& span,
                      const std::set<double>& sharp) {
    const double first = timeline.timeAt(span.first).seconds();
    const double last = timeline.timeAt(span.last).seconds();
    std::set<double> numbers = sharp;
    numbers.insert({first, last});
    TimeLine line;
    line.add(span.first, first);
    for (const double seconds : withWholeSeconds(numbers)) {
        const auto time = ExactTime::ofSeconds(seconds);
        if (first < seconds && seconds < last && time && timeline.at(*time) < span.last) {
            line.add(timeline.at(*time), seconds);
        }
    }
    line.add(span.last, last);
    auto pieces = std::make_shared<TracePieces>();
    pieces->emplace_back(std::move(line).until(span.last));
    return pieces;
}

Signal timeSignal(const Timeline& timeline, const CountedSpan& span) {
    return {std::string(timeName), SignalType::of<double>(), "s", timeLine(timeline, span)};
}

}  // namespace vorm::evaluation

#pragma once

// For what makes truth: writes it from left to right, open wherever nothing else is said.

#include <vorm/assessments/operators/step_output.hpp>
#include <vorm/assessments/trace/time_step.hpp>
#include <vorm/evaluation/evaluator/truth.hpp>

#include <utility>

namespace vorm::evaluation {

class TruthWriter {
public:
    TruthWriter() = default;
    TruthWriter(const TruthWriter&) = delete;
    TruthWriter& operator=(const TruthWriter&) = delete;

    /// From `time` on, which is not before the last change, the truth is `value`.
    void change(double time, std::int8_t value) {
        if (value != value_) {
            output_.change(time, value);
            value_ = value;
        }
    }

    /// After this time nothing is known.
    void openAfter(double lastKnownTime) {
        if (lastKnownTime < assessments::support::infinity) {
            change(assessments::support::nextTime(lastKnownTime), isOpen);
        }
    }

    /// What was written. Nothing may follow.
    Truth finish() {
        output_.finish();
        truth_.lastKnownTime = assessments::support::infinity;
        return std::move(truth_);
    }

private:
    static constexpr double start = -assessments::support::infinity;

    Truth truth_{assessments::INTERPOLATION_METHOD::ZOH, start};
    assessments::support::StepOutput<std::int8_t> output_{truth_, start, isOpen};
    std::int8_t value_ = isOpen;  // from the last change on
};

}  // namespace vorm::evaluation

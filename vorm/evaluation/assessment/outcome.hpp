#pragma once

#include <vorm/assessments/value_types.hpp>
#include <vorm/evaluation/assessment/severity.hpp>
#include <vorm/evaluation/causes/cause_extent.hpp>
#include <vorm/evaluation/formula/definition_names.hpp>
#include <vorm/evaluation/formula/formula_parameter.hpp>
#include <vorm/evaluation/recording/recorded_times.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <optional>
#include <string>
#include <vector>

namespace vorm::evaluation {

/// A condition that is to blame for a failure: a comparison or a bool signal that has the value
/// throughout the span.
struct Cause {
    std::string condition;             ///< in full
    NamedFormula named;                ///< the same with definitions by their names
    std::vector<std::string> signals;  ///< that it looks at
    bool value;
    TimeSpan span;
    Beside beside = Beside::At;  ///< of an instant
};

/// Why a requirement fails in one interval. If the causes were the opposite of what they are, it
/// would not fail there; each of them is needed for that. Where several sets of conditions do so,
/// the one named has of a disjunction that is false the last operand, such as the right side of an
/// implication, and of a conjunction that is true the first; where something should come true
/// within a window it is looked at where the window ends.
struct FailureExplanation {
    CauseExtent extent = CauseExtent::Whole;
    std::vector<Cause> causes;  ///< in time order for each condition
    std::size_t otherSets = 0;  ///< how many other sets of conditions there are
    bool hasMoreSets = false;   ///< whether there may be more than that
};

/// Why a requirement is open at some time: what its formula looks at is not known.
struct OpenReason {
    enum class Kind {
        NoSamples,
        Hole,               ///< between two samples
        SignalBegins,       ///< later than the recording
        SignalEnds,         ///< earlier than the recording
        RecordingBegins,    ///< only after the open time
        RecordingEnds,      ///< already before the open time
        WindowReachesBack,  ///< before the recording's begin
        WindowReachesOn,    ///< beyond the recording's end
    };

    Kind kind;
    std::string signal;
    TimeSpan gap;  ///< of a hole; else both times are the one at which something begins or ends

    friend bool operator==(const OpenReason&, const OpenReason&) = default;
};

/// What became of one assessment on one recording.
struct AssessmentOutcome {
    std::string name;
    std::string description;
    std::string formula;  ///< as it stands in the file
    Severity severity = Severity::Error;
    std::vector<std::string> tags;

    /// FAIL where it fails at some time, PASS where it holds wherever it is known, NO_RESULT where
    /// it is known nowhere.
    assessments::resultEnum_t verdict = assessments::resultEnum_t::NO_RESULT;
    std::optional<InputError> error;  ///< why it could not be evaluated
    std::string reason;               ///< why there is no result; empty where there is one

    // The closed range of time that was looked at, and how much of it holds, fails and is open.
    ExactTime from;
    ExactTime to;
    ExactTime passed;
    ExactTime failed;
    ExactTime open;

    std::vector<TimeSpan> failures;   ///< in time order
    std::vector<TimeSpan> openSpans;  ///< where the recording cannot tell, in time order

    // Where explanations were asked for.
    std::vector<FailureExplanation> explanations;      ///< of the failures
    std::vector<std::vector<OpenReason>> openReasons;  ///< why the open spans are so

    /// Whether it passes only because its trigger, the left side of an implication, is false
    /// wherever it was looked at.
    bool neverTriggered = false;
    std::string trigger;  ///< the text of that left side; empty where the formula has none

    /// Where it was asked for and could be computed: between what the robustness at the worst time
    /// of the range lies. Both are equal where the recording decides it, NaN where a NaN is in the
    /// way, and nothing where there is no range.
    std::optional<double> leastRobustness;
    std::optional<double> greatestRobustness;
    std::optional<InputError> robustnessError;  ///< why it was asked for and is not known

    /// The failing interval with all its causes, where explanations were asked for.
    TimeSpan failureWithCauses(std::size_t failure) const;

    /// How much of the range is open, from 0 to 1. What is open for instants only counts as
    /// nothing.
    double openShare() const;

    /// Whether it fails; under strict, also whether it does not pass throughout. What could not be
    /// evaluated does neither.
    bool fails(bool strict) const;

    /// Whether it fails, and its severity makes the run fail with it.
    bool failsRun(bool strict) const { return severity == Severity::Error && fails(strict); }

    /// Whether it holds at every time of the range: it passes, and is open nowhere.
    bool passesThroughout() const;
};

/// What became of the assessments on one recording.
struct RecordingOutcome {
    std::string recording;
    std::optional<InputError> error;             ///< why the recording could not be used
    std::vector<AssessmentOutcome> assessments;  ///< in the order of the file
    std::vector<std::string> remarks;            ///< those of the Recording, as the warnings
    std::vector<std::string> warnings;
    RecordedTimes times = {};

    /// Whether some assessment makes the run fail.
    bool hasFailures(bool strict) const;
};

/// The outcome of a run.
struct RunOutcome {
    std::string file;
    std::string title;
    std::vector<RecordingOutcome> recordings;  ///< in the order given
    bool strict = false;                       ///< whether what is open at some time has not passed
    FormulaParameters parameters{};            ///< of the file, with the values that were used
    /// Of all that outcomes depend on but for the recordings; or empty.
    std::string fingerprint{};

    /// Whether some input could not be used.
    bool hasErrors() const;
    /// Whether some assessment of the severity error failed; where the run is strict, also whether
    /// one did not pass throughout.
    bool hasFailures() const;
};

}  // namespace vorm::evaluation

#include "verdict_text.hpp"

#include <vorm/evaluation/text/shortest_number.hpp>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace vorm::evaluation {
namespace {

using assessments::resultEnum_t;

std::string numberWithDigits(double number, int digits) {
    if (std::isnan(number)) {
        return "nan";  // without a sign
    }
    std::array<char, 40> text;
    // Adding zero turns a minus zero into zero.
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number + 0.0,
                                   std::chars_format::general, digits);
    return std::string(text.data(), end.ptr);
}

void count(const AssessmentOutcome& assessment, VerdictCounts& counts) {
    if (!assessment.error.empty()) {
        ++counts.errors;
    } else if (assessment.verdict == resultEnum_t::PASS) {
        ++counts.passed;
    } else if (assessment.verdict == resultEnum_t::FAIL) {
        ++counts.failed;
    } else {
        ++counts.noResult;
    }
}

}  // namespace

std::string verdictText(const AssessmentOutcome& outcome) {
    return outcome.error.empty() ? verdictName(outcome.verdict) : "ERROR";
}

std::string verdictName(resultEnum_t verdict) {
    switch (verdict) {
        case resultEnum_t::PASS:
            return "PASS";
        case resultEnum_t::FAIL:
            return "FAIL";
        case resultEnum_t::NO_RESULT:
            break;
    }
    return "NO_RESULT";
}

VerdictCounts countVerdicts(const RecordingOutcome& recording) {
    VerdictCounts counts;
    counts.errors += recording.error.empty() ? 0 : 1;
    for (const AssessmentOutcome& assessment : recording.assessments) {
        count(assessment, counts);
    }
    return counts;
}

VerdictCounts countVerdicts(const RunOutcome& run) {
    VerdictCounts sum;
    for (const RecordingOutcome& recording : run.recordings) {
        const VerdictCounts counts = countVerdicts(recording);
        sum.passed += counts.passed;
        sum.failed += counts.failed;
        sum.noResult += counts.noResult;
        sum.errors += counts.errors;
    }
    return sum;
}

std::string timeText(double seconds) {
    constexpr double nanosecond = 1e-9;
    std::string text = numberWithDigits(seconds, 15);
    const double shown = std::strtod(text.c_str(), nullptr);
    return std::fabs(shown - seconds) > nanosecond ? shortestNumber(seconds) : text;
}

std::string durationText(double seconds) {
    return numberWithDigits(seconds, 9);
}

std::string intervalText(const FailingInterval& interval) {
    if (isInstant(interval)) {
        return "at " + timeText(interval.start) + " s";
    }
    return "from " + timeText(interval.start) + " s to " + timeText(interval.end) + " s";
}

}  // namespace vorm::evaluation

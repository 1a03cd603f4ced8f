#pragma once

// What the samples of one column are like, counted without judging them.

#include <vorm/evaluation/recording/number_summary.hpp>
#include <vorm/evaluation/recording/recording_survey.hpp>
#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/table/row_reader.hpp>

#include <set>

namespace vorm::evaluation {

class ColumnSurvey {
public:
    ColumnSurvey(const std::string& file, const std::string& name, const std::string& unit,
                 const SignalRules& rules);

    void add(double time, const Cell& cell);

    /// The result; nothing is added after this. Linear in the samples.
    SignalSurvey finish();

private:
    void addTime(double time);
    void addValue(const Cell& cell);
    void addText(std::string_view text);
    bool hasNames() const { return rules_.type && rules_.type->isEnumerated(); }
    std::string typeName() const;

    static constexpr std::size_t mostMembers = 64;

    SignalSurvey survey_;
    SignalRules rules_;
    std::vector<double> distances_;  // in ticks, as all times here
    double firstTime_ = 0;
    double lastTime_ = 0;
    double longestDistance_ = 0;
    double longestAt_ = 0;
    std::size_t truths_ = 0;
    std::size_t texts_ = 0;
    NumberSummary numbers_;
    std::set<std::string, std::less<>> members_;  // at most one more than mostMembers
};

}  // namespace vorm::evaluation

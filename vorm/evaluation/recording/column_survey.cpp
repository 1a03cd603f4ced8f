#include "column_survey.hpp"

#include <vorm/evaluation/table/cell_value.hpp>
#include <vorm/evaluation/text/number_text.hpp>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace vorm::evaluation {
namespace {

// The mean of the two in the middle where their number is even. Reorders the numbers.
double medianOf(std::vector<double>& numbers) {
    if (numbers.empty()) {
        return 0;
    }
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::nth_element(numbers.begin(), middle, numbers.end());
    if (numbers.size() % 2 == 1) {
        return *middle;
    }
    return std::midpoint(*std::max_element(numbers.begin(), middle), *middle);
}

}  // namespace

ColumnSurvey::ColumnSurvey(const std::string& file, const std::string& name,
                           const std::string& unit, const SignalRules& rules)
    : rules_(rules) {
    survey_.file = file;
    survey_.name = name;
    survey_.unit = unit;
}

void ColumnSurvey::add(double time, const Cell& cell) {
    if (cell.text.empty()) {
        ++survey_.empty;
        return;
    }
    addTime(time);
    addValue(cell);
}

void ColumnSurvey::addTime(double time) {
    if (survey_.samples == 0) {
        firstTime_ = time;
    } else if (time > lastTime_) {
        const double distance = time - lastTime_;
        distances_.push_back(distance);
        survey_.holes += distance > rules_.maxGap ? 1U : 0U;
        if (distance > longestDistance_) {
            longestDistance_ = distance;
            longestAt_ = lastTime_;
        }
    } else {
        ++(time < lastTime_ ? survey_.timesBack : survey_.equalTimes);
    }
    lastTime_ = time;
    ++survey_.samples;
}

void ColumnSurvey::addValue(const Cell& cell) {
    if (cell.isText || cell.hasPoint || hasNames()) {
        addText(cell.text);
    } else if (const auto number = numberOf<double>(cell.text)) {
        numbers_.add(cell.text, *number);
    } else if (isTruthText(cell.text)) {
        ++truths_;
    } else {
        addText(cell.text);
    }
}

void ColumnSurvey::addText(std::string_view text) {
    ++texts_;
    if (members_.size() <= mostMembers && members_.find(text) == members_.end()) {
        members_.emplace(text);
        survey_.members.emplace_back(text);
    }
}

SignalSurvey ColumnSurvey::finish() {
    survey_.type = typeName();
    numbers_.describe(survey_);
    if (members_.size() > mostMembers) {
        survey_.members.clear();
    }
    const double median = medianOf(distances_);
    const Timeline& timeline = rules_.timeline;
    if (survey_.samples > 0) {
        survey_.first = timeline.timeAt(firstTime_);
        survey_.last = timeline.timeAt(lastTime_);
        survey_.medianDistance = timeline.lengthOf(median);
        survey_.longestDistance = timeline.lengthOf(longestDistance_);
        survey_.longestAt = timeline.timeAt(longestAt_);
    }
    if (!std::isfinite(rules_.maxGap)) {
        const double limit = 10 * median;
        survey_.holes = static_cast<std::size_t>(
            std::count_if(distances_.begin(), distances_.end(),
                          [&](double distance) { return distance > limit; }));
    }
    return std::move(survey_);
}

std::string ColumnSurvey::typeName() const {
    if (rules_.type && !(rules_.type->isEnumerated() && rules_.type->enumeration->name.empty())) {
        return typeText(*rules_.type);
    }
    if (survey_.samples == 0) {
        return typeText(SignalType());
    }
    if (numbers_.count() == survey_.samples) {
        const auto integer = numbers_.integers().valueType();
        return typeText(integer ? SignalType{integer, nullptr} : SignalType::of<double>());
    }
    if (truths_ == survey_.samples) {
        return typeText(SignalType::of<bool>());
    }
    if (texts_ != survey_.samples) {
        return "mixed";
    }
    const auto enumeration = std::make_shared<const Enumeration>(Enumeration{survey_.name, {}});
    return members_.size() > mostMembers ? "text" : typeText(SignalType::of(enumeration));
}

}  // namespace vorm::evaluation

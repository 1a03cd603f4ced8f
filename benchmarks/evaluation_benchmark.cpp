// A whole requirement through the evaluator: whenever x is above its limit, y is positive within 5.

#include "signals.hpp"

#include <vorm/evaluation/evaluator/evaluator.hpp>

#include <algorithm>
#include <exception>
#include <memory>

namespace vorm::bench {
namespace {

constexpr double reaction = 5;
constexpr double span = 100;

using Steps = std::vector<std::pair<double, bool>>;

// Where a line through the samples is above the limit, as changes of truth.
Steps above(const Flat<double>& line, double limit) {
    Steps steps{{line.front().time, line.front().value > limit}};
    for (std::size_t i = 1; i < line.size(); ++i) {
        const bool now = line[i].value > limit;
        if (now != steps.back().second) {
            const double slope =
                (line[i].value - line[i - 1].value) / (line[i].time - line[i - 1].time);
            steps.emplace_back(line[i - 1].time + (limit - line[i - 1].value) / slope, now);
        }
    }
    return steps;
}

// Whether the wanted truth comes within a width: each stretch of it begins the width earlier.
Steps within(const Steps& steps, double width, bool wanted) {
    Steps result{{steps.front().first, steps.front().second}};
    for (std::size_t i = 1; i < steps.size(); ++i) {
        const double time =
            std::max(steps.front().first,
                     steps[i].second == wanted ? steps[i].first - width : steps[i].first);
        while (result.size() > 1 && result.back().first >= time) {
            result.pop_back();
        }
        if (result.size() == 1 && result.back().first >= time) {
            result.back().second = steps[i].second;
        } else if (result.back().second != steps[i].second) {
            result.emplace_back(time, steps[i].second);
        }
    }
    return result;
}

Steps implies(const Steps& a, const Steps& b) {
    Steps result;
    auto i = a.begin();
    auto j = b.begin();
    while (i != a.end() || j != b.end()) {
        const double leftTime = i != a.end() ? i->first : INFINITY;
        const double rightTime = j != b.end() ? j->first : INFINITY;
        i += leftTime <= rightTime;
        j += rightTime <= leftTime;
        const bool truth =
            (i != a.begin() && !std::prev(i)->second) || (j != b.begin() && std::prev(j)->second);
        if (result.empty() || result.back().second != truth) {
            result.emplace_back(std::min(leftTime, rightTime), truth);
        }
    }
    return result;
}

TimedTrace_T<bool> byHand(const TimedTrace_T<double>& x, const TimedTrace_T<double>& y) {
    auto isLow = x.combine<bool>(TimedTrace_T<double>(0.5), ValueGreater());
    for (auto& point : isLow.points) {
        point.value = !point.value;
    }
    const auto reacts =
        y.combine<bool>(TimedTrace_T<double>(0.0), ValueGreater()).Eventually(0, reaction);
    return isLow.Or(reacts).Globally(0, span);
}

Expression requirement(ExpressionFactory& factory, const variable& x, const variable& y) {
    return factory.Globally(
        0, span,
        factory.Implies(factory.Gt(x, factory.Constant(0.5)),
                        factory.Eventually(0, reaction, factory.Gt(y, factory.Constant(0.0)))));
}

void addRequirement(Course course, std::size_t size) {
    const auto x = irregular(Course::Noisy, size / 2, 1);
    auto y = irregular(course, size / 2, 2);
    for (Sample<double>& sample : y) {
        sample.value -= course == Course::Noisy ? 0.8 : 0;
    }
    const auto xTrace = toTrace(x, INTERPOLATION_METHOD::LINEAR);
    const auto yTrace = toTrace(y, INTERPOLATION_METHOD::LINEAR);

    ExpressionFactory factory;
    const Expression xLeaf = factory.Variable("x");
    const Expression yLeaf = factory.Variable("y");
    const auto xId = boost::get<variable>(xLeaf).id;
    const auto pieces = [](const TimedTrace_T<double>& trace) {
        return std::make_shared<const evaluation::TracePieces>(evaluation::TracePieces{trace});
    };
    const auto lookup = [xId, xPieces = pieces(xTrace), yPieces = pieces(yTrace)](
                            const variable& leaf) { return leaf.id == xId ? xPieces : yPieces; };
    const Expression formula =
        requirement(factory, boost::get<variable>(xLeaf), boost::get<variable>(yLeaf));
    for (const auto& [meaning, meaningName] :
         {std::pair(evaluation::Meaning::Boolean, "bool"),
          std::pair(evaluation::Meaning::LeastRobustness, "robustness")}) {
        add("Requirement " + std::string(meaningName) + "/" + name(course) + "/library", size,
            [=, reading = meaning] {
                auto results = evaluation::evaluate({{&formula, reading}}, lookup);
                if (results[0].failure) {
                    std::rethrow_exception(results[0].failure);
                }
                return results[0];
            });
    }
    const std::string job = "Requirement bool/" + name(course);
    add("Requirement by operators/" + name(course) + "/library", size,
        [=] { return byHand(xTrace, yTrace); });
    add(job + "/flat", size, [=] {
        return within(implies(above(x, 0.5), within(above(y, 0), reaction, true)), span, false);
    });
}

const bool registered = [] {
    for (const std::size_t size : {sizes[1], sizes[2]}) {
        addRequirement(Course::Noisy, size);
        addRequirement(Course::Smooth, size);
    }
    return true;
}();

}  // namespace
}  // namespace vorm::bench

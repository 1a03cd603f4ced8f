#include "random_case.hpp"
#include "random_formula.hpp"

#include <algorithm>

namespace vorm::evaluation::test {

RandomRequirement anyRequirement(const RandomRecording& recording) {
    RandomRequirement result{FormulaGrower(recording).truth(1 + anyIndex(3)), {}, {}, {}};
    std::set<std::string> names = result.formula.signals;
    if (names.size() > 1) {
        names.erase(timeName);
    }
    const Times times = timesOf(signalsCalled(recording, names));
    result.known = {times.front(), times.back()};
    const Rational from = anyBetween(-5, 8);
    if (onceIn(4) && from <= result.known.end) {
        result.from = from;
    }
    if (onceIn(4)) {
        result.to = std::max(from, result.known.start) + anyBetween(0, 40);
    }
    return result;
}

}  // namespace vorm::evaluation::test

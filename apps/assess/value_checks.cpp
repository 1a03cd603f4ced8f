#include "value_checks.hpp"

#include <vorm/evaluation/text/shortest_number.hpp>

#include <CLI/CLI.hpp>

#include <cmath>

namespace assess {

ValueCheck wholeNumber(int least, int most) {
    return [range = CLI::Range(least, most)](const std::string& text) { return range(text); };
}

// The library's own takes a NaN, which is neither below nor above.
ValueCheck number(double least, double most) {
    return [=](const std::string& text) {
        double value = 0;
        const bool fits = CLI::detail::lexical_cast(text, value) && value >= least && value <= most;
        return fits
                   ? std::string()
                   : "'" + text + "' is no number from " + vorm::evaluation::shortestNumber(least) +
                         " to " + vorm::evaluation::shortestNumber(most);
    };
}

std::string secondsProblem(const std::string& text) {
    double seconds = -1;
    const bool isNumber = CLI::detail::lexical_cast(text, seconds);
    return isNumber && seconds >= 0 && std::isfinite(seconds)
               ? std::string()
               : "'" + text + "' is no number of seconds from 0 on";
}

std::string settingProblem(const std::string& text) {
    return text.find('=') == std::string::npos
               ? "'" + text + "' has no value: write " + text + "=..."
               : std::string();
}

std::string pathProblem(const std::string& text) {
    return text.empty() ? "the path is empty" : "";
}

}  // namespace assess

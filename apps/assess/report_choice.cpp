#include "report_choice.hpp"

#include "commands.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

#include <CLI/Error.hpp>

#include <algorithm>
#include <utility>

namespace assess {

std::string reportProblem(const std::string& text) {
    const std::vector<std::string> known = runFormats();
    const std::string name = text.substr(0, text.find('='));
    if (std::find(known.begin(), known.end(), name) == known.end()) {
        return "'" + name + "' is none of the formats " + vorm::evaluation::listed(known);
    }
    if (text.ends_with("=-")) {
        return "'" + text + "' names no file; what goes to standard output is --format " + name;
    }
    return text.ends_with('=') ? "'" + text + "' names no file" : std::string();
}

void takeReports(Options& options, const std::vector<std::string>& texts) {
    bool isChosen = false;
    for (const std::string& text : texts) {
        const std::size_t mark = text.find('=');
        if (mark != std::string::npos) {
            options.reports.emplace_back(text.substr(0, mark), text.substr(mark + 1));
        } else if (std::exchange(isChosen, true)) {
            throw CLI::ValidationError("--format '" + text + "' is the second one",
                                       "give it a file: " + text + "=FILE");
        } else {
            options.format = text;
        }
    }
}

}  // namespace assess

#include "sub_commands.hpp"

#include "commands.hpp"

#include <algorithm>

namespace assess {

const std::array<SubCommand, 5>& subCommands() {
    static constexpr std::array<SubCommand, 5> commands{{
        {Command::Run, "run", "Assess recordings",
         "  assess run limits.toml drive1.csv drive2.csv\n"
         "  assess run limits.toml flight_folder --format json -o out.json\n"
         "  assess run limits.toml drive.csv --format html=report.html\n"
         "  assess run limits.toml drive.csv.gz",
         runAssessments},
        {Command::Check, "check", "Check an assessment file without evaluating it",
         "  assess check limits.toml\n"
         "  assess check limits.toml --against drive.csv",
         checkAssessments},
        {Command::Signals, "signals", "Show what recordings hold",
         "  assess signals drive.csv\n"
         "  assess signals drive.csv --time-format %H:%M:%S --time Clock\n"
         "  assess signals flight_folder --layout limits.toml",
         showSignals},
        {Command::Init, "init", "Write an assessment file to begin with",
         "  assess init drive.csv > limits.toml\n"
         "  assess init measured.txt --time TestTime --unit min -o limits.toml",
         draftAssessments},
        {Command::Show, "show", "Show why an assessment fails",
         "  assess show limits.toml 'braking is quick' drive.csv\n"
         "  assess show limits.toml 'braking is quick' drive.csv --format svg -o braking.svg",
         showAssessment},
    }};
    return commands;
}

const char* nameOf(Command command) {
    return std::find_if(subCommands().begin(), subCommands().end(),
                        [=](const SubCommand& row) { return row.command == command; })
        ->name;
}

}  // namespace assess

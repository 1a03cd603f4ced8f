#include "option_table.hpp"

#include "commands.hpp"
#include "report_choice.hpp"
#include "words.hpp"

#include <vorm/evaluation/assessment/layout_keys.hpp>

#include <algorithm>

namespace assess {
namespace {

using Entries = std::vector<OptionEntry>;
using Texts = std::vector<std::string>;
using enum Command;

void takeColour(Options& options, const Texts& texts) {
    options.colour = texts.front() == "always"  ? ColourChoice::Always
                     : texts.front() == "never" ? ColourChoice::Never
                                                : ColourChoice::Auto;
}

void takePlots(Options& options, const Texts& texts) {
    options.plotsAll = texts.front() == "all";
}

void takeSettings(Options& options, const Texts& texts) {
    for (const std::string& text : texts) {
        const std::size_t mark = text.find('=');
        options.parameters.push_back(
            {text.substr(0, mark), text.substr(mark + 1), parameterOption});
    }
}

void takeFailOn(Options& options, const Texts& texts) {
    options.failsOnNewOnly = texts.front() == "new";
}

Entries programOptions() {
    return {
        {.names = "-h,--help",
         .help = "Show the options; those of a sub-command after its name, with examples",
         .store = Answer::Help},
        {.names = "--version", .help = "Show the version", .store = Answer::Version},
        {.names = "-j,--jobs",
         .value = "N",
         .help = "Threads to use; all cores without it",
         .more = "The results do not depend on it.",
         .check = wholeNumber(1, 1024),
         .store = &Options::jobs},
        {.names = "-q,--quiet",
         .help = "No progress and no notes, only results",
         .store = &Options::quiet},
        {.names = "--color",
         .choices = {"auto", "always", "never"},
         .help = "Whether results are coloured; auto, as without it: on terminals, unless "
                 "NO_COLOR is set",
         .store = takeColour},
    };
}

constexpr const char* meaningOfRecordings =
    "Recordings: CSV files or JSON lines, folders whose files are one recording, or - for standard "
    "input";

Entries inputs() {
    return {
        {.names = "ASSESSMENTS",
         .commands = {Run, Check, Show},
         .value = "FILE",
         .isPath = true,
         .help = "The assessment file, in TOML; - for standard input",
         .store = &Options::assessments},
        {.names = parameterOption,
         .commands = {Run, Check, Show},
         .value = "NAME=VALUE",
         .occurrence = Occurrence::Repeatable,
         .help = "The value of a parameter, in place of the one in the assessment file",
         .more = "It has the kind of the one in the table [parameters] of the file. Each parameter "
                 "is set once.",
         .check = settingProblem,
         .store = takeSettings},
        {.names = "NAME",
         .commands = {Show},
         .value = "TEXT",
         .help = "The name of the assessment",
         .store = &Options::name},
        {.names = "RECORDING",
         .commands = {Run},
         .value = "PATH",
         .isPath = true,
         .mayBeMissing = true,
         .occurrence = Occurrence::Several,
         .help = meaningOfRecordings,
         .store = &Options::recordings},
        {.names = "RECORDING",
         .commands = {Signals, Init, Show},
         .value = "PATH",
         .isPath = true,
         .occurrence = Occurrence::Several,
         .help = meaningOfRecordings,
         .store = &Options::recordings},
        {.names = "--recordings",
         .commands = {Run},
         .value = "FILE",
         .isPath = true,
         .help = "A list of recordings, more than a command line takes: a path a line; - for "
                 "standard input",
         .more = "Paths in which there are line ends are separated by zero bytes, as find -print0 "
                 "does. The recordings of the command line come first.",
         .check = pathProblem,
         .store = &Options::recordingList},
        {.names = "--together",
         .commands = {Run, Check, Signals, Init, Show},
         .help = "All the files given are one recording",
         .store = &Options::together},
        {.names = "--against",
         .commands = {Check},
         .value = "PATH",
         .isPath = true,
         .occurrence = Occurrence::Several,
         .help = "A recording whose header and first rows give the signals and their types",
         .store = &Options::recordings},
        {.names = "--layout",
         .commands = {Signals},
         .value = "FILE",
         .isPath = true,
         .help = "An assessment file that tells how to read the recordings; what other options say "
                 "goes before it",
         .store = &Options::assessments},
    };
}

Texts suggestedReports() {
    Texts forms = runFormats();
    forms.emplace_back("html=");
    return forms;
}

Entries outputs() {
    return {
        {.names = "-f,--format",
         .commands = {Run},
         .value = joined(runFormats(), "|") + "[=FILE]",
         .suggestions = suggestedReports(),
         .occurrence = Occurrence::Repeatable,
         .help = "The form of the results; with =FILE they go there, besides those that are shown",
         .more =
             "The file is written whole or not at all; of jsonl, an object a line, a line comes "
             "as soon as a recording is done. html is a page of its own that shows the signals "
             "where an assessment fails; the run explains then.",
         .check = reportProblem,
         .store = takeReports},
        {.names = "-f,--format",
         .commands = {Signals},
         .choices = {"table", "json"},
         .help = "The form of the results",
         .store = &Options::format},
        {.names = "-f,--format",
         .commands = {Show},
         .choices = {"table", "json", "html", "svg"},
         .help = "The form of the results",
         .more = "html is a page of its own, and svg a picture of the plots for a document.",
         .store = &Options::format},
        {.names = "-o,--output",
         .commands = {Run, Signals, Init, Show},
         .value = "FILE",
         .isPath = true,
         .help = "Write the results to this file, whole or not at all but for the lines of jsonl",
         .check = pathProblem,
         .store = &Options::output},
        {.names = "--resume",
         .commands = {Run},
         .help = "Go on with a run that was interrupted: after the lines that --format jsonl=FILE "
                 "has written",
         .more =
             "Recordings that have a line are not looked at again, but count in the summary and "
             "the exit code. Lines that other requirements, parameters or options have "
             "written are refused.",
         .store = &Options::resume},
        {.names = "--report-size",
         .commands = {Run},
         .value = "MB",
         .help =
             "Megabytes that a page takes at most, 20 without it: what would be more is drawn in "
             "fewer points, or not at all",
         .more = "The page says which recordings are left without plots.",
         .check = number(1e-3, 1e4),
         .store = &Options::reportMegabytes},
        {.names = "--plots",
         .commands = {Run},
         .choices = {"all", "failed"},
         .help = "What a page has plots of: all assessments, or without it those that failed or "
                 "have no result",
         .store = takePlots},
    };
}

Entries runOptions() {
    return {
        {.names = "-v,--verbose",
         .commands = {Run},
         .help = "Also how the recordings were read, and of several the assessments of each",
         .store = &Options::verbose},
        {.names = "--only",
         .commands = {Run},
         .value = "NAME",
         .occurrence = Occurrence::Repeatable,
         .help = "Only the assessments of that name, pattern or tag:TAG",
         .more = "A name that an assessment has is meant as it stands; else *, ? and [abc] match "
                 "whole names and tags as in the shell.",
         .store = &Options::only},
        {.names = "--skip",
         .commands = {Run},
         .value = "NAME",
         .occurrence = Occurrence::Repeatable,
         .help = "Without the assessments of that name, pattern or tag:TAG",
         .store = &Options::skip},
        {.names = "--baseline",
         .commands = {Run},
         .value = "FILE",
         .isPath = true,
         .help = "An earlier report in JSON: tell what is new, fixed, changed and gone",
         .more = "Recordings and assessments are compared by their names, and times exactly.",
         .check = pathProblem,
         .store = &Options::baseline},
        {.names = "--fail-on",
         .commands = {Run},
         .choices = {"any", "new"},
         .help = "Which failures make the exit code 1; any, as without it, or those that the "
                 "baseline does not have",
         .store = takeFailOn},
        {.names = "--robustness",
         .commands = {Run},
         .help = "Also by how much each assessment holds, or fails where it is negative",
         .store = &Options::robustness},
        {.names = "--explain",
         .commands = {Run},
         .help = "Also why each assessment fails, or has no result, where it does",
         .store = &Options::explain},
        {.names = "--strict",
         .commands = {Run},
         .help = "An assessment without result at some time has not passed: exit code 1",
         .more = "Where it passes at all other times the table marks it as open, and JUnit has a "
                 "failure.",
         .store = &Options::strict},
        {.names = "--intervals",
         .commands = {Run},
         .value = "N",
         .help = "Intervals that the table shows of each assessment, as many failing ones as "
                 "without result; 10 without it, 100 on a page",
         .more = "JSON and JUnit have all of them.",
         .check = wholeNumber(0, 1'000'000'000),
         .store = &Options::intervals},
    };
}

Entries showOptions() {
    return {
        {.names = "--intervals",
         .commands = {Show},
         .value = "N",
         .help = "Failing intervals to show; 3 without it, 100 on a page",
         .more = "JSON has all of them.",
         .check = wholeNumber(0, 1'000'000'000),
         .store = &Options::intervals},
        {.names = "--values",
         .commands = {Show},
         .value = "N",
         .help = "Values of each sub-formula to show around a failure; 8 without it",
         .more = "Dots stand for those left out.",
         .check = wholeNumber(2, 10'000),
         .store = &Options::values},
        {.names = "--margin",
         .commands = {Show},
         .value = "S",
         .help = "Seconds to show before and after a failure; half its length without it",
         .check = secondsProblem,
         .store = &Options::margin},
        {.names = "--no-plot",
         .commands = {Show},
         .help = "No picture of the signals around the first failing interval, which terminals get "
                 "below the table",
         .store = &Options::withoutPlot},
    };
}

// The words that the value of a key can be, without those in capitals that stand for others.
Texts wordsOf(const vorm::evaluation::LayoutKey& key) {
    Texts words = split(key.value, '|');
    std::erase_if(words, [](const std::string& word) { return word.front() <= 'Z'; });
    return words;
}

// What an assessment file can say of recordings, so that none is needed to look at one.
Entries layoutOptions() {
    Entries entries;
    for (const vorm::evaluation::LayoutKey& key : vorm::evaluation::layoutKeys()) {
        std::string name = "--" + key.name;
        std::replace(name.begin(), name.end(), '_', '-');
        entries.push_back({.names = name,
                           .commands = {Signals, Init},
                           .value = key.value,
                           .suggestions = wordsOf(key),
                           .occurrence = key.isList ? Occurrence::Repeatable : Occurrence::Once,
                           .group = OptionGroup::Layout,
                           .help = key.meaning,
                           .store = [key = key.name, name](Options& options, const Texts& texts) {
                               options.layout.push_back({key, texts, name});
                           }});
    }
    return entries;
}

}  // namespace

const std::vector<OptionEntry>& optionTable() {
    static const Entries table = [] {
        Entries all;
        for (auto* const part :
             {programOptions, inputs, outputs, runOptions, showOptions, layoutOptions}) {
            const Entries entries = part();
            all.insert(all.end(), entries.begin(), entries.end());
        }
        return all;
    }();
    return table;
}

bool isPositional(const OptionEntry& entry) {
    return !entry.names.starts_with('-');
}

bool isOf(const OptionEntry& entry, Command command) {
    return std::find(entry.commands.begin(), entry.commands.end(), command) != entry.commands.end();
}

std::string longName(const OptionEntry& entry) {
    return split(entry.names, ',').back();
}

std::string valueText(const OptionEntry& entry) {
    return entry.choices.empty() ? entry.value : joined(entry.choices, "|");
}

const std::vector<std::string>& offeredWords(const OptionEntry& entry) {
    return entry.choices.empty() ? entry.suggestions : entry.choices;
}

}  // namespace assess

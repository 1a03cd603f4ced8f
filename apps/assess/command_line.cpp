#include "command_line.hpp"

#include "commands.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <thread>
#include <utility>

namespace assess {
namespace {

constexpr const char* recordingsHelp =
    "Recordings: CSV files or JSON lines, folders whose files are one recording, or - for standard "
    "input";

constexpr const char* layoutGroup =
    "How the recordings are read, as [recording] of an assessment file";

class CommandLine {
public:
    CommandLine() {
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.set_version_flag("--version", "assess " VORM_VERSION);
        app_.get_formatter()->column_width(32);
        options_.jobs = std::max(1U, std::thread::hardware_concurrency());
        app_.add_option("-j,--jobs", options_.jobs, "Threads to use; all cores without it")
            ->check(CLI::Range(1, 1024).description(""))
            ->type_name("N");
        app_.add_flag("-q,--quiet", options_.quiet, "No progress and no notes, only results");
        addChoice(app_, "--color", options_.colour,
                  {{"auto", ColourChoice::Auto},
                   {"always", ColourChoice::Always},
                   {"never", ColourChoice::Never}},
                  "Colours: auto (on terminals, unless NO_COLOR is set), always or never");
        app_.footer(
            "Exit codes: 0 nothing failed, 1 an assessment failed, 2 wrong usage, 3 input "
            "that cannot\nbe used.\n\nExample:\n  assess run limits.toml drive.csv");
        for (const SubCommand& command : subCommands()) {
            addCommand(command);
        }
    }

    std::variant<Options, ExitCode> parse(int argc, const char* const* argv) {
        try {
            refuseUnknownCommand(argc, argv);
            app_.parse(argc, argv);
            requireOneStandardInput();
            refuseOverwriting(options_);
        } catch (const CLI::ParseError& error) {
            const int code = app_.exit(error, std::cout, std::cerr);
            return code == 0 ? ExitCode::NothingFailed : ExitCode::WrongUsage;
        }
        return options_;
    }

private:
    struct SubCommand {
        const char* name;
        const char* help;
        const char* examples;
        void (CommandLine::*declare)(CLI::App&);  // its options
        ExitCode (*run)(const Options&);
    };

    static std::vector<SubCommand> subCommands() {
        return {
            {"run", "Assess recordings",
             "  assess run limits.toml drive1.csv drive2.csv\n"
             "  assess run limits.toml flight_folder --format json -o out.json\n"
             "  assess run limits.toml drive.csv --format html=report.html\n"
             "  assess run limits.toml drive.csv.gz",
             &CommandLine::declareRun, runAssessments},
            {"check", "Check an assessment file without evaluating it",
             "  assess check limits.toml\n"
             "  assess check limits.toml --against drive.csv",
             &CommandLine::declareCheck, checkAssessments},
            {"signals", "Show what recordings hold",
             "  assess signals drive.csv\n"
             "  assess signals drive.csv --time-format %H:%M:%S --time Clock\n"
             "  assess signals flight_folder --layout limits.toml",
             &CommandLine::declareSignals, showSignals},
            {"init", "Write an assessment file to begin with",
             "  assess init drive.csv > limits.toml\n"
             "  assess init measured.txt --time TestTime --unit min -o limits.toml",
             &CommandLine::declareInit, draftAssessments},
            {"show", "Show why an assessment fails",
             "  assess show limits.toml 'braking is quick' drive.csv\n"
             "  assess show limits.toml 'braking is quick' drive.csv --format svg -o braking.svg",
             &CommandLine::declareShow, showAssessment},
        };
    }

    template <class Choice>
    static void addChoice(CLI::App& app, const std::string& name, Choice& value,
                          std::map<std::string, Choice> choices, const std::string& help) {
        std::string names;
        for (const auto& [text, choice] : choices) {
            names += (names.empty() ? "" : "|") + text;
        }
        app.add_option_function<std::string>(
               name, [&value, choices](const std::string& text) { value = choices.at(text); }, help)
            ->check(CLI::IsMember(keysOf(choices)).description(""))
            ->type_name(names);
    }

    template <class Choice>
    static std::vector<std::string> keysOf(const std::map<std::string, Choice>& choices) {
        std::vector<std::string> keys;
        for (const auto& [text, choice] : choices) {
            keys.push_back(text);
        }
        return keys;
    }

    void addCommand(const SubCommand& command) {
        CLI::App& sub = *app_.add_subcommand(command.name, command.help);
        sub.footer(std::string("assess --help tells of --jobs, --quiet and --color, too.\n\n"
                               "Examples:\n") +
                   command.examples);
        sub.get_formatter()->column_width(32);
        sub.callback([this, run = command.run] { options_.command = run; });
        (this->*command.declare)(sub);
    }

    void addAssessments(CLI::App& sub) {
        sub.add_option("ASSESSMENTS", options_.assessments,
                       "The assessment file, in TOML; - for standard input")
            ->required()
            ->type_name("FILE");
    }

    void addRecordings(CLI::App& sub) {
        sub.add_option("RECORDING", options_.recordings, recordingsHelp)
            ->required()
            ->type_name("PATH");
        addTogether(sub);
    }

    void addTogether(CLI::App& sub) {
        sub.add_flag("--together", options_.together, "All the files given are one recording");
    }

    void addOutput(CLI::App& sub, const std::vector<std::string>& formats) {
        std::map<std::string, std::string> choices;
        for (const std::string& format : formats) {
            choices.emplace(format, format);
        }
        addChoice(sub, "-f,--format", options_.format, choices, "The form of the results");
        addOutputFile(sub);
    }

    // One format for the output, and others that name their file.
    void addReports(CLI::App& sub, const std::vector<std::string>& formats) {
        const auto takeFormats = [this](const std::vector<std::string>& texts) {
            bool isChosen = false;
            for (const std::string& text : texts) {
                const std::size_t mark = text.find('=');
                if (mark == std::string::npos) {
                    if (std::exchange(isChosen, true)) {
                        throw CLI::ValidationError("--format '" + text + "' is the second one",
                                                   "give it a file: " + text + "=FILE");
                    }
                    options_.format = text;
                } else {
                    options_.reports.emplace_back(text.substr(0, mark), text.substr(mark + 1));
                }
            }
        };
        std::string alternatives;
        for (const std::string& format : formats) {
            alternatives += (alternatives.empty() ? "" : "|") + format;
        }
        const auto requireFormat = [formats](const std::string& text) {
            const std::string name = text.substr(0, text.find('='));
            if (std::find(formats.begin(), formats.end(), name) == formats.end()) {
                return "'" + name + "' is none of the formats " + listed(formats);
            }
            return text.ends_with('=') ? "'" + text + "' names no file" : std::string();
        };
        sub.add_option_function<std::vector<std::string>>(
               "-f,--format", takeFormats,
               "The form of the results; with =FILE they go there, besides those that are shown; "
               "repeatable")
            ->check(CLI::Validator(requireFormat, ""))
            ->type_name(alternatives + "[=FILE]")
            ->expected(1)
            ->take_all();
    }

    void addOutputFile(CLI::App& sub) {
        sub.add_option("-o,--output", options_.output,
                       "Write the results to this file, whole or not at all")
            ->check([](const std::string& path) {
                return path.empty() ? std::string("the path is empty") : std::string();
            })
            ->type_name("FILE");
    }

    void declareRun(CLI::App& sub) {
        addAssessments(sub);
        addRecordings(sub);
        addReports(sub, runFormats());
        addOutputFile(sub);
        sub.add_option("--report-size", options_.reportMegabytes,
                       "Megabytes that a page takes at most, 20 without it: what would be more is "
                       "drawn in fewer points, or not at all")
            ->check(atLeastAtMost(1e-3, 1e4))
            ->type_name("MB");
        addChoice(sub, "--plots", options_.plotsAll, {{"all", true}, {"failed", false}},
                  "What a page has plots of: all assessments, or without it those that failed or "
                  "have no result");
        sub.add_flag("-v,--verbose", options_.verbose, "Also how the recordings were read");
        sub.add_option("--only", options_.only, "Only the assessment of that name; repeatable")
            ->type_name("NAME")
            ->expected(1)
            ->take_all();
        sub.add_flag("--robustness", options_.robustness,
                     "Also by how much each assessment holds or fails");
        sub.add_flag("--explain", options_.explain,
                     "Also why each assessment fails, or has no result, where it does");
        sub.add_flag("--strict", options_.strict,
                     "An assessment without result at some time has not passed: exit code 1");
        sub.add_option("--intervals", options_.intervals,
                       "Intervals that the table shows of each assessment, as many failing ones as "
                       "without result; 10 without it, 100 on a page")
            ->check(CLI::Range(0, 1'000'000'000).description(""))
            ->type_name("N");
    }

    void declareCheck(CLI::App& sub) {
        addAssessments(sub);
        sub.add_option("--against", options_.recordings,
                       "A recording whose header and first rows give the signals and their types")
            ->type_name("PATH...");
        addTogether(sub);
    }

    void declareSignals(CLI::App& sub) {
        addRecordings(sub);
        sub.add_option("--layout", options_.assessments,
                       "An assessment file that tells how to read the recordings; what other "
                       "options say goes before it")
            ->type_name("FILE");
        addOutput(sub, {"table", "json"});
        addLayout(sub);
    }

    void declareInit(CLI::App& sub) {
        addRecordings(sub);
        addOutputFile(sub);
        addLayout(sub);
    }

    // What an assessment file can say of recordings, so that none is needed to look at one.
    void addLayout(CLI::App& sub) {
        for (const vorm::evaluation::LayoutKey& key : vorm::evaluation::layoutKeys()) {
            std::string name = "--" + key.name;
            std::replace(name.begin(), name.end(), '_', '-');
            const auto take = [this, key, name](const std::vector<std::string>& texts) {
                options_.layout.push_back({key.name, texts, name});
            };
            CLI::Option& option =
                *sub.add_option_function<std::vector<std::string>>(
                        name, take, key.meaning + (key.isList ? "; repeatable" : ""))
                     ->expected(1)
                     ->type_name(key.value)
                     ->group(layoutGroup);
            if (key.isList) {
                option.take_all();
            }
        }
    }

    void declareShow(CLI::App& sub) {
        addAssessments(sub);
        sub.add_option("NAME", options_.name, "The name of the assessment")->required();
        addRecordings(sub);
        addOutput(sub, {"table", "json", "html", "svg"});
        sub.add_option("--intervals", options_.intervals,
                       "Failing intervals to show; 3 without it, 100 on a page")
            ->check(CLI::Range(0, 1'000'000'000).description(""))
            ->type_name("N");
        sub.add_option("--values", options_.values,
                       "Values of each sub-formula to show around a failure; 8 without it")
            ->check(CLI::Range(2, 10'000).description(""))
            ->type_name("N");
        sub.add_option("--margin", options_.margin,
                       "Seconds to show before and after a failure; half its length without it")
            ->check(secondsFromZero())
            ->type_name("S");
        sub.add_flag("--no-plot", options_.withoutPlot,
                     "No picture of the signals, which terminals get below the table");
    }

    static CLI::Validator secondsFromZero() {
        return {[](const std::string& text) {
                    double seconds = -1;
                    const bool isNumber = CLI::detail::lexical_cast(text, seconds);
                    return isNumber && seconds >= 0 && std::isfinite(seconds)
                               ? std::string()
                               : "'" + text + "' is no number of seconds from 0 on";
                },
                ""};
    }

    // The library's own takes a NaN, which is neither below nor above.
    static CLI::Validator atLeastAtMost(double least, double most) {
        return {[=](const std::string& text) {
                    double number = 0;
                    const bool fits = CLI::detail::lexical_cast(text, number) && number >= least &&
                                      number <= most;
                    return fits ? std::string()
                                : "'" + text + "' is no number from " +
                                      vorm::evaluation::shortestNumber(least) + " to " +
                                      vorm::evaluation::shortestNumber(most);
                },
                ""};
    }

    // `a, b and c`.
    static std::string listed(const std::vector<std::string>& names) {
        std::string text = names.front();
        for (std::size_t i = 1; i < names.size(); ++i) {
            text += (i + 1 < names.size() ? ", " : " and ") + names[i];
        }
        return text;
    }

    // The library would only tell that a command is missing.
    static void refuseUnknownCommand(int argc, const char* const* argv) {
        std::vector<std::string> commands;
        for (const SubCommand& command : subCommands()) {
            commands.emplace_back(command.name);
        }
        const std::string first = argc > 1 ? argv[1] : "-";
        if (!first.starts_with("-") &&
            std::find(commands.begin(), commands.end(), first) == commands.end()) {
            const std::string near = vorm::evaluation::suggestion(first, commands);
            throw CLI::ValidationError("there is no command '" + first + "'",
                                       near.empty() ? "it is one of " + listed(commands) : near);
        }
    }

    // An input that the results would take the place of is lost, however good they are.
    static void refuseOverwriting(const Options& options) {
        std::vector<std::filesystem::path> inputs(options.recordings.begin(),
                                                  options.recordings.end());
        inputs.emplace_back(options.assessments);
        refuseInput(inputs, "--output", options.output);
        std::set<std::string> outputs{options.output};
        for (const auto& [format, path] : options.reports) {
            refuseInput(inputs, "--format " + format, path);
            if (!outputs.insert(path).second) {
                throw CLI::ValidationError("two results go to '" + path + "'",
                                           "give each a file of its own");
            }
        }
    }

    static void refuseInput(const std::vector<std::filesystem::path>& inputs,
                            const std::string& option, const std::filesystem::path& output) {
        std::error_code ignored;
        for (const auto& input : inputs) {
            const bool isInFolder =
                std::filesystem::exists(output, ignored) &&
                std::filesystem::equivalent(
                    std::filesystem::absolute(output, ignored).parent_path(), input, ignored);
            if (isInFolder || std::filesystem::equivalent(output, input, ignored)) {
                throw CLI::ValidationError(option + " '" + output.string() + "' is an input",
                                           "give another path");
            }
        }
    }

    void requireOneStandardInput() const {
        const auto uses = std::count(options_.recordings.begin(), options_.recordings.end(), "-") +
                          (options_.assessments == "-" ? 1 : 0);
        if (uses > 1) {
            throw CLI::ValidationError("standard input (-) can be read only once");
        }
    }

    CLI::App app_{"Assesses temporal requirements on recorded signals.", "assess"};
    Options options_;
};

}  // namespace

std::variant<Options, ExitCode> parseCommandLine(int argc, const char* const* argv) {
    return CommandLine().parse(argc, argv);
}

}  // namespace assess

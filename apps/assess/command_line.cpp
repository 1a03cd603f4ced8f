#include "command_line.hpp"

#include "commands.hpp"
#include "json_lines.hpp"
#include "option_table.hpp"
#include "terminal.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <thread>
#include <type_traits>

namespace assess {
namespace {

constexpr const char* layoutGroup =
    "How the recordings are read, as [recording] of an assessment file";

class CommandLine {
public:
    CommandLine() {
        app_.require_subcommand(1);
        app_.fallthrough();
        app_.get_formatter()->column_width(32);
        options_.jobs = std::max(1U, std::thread::hardware_concurrency());
        for (const OptionEntry& entry : optionTable()) {
            if (entry.commands.empty()) {
                declare(app_, entry);
            }
        }
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
            refuseLists(argc, argv);
            app_.parse(argc, argv);
            requireOneStandardInput();
            arrangeRecordings(options_);
            requireRecordings();
            refuseOverwriting(options_);
        } catch (const CLI::ParseError& error) {
            std::ostringstream asked;
            const int code = app_.exit(error, asked, std::cerr);
            writeToOutput(asked.str());
            return code == 0 ? ExitCode::NothingFailed : ExitCode::WrongUsage;
        }
        return std::move(options_);
    }

private:
    // A sub-command takes over how help is asked for: it is added after the program's own options.
    void addCommand(const SubCommand& command) {
        CLI::App& sub = *app_.add_subcommand(command.name, command.help);
        sub.footer("assess --help tells of " + vorm::evaluation::listed(settingsEverywhere()) +
                   ", too.\n\nExamples:\n" + command.examples);
        sub.get_formatter()->column_width(32);
        sub.callback([this, run = command.run] { options_.command = run; });
        for (const OptionEntry& entry : optionTable()) {
            if (isOf(entry, command.command)) {
                declare(sub, entry);
            }
        }
    }

    static std::vector<std::string> settingsEverywhere() {
        std::vector<std::string> names;
        for (const OptionEntry& entry : optionTable()) {
            if (entry.commands.empty() && !std::holds_alternative<Answer>(entry.store)) {
                names.push_back(longName(entry));
            }
        }
        return names;
    }

    void declare(CLI::App& app, const OptionEntry& entry) {
        const std::string help =
            entry.help + (entry.occurrence == Occurrence::Repeatable ? "; repeatable" : "");
        CLI::Option& option = *std::visit(
            [&](const auto& store) { return added(app, entry.names, help, store); }, entry.store);
        if (entry.group == OptionGroup::Layout) {
            option.group(layoutGroup);
        }
        if (valueText(entry).empty()) {
            return;
        }
        option.type_name(valueText(entry))->required(isPositional(entry) && !entry.mayBeMissing);
        if (entry.occurrence != Occurrence::Several) {
            // Else a value in square brackets would be taken apart as a list.
            option.expected(1)->allow_extra_args(false);
        }
        if (entry.occurrence == Occurrence::Repeatable) {
            option.take_all();
        }
        if (!entry.choices.empty()) {
            option.check(CLI::IsMember(entry.choices).description(""));
        }
        if (entry.check) {
            option.check(entry.check);
        }
    }

    template <class Store>
    CLI::Option* added(CLI::App& app, const std::string& names, const std::string& help,
                       const Store& store) {
        if constexpr (std::is_same_v<Store, Answer>) {
            return store == Answer::Help
                       ? app.set_help_flag(names, help)
                       : app.set_version_flag(names, "assess " VORM_VERSION, help);
        } else if constexpr (std::is_same_v<Store, bool Options::*>) {
            return app.add_flag(names, options_.*store, help);
        } else if constexpr (std::is_member_object_pointer_v<Store>) {
            return app.add_option(names, options_.*store, help);
        } else {
            return app.add_option_function<std::vector<std::string>>(
                names, [this, store](const auto& texts) { store(options_, texts); }, help);
        }
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
            throw CLI::ValidationError(
                "there is no command '" + first + "'",
                near.empty() ? "it is one of " + vorm::evaluation::listed(commands) : near);
        }
    }

    // The library takes what stands in square brackets for a list of values wherever there may be
    // several. What is no path may be the name of an assessment to show.
    static void refuseLists(int argc, const char* const* argv) {
        std::error_code ignored;
        for (int i = 1; i < argc; ++i) {
            const std::string argument = argv[i];
            const bool mayBeName =
                std::string_view(argv[1]) == "show" && !std::filesystem::exists(argument, ignored);
            if (!mayBeName && argument.starts_with("[") && argument.ends_with("]") &&
                !takesOneValue(argv[i - 1])) {
                throw CLI::ValidationError("'" + argument + "' would be taken for a list",
                                           "write ./" + argument);
            }
        }
    }

    static bool takesOneValue(const std::string& option) {
        const auto& table = optionTable();
        return std::any_of(table.begin(), table.end(), [&](const OptionEntry& entry) {
            const auto names = CLI::detail::split(entry.names, ',');
            return !isPositional(entry) && !valueText(entry).empty() &&
                   entry.occurrence != Occurrence::Several &&
                   std::find(names.begin(), names.end(), option) != names.end();
        });
    }

    // An input that the results would take the place of is lost, however good they are.
    static void refuseOverwriting(const Options& options) {
        refuseInput(options, "--output", options.output, comesInLines(options.format));
        std::set<std::filesystem::path> outputs{plain(options.output)};
        for (const auto& [format, path] : options.reports) {
            refuseInput(options, "--format " + format, path, comesInLines(format));
            if (!outputs.insert(plain(path)).second) {
                throw CLI::ValidationError("two results go to '" + path + "'",
                                           "give each a file of its own");
            }
        }
    }

    // What the system cannot resolve is no other file for that.
    static std::filesystem::path plain(const std::filesystem::path& path) {
        std::error_code error;
        const auto resolved = path.empty() ? std::filesystem::path()
                                           : std::filesystem::weakly_canonical(
                                                 std::filesystem::absolute(path, error), error);
        return error ? path.lexically_normal() : resolved;
    }

    // What comes in lines is there while folders are still to be read.
    static void refuseInput(const Options& options, const std::string& option,
                            const std::filesystem::path& output, bool comesEarly) {
        if (output.empty() || output == "-") {
            return;
        }
        std::error_code ignored;
        const bool exists = std::filesystem::exists(output, ignored);
        const auto folder = std::filesystem::absolute(output, ignored).parent_path();
        const auto refuse = [&](const std::filesystem::path& input) {
            const bool isInFolder =
                (comesEarly || exists) && std::filesystem::equivalent(folder, input, ignored);
            const bool isSame = exists ? std::filesystem::equivalent(output, input, ignored)
                                       : plain(output) == plain(input);
            if (isInFolder || isSame) {
                throw CLI::ValidationError(option + " '" + output.string() + "' is an input",
                                           "give another path");
            }
        };
        std::for_each(options.recordings.begin(), options.recordings.end(), refuse);
        refuse(options.recordingList);
        refuse(options.assessments);
        refuse(options.baseline);
    }

    void requireRecordings() const {
        if (options_.recordings.empty() && app_.got_subcommand("run")) {
            throw CLI::RequiredError("RECORDING or --recordings");
        }
    }

    void requireOneStandardInput() const {
        const auto uses = std::count(options_.recordings.begin(), options_.recordings.end(), "-") +
                          (options_.assessments == "-" ? 1 : 0) +
                          (options_.recordingList == "-" ? 1 : 0);
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

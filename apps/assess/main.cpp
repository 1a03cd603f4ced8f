#include "command_line.hpp"
#include "commands.hpp"
#include "terminal.hpp"

#include <exception>
#include <iostream>
#include <new>

namespace assess {
namespace {

ExitCode program(int argc, const char* const* argv) {
    try {
        const auto parsed = parseCommandLine(argc, argv);
        if (const auto* done = std::get_if<ExitCode>(&parsed)) {
            return *done;
        }
        const auto& options = std::get<Options>(parsed);
        return options.command(options);
    } catch (const WrongUsage& error) {
        std::cerr << error.what() << "\n";
        return ExitCode::WrongUsage;
    } catch (const vorm::evaluation::InputError& error) {
        std::cerr << messageOf(error) << "\n";
    } catch (const std::bad_alloc&) {
        std::cerr
            << "assess: out of memory\n  run on fewer recordings at a time, or with --jobs 1\n";
    } catch (const std::exception& error) {
        std::cerr << "assess: unexpected failure: " << error.what() << "\n";
    }
    return ExitCode::UnusableInput;
}

}  // namespace
}  // namespace assess

int main(int argc, char** argv) {
    return static_cast<int>(assess::program(argc, argv));
}

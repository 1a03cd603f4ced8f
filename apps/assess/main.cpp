#include "command_line.hpp"
#include "commands.hpp"
#include "terminal.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string_view>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace assess {
namespace {

// Libraries that the program uses take a failed allocation for the end of a text, or fail where
// they free: nothing that came after it could be trusted. Reports are written without an allocation
// between the beginning and the end of a file, so that none is left in part.
[[noreturn]] void endWithoutMemory() {
    static std::atomic_flag isEnding;
    constexpr std::string_view message =
        "assess: out of memory\n  run on fewer recordings at a time, or with --jobs 1\n";
    // Of several threads the first one ends the program, and where nobody sees the message its exit
    // code tells.
    while (isEnding.test_and_set()) {
        ::pause();
    }
    [[maybe_unused]] const auto written = ::write(STDERR_FILENO, message.data(), message.size());
    std::_Exit(static_cast<int>(ExitCode::UnusableInput));
}

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
        endWithoutMemory();
    } catch (const std::exception& error) {
        std::cerr << "assess: unexpected failure: " << error.what() << "\n";
    }
    return ExitCode::UnusableInput;
}

// Traces come and go by megabytes. Where freed memory stays with the program, the system need not
// clear it again: a run takes 0.94 of the time, 0.92 with two threads.
void keepFreedMemory() {
#ifdef __GLIBC__
    mallopt(M_TRIM_THRESHOLD, 64 << 20);
    mallopt(M_TOP_PAD, 1 << 20);
#endif
}

// A file that got the number of a closed stream would get what is meant for the stream. What takes
// its place can be neither read nor written as the stream would be.
void occupyClosedStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) < 0) {
            ::open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

// Beyond a limit of their size files are full, which writing tells; the signal would end the
// program before it has cleaned up.
void takeSizeLimitsAsErrors() {
    std::signal(SIGXFSZ, SIG_IGN);
}

}  // namespace
}  // namespace assess

int main(int argc, char** argv) {
    assess::occupyClosedStreams();
    assess::takeSizeLimitsAsErrors();
    std::set_new_handler(assess::endWithoutMemory);
    assess::keepFreedMemory();
    return static_cast<int>(assess::program(argc, argv));
}

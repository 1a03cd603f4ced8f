#include "file_text.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace vorm::evaluation {
namespace {

[[noreturn]] void fail(const char* action, const std::string& path, const std::string& reason,
                       const char* advice) {
    InputProblem problem;
    problem.message = std::string("cannot ") + action + " '" + path + "': " + reason;
    problem.advice = advice;
    throw InputError(std::move(problem));
}

constexpr const char* writingAdvice = "give another path, or make the folder and its rights fit";

std::string systemReason(int error) {
    return std::generic_category().message(error);
}

void writeTo(const std::string& target, const std::string& path, std::string_view content) {
    errno = 0;
    std::ofstream out(target, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
    out.close();
    if (!out) {
        const int error = errno;
        std::error_code ignored;
        if (target != path) {
            std::filesystem::remove(target, ignored);
        }
        fail("write", path, systemReason(error), writingAdvice);
    }
}

// Nobody else's file is written to, whatever its name.
void createNew(const std::string& file, const std::string& path) {
    const int descriptor = ::open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (descriptor < 0) {
        fail("write", path, systemReason(errno), writingAdvice);
    }
    ::close(descriptor);
}

}  // namespace

std::string readFile(const std::string& path) {
    constexpr const char* advice = "check the path and the rights of the file";
    std::ostringstream content;
    if (path == "-") {
        content << std::cin.rdbuf();
        return std::move(content).str();
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        fail("read", path, systemReason(EISDIR), "give the path of a file");
    }
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        fail("read", path, systemReason(errno), advice);
    }
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad()) {
        fail("read", path, systemReason(errno), advice);
    }
    return text;
}

void writeFile(const std::string& path, std::string_view content) {
    std::error_code error;
    const auto old = std::filesystem::status(path, error);
    const bool isFile = old.type() == std::filesystem::file_type::regular;
    if (old.type() != std::filesystem::file_type::not_found && !isFile) {
        writeTo(path, path, content);
        return;
    }
    // What a link points at is replaced, not the link.
    const std::string target = isFile ? std::filesystem::canonical(path, error).string() : path;
    // In the same folder, since a file can only be renamed within its file system.
    const std::string temporary = target + "." + std::to_string(::getpid()) + ".part";
    createNew(temporary, path);
    writeTo(temporary, path, content);
    if (isFile) {
        std::filesystem::permissions(temporary, old.permissions(), error);
    }
    std::filesystem::rename(temporary, target, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        fail("write", path, error.message(), writingAdvice);
    }
}

}  // namespace vorm::evaluation

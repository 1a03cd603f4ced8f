#include "file_text.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
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
        fail("write", path, systemReason(error),
             "give another path, or make the folder and its rights fit");
    }
}

}  // namespace

std::string readFile(const std::string& path) {
    constexpr const char* advice = "check the path and the rights of the file";
    std::ostringstream content;
    if (path == "-") {
        content << std::cin.rdbuf();
        return std::move(content).str();
    }
    if (std::filesystem::is_directory(path)) {
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
    const auto kind = std::filesystem::status(path, error).type();
    if (kind != std::filesystem::file_type::not_found &&
        kind != std::filesystem::file_type::regular) {
        writeTo(path, path, content);
        return;
    }
    // In the same folder, since a file can only be renamed within its file system.
    const std::string temporary = path + "." + std::to_string(::getpid()) + ".part";
    writeTo(temporary, path, content);
    std::filesystem::rename(temporary, path, error);
    if (error) {
        std::error_code ignored;
        std::filesystem::remove(temporary, ignored);
        fail("write", path, error.message(), "give another path");
    }
}

}  // namespace vorm::evaluation

#include "file_text.hpp"

#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/output_file.hpp>

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace vorm::evaluation {
namespace {

[[noreturn]] void failToRead(const std::string& path, int error, const char* advice) {
    InputProblem problem;
    problem.message = "cannot read '" + path + "': " + std::generic_category().message(error);
    problem.advice = advice;
    throw InputError(std::move(problem));
}

struct FileCloser {
    void operator()(std::FILE* file) const {
        if (file != stdin) {
            std::fclose(file);
        }
    }
};

// In the same folder, since a file can only be renamed within its file system. What a killed run
// has left behind may be of a process of the same number: in containers they begin anew.
std::string temporaryFor(const std::string& target) {
    const std::string stem = target + "." + std::to_string(::getpid());
    std::string name = stem + ".part";
    std::error_code ignored;
    for (int i = 1; std::filesystem::exists(std::filesystem::symlink_status(name, ignored)); ++i) {
        name = stem + "-" + std::to_string(i) + ".part";
    }
    return name;
}

// Nothing is allocated from the first byte up to the new name: a program that ends where memory is
// out leaves no part of a file behind.
void replace(const std::string& target, const std::string& temporary, const std::string& path,
             std::string_view content, const mode_t* rights) {
    OutputFile out(temporary, OutputFile::Start::New, path);
    try {
        out.write(content);
        out.close();
        // The rights of others' files cannot always be kept.
        [[maybe_unused]] const bool kept =
            rights == nullptr || ::chmod(temporary.c_str(), *rights) == 0;
        if (::rename(temporary.c_str(), target.c_str()) != 0) {
            failToWrite("'" + path + "'", errno, anotherPath);
        }
    } catch (const InputError&) {
        ::unlink(temporary.c_str());
        throw;
    }
}

}  // namespace

std::string readFile(const std::string& path) {
    constexpr const char* advice = "check the path and the rights of the file";
    std::error_code ignored;
    if (path != "-" && std::filesystem::is_directory(path, ignored)) {
        failToRead(path, EISDIR, "give the path of a file");
    }
    const std::unique_ptr<std::FILE, FileCloser> file(
        path == "-" ? stdin : std::fopen(path.c_str(), "rbe"));
    if (file == nullptr) {
        failToRead(path, errno, advice);
    }
    std::string text;
    std::array<char, 1 << 14> block{};
    while (const std::size_t count = std::fread(block.data(), 1, block.size(), file.get())) {
        text.append(block.data(), count);
    }
    if (std::ferror(file.get()) != 0) {
        failToRead(path, errno, advice);
    }
    return text;
}

void writeFile(const std::string& path, std::string_view content) {
    std::error_code error;
    const auto old = std::filesystem::status(path, error);
    const bool isFile = old.type() == std::filesystem::file_type::regular;
    if (old.type() != std::filesystem::file_type::not_found && !isFile) {
        OutputFile out(path, OutputFile::Start::Empty, path);
        out.write(content);
        out.close();
        return;
    }
    // What a link points at is replaced, not the link.
    const std::string target = isFile ? std::filesystem::canonical(path, error).string() : path;
    if (isFile && error) {
        failToWrite("'" + path + "'", error.value(), anotherPath);
    }
    const auto rights = static_cast<mode_t>(old.permissions());
    replace(target, temporaryFor(target), path, content, isFile ? &rights : nullptr);
}

}  // namespace vorm::evaluation

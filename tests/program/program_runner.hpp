#pragma once

// Runs the program as a user does: in a folder of its own, by the shell.

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace assess_tests {

struct ProgramResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

inline std::string contentOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

/// A test with an empty folder as its place of work.
class ProgramTest : public testing::Test {
protected:
    ProgramTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "assess_XXXXXX").string();
        folder_ = ::mkdtemp(pattern.data());
    }
    ~ProgramTest() override { std::filesystem::remove_all(folder_); }

    void write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((folder_ / name).parent_path());
        std::ofstream(folder_ / name, std::ios::binary) << content;
    }

    /// Runs `assess` with arguments in the syntax of the shell, perhaps with redirections.
    ProgramResult assess(const std::string& arguments) const {
        return shell(std::string(VORM_ASSESS) + " " + arguments);
    }

    ProgramResult shell(const std::string& commands) const {
        const auto out = folder_ / ".out";
        const auto err = folder_ / ".err";
        const std::string line = "cd '" + folder_.string() + "' && { " + commands + "; } >" +
                                 out.string() + " 2>" + err.string();
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(err)};
    }

    const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

}  // namespace assess_tests

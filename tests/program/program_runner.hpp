#pragma once

// Runs the program as a user does: in a folder of its own, by the shell.

#include "support/text.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json_fwd.hpp>

#include <filesystem>
#include <string>

namespace assess_tests {

using vorm::test::has;

struct ProgramResult {
    int exitCode = -1;
    std::string out;
    std::string err;
};

std::string contentOf(const std::filesystem::path& path);

/// Whether a value is the expected one, objects in it in all members that the expected ones have.
testing::AssertionResult matches(const nlohmann::json& actual, const std::string& expected);

/// A test with an empty folder as its place of work.
class ProgramTest : public testing::Test {
protected:
    ProgramTest();
    ~ProgramTest() override;

    void write(const std::string& name, const std::string& content) const;

    /// Runs `assess` with arguments in the syntax of the shell, perhaps with redirections.
    ProgramResult assess(const std::string& arguments) const;

    ProgramResult shell(const std::string& commands) const;

    /// What `assess` reports as JSON.
    nlohmann::json report(const std::string& arguments) const;

    /// What it reports of the first assessment on the first recording.
    nlohmann::json outcome(const std::string& arguments) const;

    const std::filesystem::path& folder() const { return folder_; }

private:
    std::filesystem::path folder_;
};

}  // namespace assess_tests

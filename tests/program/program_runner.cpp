#include "program_runner.hpp"

#include <nlohmann/json.hpp>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

namespace assess_tests {
namespace {

bool hasAllOf(const nlohmann::json& actual, const nlohmann::json& expected) {
    if (!expected.is_structured() || actual.type() != expected.type() ||
        (actual.is_array() && actual.size() != expected.size())) {
        return actual == expected;
    }
    for (const auto& [key, value] : expected.items()) {
        const nlohmann::json::json_pointer place("/" + key);
        if (!actual.contains(place) || !hasAllOf(actual[place], value)) {
            return false;
        }
    }
    return true;
}

}  // namespace

testing::AssertionResult matches(const nlohmann::json& actual, const std::string& expected) {
    const bool isSo = hasAllOf(actual, nlohmann::json::parse(expected));
    return (isSo ? testing::AssertionSuccess() : testing::AssertionFailure())
           << actual.dump(2) << "\nshould have " << expected;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

ProgramTest::ProgramTest() {
    std::string pattern = (std::filesystem::temp_directory_path() / "assess_XXXXXX").string();
    folder_ = ::mkdtemp(pattern.data());
}

ProgramTest::~ProgramTest() {
    std::filesystem::remove_all(folder_);
}

void ProgramTest::write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << content;
}

ProgramResult ProgramTest::assess(const std::string& arguments) const {
    return shell(std::string(VORM_ASSESS) + " " + arguments);
}

ProgramResult ProgramTest::shell(const std::string& commands) const {
    const auto out = folder_ / ".out";
    const auto err = folder_ / ".err";
    const std::string line = "cd '" + folder_.string() + "' && { " + commands + "; } >" +
                             out.string() + " 2>" + err.string();
    const int status = std::system(line.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(out), contentOf(err)};
}

nlohmann::json ProgramTest::report(const std::string& arguments) const {
    return nlohmann::json::parse(assess(arguments + " --format json").out);
}

nlohmann::json ProgramTest::outcome(const std::string& arguments) const {
    return report(arguments)["recordings"][0]["assessments"][0];
}

}  // namespace assess_tests

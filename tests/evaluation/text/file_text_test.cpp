#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace vorm::evaluation {
namespace {

std::filesystem::path newFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "vorm_XXXXXX").string();
    return ::mkdtemp(pattern.data());
}

TEST(FileText, FailedWritesLeaveTheOldFileAlone) {
    const std::filesystem::path folder = newFolder();
    std::filesystem::create_directories(folder / "taken");
    const std::string path = (folder / "a.txt").string();
    writeFile(path, "old");
    writeFile(path, "new");
    EXPECT_EQ(readFile(path), "new");
    EXPECT_THROW(writeFile((folder / "taken").string(), "x"), InputError);
    EXPECT_THROW(writeFile((folder / "none" / "a.txt").string(), "x"), InputError);
    EXPECT_THROW(readFile((folder / "taken").string()), InputError);
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        files += entry.is_regular_file() ? 1 : 0;
    }
    EXPECT_EQ(files, 1) << "no part of a file is left behind";
    std::filesystem::remove_all(folder);
}

TEST(FileText, WhatAKilledProcessOfTheSameNumberLeftIsNotInTheWay) {
    const std::filesystem::path folder = newFolder();
    const std::string path = (folder / "a.txt").string();
    const std::string left = path + "." + std::to_string(::getpid()) + ".part";
    writeFile(left, "hal");
    for (const char* const text : {"one", "two"}) {
        writeFile(path, text);
        EXPECT_EQ(readFile(path), text);
        EXPECT_EQ(readFile(left), "hal");
    }
    std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace vorm::evaluation

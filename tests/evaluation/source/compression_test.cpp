#include "bytes.hpp"
#include "evaluation/recording/recorded.hpp"

#include <rapidcheck/gtest.h>

namespace vorm::evaluation::test {
namespace {

const std::string skippable("\x5A\x2A\x4D\x18\x03\x00\x00\x00xyz", 11);

// A recording in three members, with where the first of them end.
struct Members {
    explicit Members(const Compression& compression) {
        for (const char* text : {"t,a\n0,1\n", "1,2\n2,4\n3,7\n", "4,8\n"}) {
            ends.push_back(bytes.size());
            bytes += compression.compress(text);
        }
    }

    std::string bytes;
    std::vector<std::size_t> ends;
};

RC_GTEST_PROP(Compression, GivesTheTextOfAllMembersBack,
              (const std::vector<std::string>& texts, const std::string& last)) {
    const Compression& compression = *rc::gen::elementOf(compressions);
    const bool hasSkippable = compression.magicSize == 4;
    std::string bytes;
    std::string text;
    for (const std::string& member : texts) {
        bytes += compression.compress(member);
        bytes += hasSkippable && *rc::gen::arbitrary<bool>() ? skippable : "";
        text += member;
    }
    bytes += compression.compress(last);
    const auto atATime = *rc::gen::element<std::size_t>(1, 2, 3, 7, 1000);
    auto [source, name] = decompressed(
        std::make_unique<TricklingSource>(bytes, *rc::gen::element<std::size_t>(1, 5, 1000)), "r");
    RC_ASSERT(name == compression.name);
    RC_ASSERT(allOf(*source, atATime) == text + last);
    RC_ASSERT(source->taken() == bytes.size());
}

RC_GTEST_PROP(Compression, LeavesOtherBytesAlone, (const std::string& text)) {
    RC_PRE(!text.starts_with("\x1F\x8B") && !text.starts_with("\x28\xB5\x2F\xFD"));
    auto [source, name] = decompressed(std::make_unique<TricklingSource>(text, 3), "r");
    RC_ASSERT(name.empty());
    RC_ASSERT(allOf(*source, 7) == text);
    RC_ASSERT(source->taken() == text.size());
}

TEST(Compression, GivesMoreThanOneBlockBack) {
    std::string text = "t,a\n";
    for (int i = 0; i < 100'000; ++i) {
        text += std::to_string(i) + ',' + std::to_string(i * 7919L % 10007) + '\n';
    }
    for (const Compression& compression : compressions) {
        EXPECT_GT(compression.compress(text).size(), 2 * ByteWindow::inputBlockSize);
        for (const std::string& bytes :
             {compression.compress(text), compression.compress(text.substr(0, 200'000)) +
                                              compression.compress(text.substr(200'000))}) {
            EXPECT_TRUE(opened(bytes) == text) << compression.name;
        }
    }
    EXPECT_TRUE(opened(text) == text);
}

// Where a member ends a file may end, too: nothing tells that more was there.
TEST(Compression, RefusesWhatIsCutOffAnywhereElse) {
    for (const Compression& compression : compressions) {
        const Members members(compression);
        for (std::size_t size = 0; size < members.bytes.size(); ++size) {
            SCOPED_TRACE(compression.name + (' ' + std::to_string(size)));
            const std::string error = errorOf([&] { read(members.bytes.substr(0, size)); });
            const bool isEnd = std::count(members.ends.begin() + 1, members.ends.end(), size) > 0;
            EXPECT_EQ(error == "no error", isEnd) << error;
            const bool isWithin = size >= compression.magicSize && size < members.ends[1];
            EXPECT_TRUE(!isWithin || error.find("ends within its") != std::string::npos) << error;
        }
    }
}

TEST(Compression, RefusesOtherBytesThatFollow) {
    for (const Compression& compression : compressions) {
        for (const std::string& rest :
             {std::string("\0", 1), std::string("t,a\n0,1\n"), std::string("\n"),
              compression.compress("x").substr(0, 1)}) {
            const std::string error =
                errorOf([&] { opened(compression.compress("t,a\n0,1\n") + rest); });
            EXPECT_EQ(
                error.substr(0, error.find('\n')),
                "r.csv: has other bytes after its " + std::string(compression.name) + " data");
        }
    }
}

TEST(Compression, NeverTakesADamagedByte) {
    const std::string text = "t,a\n0,1\n1,2\n2,4\n3,7\n4,8\n";
    for (const Compression& compression : compressions) {
        const std::string bytes = compression.compress(text);
        // Without its first bytes gzip is known for its zero bytes, Zstandard can be any text.
        const std::size_t first = compression.magicSize == 2 ? 0 : compression.magicSize;
        for (std::size_t bit = 8 * first; bit < 8 * bytes.size(); ++bit) {
            std::string damaged = bytes;
            damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << bit % 8));
            std::string read = text;
            const std::string error = errorOf([&] { read = opened(damaged); });
            EXPECT_EQ(read, text) << compression.name << ", bit " << bit << ": " << error;
        }
    }
}

TEST(Compression, NamesWhatIsDamaged) {
    std::string bytes = gzipped("t,a\n0,1\n");
    bytes[bytes.size() - 8] = static_cast<char>(bytes[bytes.size() - 8] + 1);
    EXPECT_EQ(
        errorOf([&] { opened(bytes); }),
        "r.csv: cannot be decompressed: incorrect data check\n  the gzip data is damaged: copy "
        "the file again");
}

TEST(Compression, CountsTheBytesOfTheFile) {
    for (const Compression& compression : compressions) {
        const std::string bytes = Members(compression).bytes;
        std::size_t reported = 0;
        ReadingOptions options;
        options.progress = [&](std::size_t count) { reported += count; };
        read(bytes, {}, options);
        EXPECT_EQ(reported, bytes.size()) << compression.name;
    }
}

}  // namespace
}  // namespace vorm::evaluation::test

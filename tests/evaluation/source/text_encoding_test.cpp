#include "bytes.hpp"
#include "evaluation/recording/recorded.hpp"

#include <rapidcheck/gtest.h>

#include <algorithm>
#include <utility>

namespace vorm::evaluation::test {
namespace {

using Declared = DeclaredEncoding;
using Written = std::string (*)(const std::u32string&);

template <class... Bytes>
std::string bytesOf(Bytes... bytes) {
    return {static_cast<char>(bytes)...};
}

std::string utf8(const std::u32string& text) {
    std::string bytes;
    for (const char32_t c : text) {
        if (c < 0x80) {
            bytes += bytesOf(c);
        } else if (c < 0x800) {
            bytes += bytesOf(0xC0 | c >> 6, 0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            bytes += bytesOf(0xE0 | c >> 12, 0x80 | (c >> 6 & 0x3F), 0x80 | (c & 0x3F));
        } else {
            bytes += bytesOf(0xF0 | c >> 18, 0x80 | (c >> 12 & 0x3F), 0x80 | (c >> 6 & 0x3F),
                             0x80 | (c & 0x3F));
        }
    }
    return bytes;
}

std::string utf16be(const std::u32string& text) {
    std::string bytes;
    for (const char32_t c : text) {
        if (c < 0x10000) {
            bytes += bytesOf(c >> 8, c);
        } else {
            const char32_t high = 0xD800 + ((c - 0x10000) >> 10);
            const char32_t low = 0xDC00 + ((c - 0x10000) & 0x3FF);
            bytes += bytesOf(high >> 8, high, low >> 8, low);
        }
    }
    return bytes;
}

std::string utf16le(const std::u32string& text) {
    std::string bytes = utf16be(text);
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        std::swap(bytes[i], bytes[i + 1]);
    }
    return bytes;
}

std::string latin1(const std::u32string& text) {
    return {text.begin(), text.end()};
}

// A way to write a text, and how it is read.
struct Spelling {
    Written written;
    std::string mark;
    std::optional<Declared> declared;
    std::string encoding;
    bool isAssumed;
};

const std::vector<Spelling> spellings{
    {utf8, "", {}, "UTF-8", false},
    {utf8, "\xEF\xBB\xBF", {}, "UTF-8", false},
    {utf8, "\xEF\xBB\xBF", Declared::Latin1, "UTF-8", false},
    {utf8, "", Declared::Utf8, "UTF-8", false},
    {utf16le, "", {}, "UTF-16LE", true},
    {utf16le, "\xFF\xFE", {}, "UTF-16LE", false},
    {utf16le, "\xFF\xFE", Declared::Utf8, "UTF-16LE", false},
    {utf16le, "", Declared::Utf16, "UTF-16LE", false},
    {utf16be, "", {}, "UTF-16BE", true},
    {utf16be, "\xFE\xFF", {}, "UTF-16BE", false},
    {utf16be, "", Declared::Utf16, "UTF-16BE", false},
    {latin1, "", {}, "Windows-1252", true},
    {latin1, "", Declared::Latin1, "Windows-1252", false},
};

// Any characters, with as many of ASCII among them as tables have.
std::u32string anyTable(char32_t greatest) {
    std::u32string text = U"t";
    for (const auto c : *rc::gen::container<std::vector<std::uint32_t>>(
             rc::gen::inRange<std::uint32_t>(0x80, greatest + 1))) {
        const bool isCharacter = (c < 0xD800 || c > 0xDFFF) && (c > 0x9F || greatest > 0xFF);
        text += U",0\n";
        text += isCharacter ? static_cast<char32_t>(c) : U'1';
    }
    return text;
}

RC_GTEST_PROP(TextEncoding, AnyTextComesBack, ()) {
    const Spelling& spelling = *rc::gen::elementOf(spellings);
    const bool isLatin1 = spelling.written == latin1;
    const auto text = anyTable(isLatin1 ? 0xFF : 0x10FFFF);
    const bool isAscii = *std::max_element(text.begin(), text.end()) < 0x80;
    RC_PRE(!isAscii || !isLatin1 || !spelling.isAssumed);
    std::string bytes = spelling.mark + spelling.written(text);
    const auto stored = *rc::gen::element(0, 1, 2);
    bytes =
        stored == 0 ? bytes : compressions.at(static_cast<std::size_t>(stored - 1)).compress(bytes);
    const auto decoded = openBytes(
        std::make_unique<TricklingSource>(bytes, *rc::gen::element<std::size_t>(1, 3, 1000)), "r",
        spelling.declared);
    RC_ASSERT(decoded.encoding == spelling.encoding);
    RC_ASSERT(decoded.isEncodingAssumed == spelling.isAssumed);
    RC_ASSERT(decoded.compression.empty() == (stored == 0));
    RC_ASSERT(allOf(*decoded.bytes, *rc::gen::element<std::size_t>(1, 2, 1000)) == utf8(text));
    RC_ASSERT(decoded.bytes->taken() == bytes.size());
}

// Whatever characters the blocks that are read cut.
TEST(TextEncoding, LongTextsComeBack) {
    for (const Spelling& spelling : spellings) {
        for (std::size_t before = 1; before < 5; ++before) {
            std::u32string text(before, U'0');
            while (text.size() < 2 * ByteWindow::inputBlockSize) {
                text += spelling.written == latin1 ? U"\u00E9\n" : U"\U0001D11E\n\u20AC";
            }
            EXPECT_TRUE(opened(spelling.mark + spelling.written(text), spelling.declared) ==
                        utf8(text))
                << spelling.encoding << ' ' << before;
        }
    }
}

TEST(TextEncoding, Windows1252HasAllBytesButFive) {
    const std::u32string high = U"€‚ƒ„…†‡ˆ‰Š‹ŒŽ‘’“”•–—˜™š›œžŸ";
    std::size_t next = 0;
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const std::string bytes = "t,\xE9" + bytesOf(byte);
        if (std::string("\x81\x8D\x8F\x90\x9D").find(bytesOf(byte)) != std::string::npos) {
            EXPECT_EQ(
                errorOf([&] { opened(bytes); }),
                "r.csv: has bytes that are no Windows-1252 at offset 3\n  it is damaged, or no "
                "text, or [recording] encoding has to say what it is");
            continue;
        }
        const auto character = byte < 0xA0 ? high.at(next++) : static_cast<char32_t>(byte);
        EXPECT_EQ(opened(bytes), utf8({U't', U',', U'\u00E9', character}));
    }
    EXPECT_EQ(next, high.size());
}

TEST(TextEncoding, WhatIsNoUtf8IsWindows1252) {
    for (const auto& [bytes, text] : std::vector<std::pair<std::string, std::string>>{
             {"0,\xE9", "0,é"},             // cut by the end of the file
             {"\xC0\xAF", "À¯"},            // longer than needed
             {"\xED\xA0\x80", "í\u00A0€"},  // half of a pair
             {"\xC3\xA9\xE9", "Ã©é"},       // in part
         }) {
        EXPECT_EQ(opened(bytes), text);
        EXPECT_EQ(opened(bytes, Declared::Utf8), bytes) << "as it is";
    }
}

TEST(TextEncoding, RefusesWhatIsNoText) {
    const std::string advice = "r.csv: is no text: it has a zero byte at offset ";
    struct Case {
        std::string bytes;
        std::string message;
        std::optional<Declared> declared = {};
    };
    for (const Case& row : std::vector<Case>{
             {std::string("t,a\n0,1\n1,2\n2,\0\n", 16), advice + "14"},
             {bytesOf('P', 'K', 3, 4, 20, 0, 6, 0, 8, 0, 0, 0, 33, 0), advice + "5"},
             {bytesOf(0, 't', 't', 0), advice + "0"},
             {std::string(40, 'a') + bytesOf('t', 0), advice + "41"},
             {bytesOf('t', 0, 0, 0xD8, 't', 0),
              "r.csv: has bytes that are no UTF-16LE at offset 2"},
             {bytesOf(0xFE, 0xFF, 0, 't', 0),
              "r.csv: ends within a character of UTF-16BE at offset 4"},
             {bytesOf('t', 0, 0x34, 0xD8),
              "r.csv: ends within a character of UTF-16LE at offset 2"},
             {bytesOf(0x81), "r.csv: has bytes that are no Windows-1252 at offset 0",
              Declared::Latin1},
         }) {
        const std::string error = errorOf([&] { opened(row.bytes, row.declared); });
        EXPECT_EQ(error.substr(0, error.find('\n')), row.message);
    }
    EXPECT_EQ(opened(bytesOf('t', 0, 'a'), Declared::Utf8), bytesOf('t', 0, 'a'))
        << "declared text";
}

TEST(TextEncoding, RecordingsAreTheSameInAll) {
    const std::u32string content = U"t;Gr\u00F6\u00DFe;b\n0;1;\u00E9\n1;2;\"x\n\"\n";
    const std::string plain = textOf(read(utf8(content)));
    for (const Spelling& spelling : spellings) {
        const std::string bytes = spelling.mark + spelling.written(content);
        for (const std::string& stored : {bytes, gzipped(bytes), zstandard(bytes)}) {
            RecordingLayout layout;
            layout.encoding = spelling.declared;
            for (const std::size_t blockSize : {std::size_t{2}, ByteWindow::defaultBlockSize}) {
                EXPECT_EQ(textOf(read(stored, layout, {}, "r.csv.gz", blockSize)), plain)
                    << spelling.encoding;
            }
        }
    }
}

}  // namespace
}  // namespace vorm::evaluation::test

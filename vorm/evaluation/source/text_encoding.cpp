#include "text_encoding.hpp"

#include <vorm/evaluation/source/byte_window.hpp>
#include <vorm/evaluation/source/compression.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <iconv.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

namespace vorm::evaluation {
namespace {

constexpr std::size_t convertedBlockSize = std::size_t{1} << 16;

// A conversion to UTF-8 by the C library.
class Conversion {
public:
    explicit Conversion(const std::string& encoding)
        : descriptor_(iconv_open("UTF-8", encoding.c_str())) {
        if (std::bit_cast<std::intptr_t>(descriptor_) == -1) {
            if (errno == ENOMEM) {
                throw std::bad_alloc();
            }
            failAt({}, "this system has no conversion from " + encoding,
                   "convert the file to UTF-8");
        }
    }
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;
    ~Conversion() { iconv_close(descriptor_); }

    // Goes on until one of them is used up, and leaves of both what is not. Gives EILSEQ where
    // `from` begins with what is no character then, EINVAL where it ends within one, else 0.
    int convert(std::string_view& from, std::span<char>& to) {
        char* input = const_cast<char*>(from.data());  // which iconv does not change
        char* output = to.data();
        std::size_t inputLeft = from.size();
        std::size_t outputLeft = to.size();
        const bool isDone =
            iconv(descriptor_, &input, &inputLeft, &output, &outputLeft) != std::size_t(-1);
        const int problem = isDone || errno == E2BIG ? 0 : errno;
        from.remove_prefix(from.size() - inputLeft);
        to = to.last(outputLeft);
        return problem;
    }

private:
    iconv_t descriptor_;
};

class ConvertedSource final : public ByteSource {
public:
    ConvertedSource(ByteWindow input, std::size_t markSize, std::string path, std::string encoding)
        : input_(std::move(input)),
          offset_(markSize),
          path_(std::move(path)),
          encoding_(std::move(encoding)),
          conversion_(encoding_),
          buffer_(convertedBlockSize) {}

    std::size_t read(char* target, std::size_t most) override {
        if (unread_.empty()) {
            convertBlock();
        }
        const std::size_t count = unread_.copy(target, most);
        unread_.remove_prefix(count);
        return count;
    }

    std::size_t taken() const override { return input_.taken(); }

private:
    void convertBlock() {
        std::span<char> room = buffer_;
        do {
            std::string_view from = input_.rest();
            const int problem = conversion_.convert(from, room);
            offset_ += input_.rest().size() - from.size();
            input_.consume(input_.rest().size() - from.size());
            if (problem == EILSEQ) {
                fail("has bytes that are no " + encoding_);
            }
            // With a whole character left it is the room that is used up.
            if ((from.empty() || problem == EINVAL) && !input_.readOn()) {
                if (!from.empty()) {
                    fail("ends within a character of " + encoding_);
                }
                break;
            }
        } while (room.size() == buffer_.size());
        unread_ = {buffer_.data(), buffer_.size() - room.size()};
    }

    [[noreturn]] void fail(const std::string& message) const {
        failAt({path_}, message + " at offset " + std::to_string(offset_),
               "it is damaged, or no text, or [recording] encoding has to say what it is");
    }

    ByteWindow input_;
    std::size_t offset_;
    std::string path_;
    std::string encoding_;
    Conversion conversion_;
    std::vector<char> buffer_;
    std::string_view unread_;
};

// How an encoding was told.
struct ToldEncoding {
    std::string name;
    std::size_t markSize = 0;
    bool isAssumed = false;
};

struct ByteOrderMark {
    std::string_view bytes;
    const char* encoding;
};

constexpr std::array byteOrderMarks = std::to_array<ByteOrderMark>({
    {"\xEF\xBB\xBF", "UTF-8"},
    {"\xFF\xFE", "UTF-16LE"},
    {"\xFE\xFF", "UTF-16BE"},
});

// Of the characters of two bytes that a block would have in UTF-16, those with a zero byte.
struct ZeroBytes {
    explicit ZeroBytes(std::string_view block) : characters(block.size() / 2) {
        for (std::size_t i = 0; i < characters; ++i) {
            const bool isFirst = block[2 * i] == '\0';
            const bool isSecond = block[2 * i + 1] == '\0';
            first += isFirst ? 1 : 0;
            second += isSecond ? 1 : 0;
            both += isFirst && isSecond ? 1 : 0;
        }
    }

    const char* likelierUtf16() const { return first > second ? "UTF-16BE" : "UTF-16LE"; }

    // In a table digits, delimiters and line ends are many, whatever the language of its names, and
    // each has a zero byte on the same side. Binary data has zero bytes on both, and numbers of
    // two.
    bool areOfUtf16() const {
        return both == 0 && first != second && 4 * std::max(first, second) >= characters;
    }

    std::size_t characters;
    std::size_t first = 0;
    std::size_t second = 0;
    std::size_t both = 0;
};

bool isUtf8(std::string_view block, bool isWhole) {
    std::vector<char> converted(ByteWindow::inputBlockSize);
    std::span<char> room = converted;
    const int problem = Conversion("UTF-8").convert(block, room);
    return problem == 0 || (problem == EINVAL && !isWhole);
}

ToldEncoding declaredEncoding(DeclaredEncoding declared, std::string_view block) {
    switch (declared) {
        case DeclaredEncoding::Utf16:
            return {ZeroBytes(block).likelierUtf16()};
        case DeclaredEncoding::Latin1:
            return {"Windows-1252"};
        case DeclaredEncoding::Utf8:
            break;
    }
    return {"UTF-8"};
}

// The block is the first one, and the whole file where it is not full.
ToldEncoding encodingOf(std::string_view block, const std::string& path,
                        std::optional<DeclaredEncoding> declared) {
    for (const ByteOrderMark& mark : byteOrderMarks) {
        if (block.starts_with(mark.bytes)) {
            return {mark.encoding, mark.bytes.size()};
        }
    }
    if (declared) {
        return declaredEncoding(*declared, block);
    }
    const std::size_t zero = block.find('\0');
    if (zero != std::string_view::npos) {
        const ZeroBytes zeros(block);
        if (!zeros.areOfUtf16()) {
            failAt({path}, "is no text: it has a zero byte at offset " + std::to_string(zero),
                   "if it is, declare its encoding, such as [recording] encoding = \"utf-16\"");
        }
        return {zeros.likelierUtf16(), 0, true};
    }
    const bool isWhole = block.size() < ByteWindow::inputBlockSize;
    return isUtf8(block, isWhole) ? ToldEncoding{"UTF-8"} : ToldEncoding{"Windows-1252", 0, true};
}

}  // namespace

DecodedSource openBytes(std::unique_ptr<ByteSource> source, const std::string& path,
                        std::optional<DeclaredEncoding> declared) {
    auto [bytes, compression] = decompressed(std::move(source), path);
    ByteWindow input(std::move(bytes), ByteWindow::inputBlockSize);
    const ToldEncoding told = encodingOf(input.rest(), path, declared);
    input.consume(told.markSize);
    auto decoded = told.name == "UTF-8" ? restOf(std::move(input))
                                        : std::make_unique<ConvertedSource>(
                                              std::move(input), told.markSize, path, told.name);
    return {std::move(decoded), compression, told.name, told.isAssumed};
}

}  // namespace vorm::evaluation

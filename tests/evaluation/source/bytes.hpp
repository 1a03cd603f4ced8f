#pragma once

// Bytes as files hold them: compressed, and given a few at a time.

#include <vorm/evaluation/source/byte_window.hpp>
#include <vorm/evaluation/source/compression.hpp>
#include <vorm/evaluation/source/text_encoding.hpp>

#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace vorm::evaluation::test {

/// One member.
inline std::string gzipped(std::string text) {
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, MAX_WBITS + 16, 8, Z_DEFAULT_STRATEGY);
    std::string member(deflateBound(&stream, text.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(text.data());
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(member.data());
    stream.avail_out = static_cast<uInt>(member.size());
    deflate(&stream, Z_FINISH);
    member.resize(stream.total_out);
    deflateEnd(&stream);
    return member;
}

/// One frame with a checksum.
inline std::string zstandard(const std::string& text) {
    ZSTD_CCtx* const context = ZSTD_createCCtx();
    ZSTD_CCtx_setParameter(context, ZSTD_c_checksumFlag, 1);
    std::string frame(ZSTD_compressBound(text.size()), '\0');
    frame.resize(ZSTD_compress2(context, frame.data(), frame.size(), text.data(), text.size()));
    ZSTD_freeCCtx(context);
    return frame;
}

struct Compression {
    const char* name;
    std::function<std::string(std::string)> compress;
    std::size_t magicSize;
};

inline const std::vector<Compression> compressions{{"gzip", gzipped, 2},
                                                   {"Zstandard", zstandard, 4}};

/// Gives at most that many bytes at a time, as a pipe does.
class TricklingSource final : public ByteSource {
public:
    TricklingSource(std::string text, std::size_t most)
        : source_(textSource(std::move(text))), most_(most) {}

    std::size_t read(char* target, std::size_t most) override {
        return source_->read(target, std::min(most, most_));
    }
    std::size_t taken() const override { return source_->taken(); }

private:
    std::unique_ptr<ByteSource> source_;
    std::size_t most_;
};

/// All that a source gives, asked for that many bytes at a time.
inline std::string allOf(ByteSource& source, std::size_t atATime = 1000) {
    std::string text;
    std::string block(atATime, '\0');
    while (const std::size_t count = source.read(block.data(), block.size())) {
        text.append(block, 0, count);
    }
    return text;
}

/// What the bytes of a file are read as. Throws InputError.
inline std::string opened(const std::string& bytes, std::optional<DeclaredEncoding> declared = {}) {
    return allOf(*openBytes(textSource(bytes), "r.csv", declared).bytes);
}

}  // namespace vorm::evaluation::test

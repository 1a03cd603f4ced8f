#include "compression.hpp"

#include <vorm/evaluation/source/byte_window.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#define ZLIB_CONST
#include <zlib.h>
#include <zstd.h>
#include <zstd_errors.h>

#include <algorithm>
#include <new>
#include <utility>

namespace vorm::evaluation {
namespace {

constexpr std::size_t longestMagic = 4;

// What one call of a library did.
struct DecodingStep {
    std::size_t taken = 0;
    std::size_t given = 0;
    bool endsMember = false;
    const char* problem = nullptr;
};

class Gzip {
public:
    static constexpr const char* name = "gzip";

    static bool begins(std::string_view bytes) { return bytes.starts_with("\x1F\x8B"); }

    Gzip() {
        constexpr int gzipOnly = 16;
        if (inflateInit2(&stream_, MAX_WBITS + gzipOnly) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    Gzip(const Gzip&) = delete;
    Gzip& operator=(const Gzip&) = delete;
    ~Gzip() { inflateEnd(&stream_); }

    DecodingStep decode(std::string_view from, char* to, std::size_t most) {
        stream_.next_in = reinterpret_cast<const Bytef*>(from.data());
        stream_.avail_in = static_cast<uInt>(from.size());
        stream_.next_out = reinterpret_cast<Bytef*>(to);
        stream_.avail_out = static_cast<uInt>(most);
        const int result = inflate(&stream_, Z_NO_FLUSH);
        DecodingStep step{from.size() - stream_.avail_in, most - stream_.avail_out};
        step.endsMember = result == Z_STREAM_END;
        if (step.endsMember) {
            inflateReset(&stream_);
        } else if (result == Z_MEM_ERROR) {
            throw std::bad_alloc();
        } else if (result != Z_OK && result != Z_BUF_ERROR) {
            step.problem = stream_.msg == nullptr ? zError(result) : stream_.msg;
        }
        return step;
    }

private:
    z_stream stream_{};
};

class Zstandard {
public:
    static constexpr const char* name = "Zstandard";

    // Frames to be skipped begin with any of sixteen numbers.
    static bool begins(std::string_view bytes) {
        return bytes.starts_with("\x28\xB5\x2F\xFD") ||
               (bytes.size() >= longestMagic && (static_cast<unsigned char>(bytes[0]) >> 4U) == 5 &&
                bytes.substr(1).starts_with("\x2A\x4D\x18"));
    }

    Zstandard() : stream_(ZSTD_createDStream()) {
        if (stream_ == nullptr) {
            throw std::bad_alloc();
        }
    }
    Zstandard(const Zstandard&) = delete;
    Zstandard& operator=(const Zstandard&) = delete;
    ~Zstandard() { ZSTD_freeDStream(stream_); }

    DecodingStep decode(std::string_view from, char* to, std::size_t most) {
        ZSTD_inBuffer input{from.data(), from.size(), 0};
        ZSTD_outBuffer output{to, most, 0};
        const std::size_t result = ZSTD_decompressStream(stream_, &output, &input);
        DecodingStep step{input.pos, output.pos, result == 0};
        if (ZSTD_getErrorCode(result) == ZSTD_error_memory_allocation) {
            throw std::bad_alloc();
        }
        if (ZSTD_isError(result) != 0) {
            step.problem = ZSTD_getErrorName(result);
        }
        return step;
    }

private:
    ZSTD_DStream* stream_;
};

template <class Format>
class DecompressedSource final : public ByteSource {
public:
    DecompressedSource(ByteWindow input, std::string path)
        : input_(std::move(input)), path_(std::move(path)) {}

    std::size_t read(char* target, std::size_t most) override {
        // The libraries do not count further in one step than this.
        most = std::min(most, ByteWindow::greatestSize);
        std::size_t given = 0;
        while (given < most && (!isBetweenMembers_ || beginMember())) {
            const DecodingStep step = format_.decode(input_.rest(), target + given, most - given);
            if (step.problem != nullptr) {
                failAt(
                    {path_}, "cannot be decompressed: " + std::string(step.problem),
                    "the " + std::string(Format::name) + " data is damaged: copy the file again");
            }
            input_.consume(step.taken);
            given += step.given;
            isBetweenMembers_ = step.endsMember;
            const bool isStuck = step.taken == 0 && step.given == 0 && !step.endsMember;
            if (isStuck && !input_.readOn()) {
                failAt({path_}, "ends within its " + std::string(Format::name) + " data",
                       "it was not written or copied to its end: copy the file again");
            }
        }
        return given;
    }

    std::size_t taken() const override { return input_.taken(); }

private:
    // False at the end.
    bool beginMember() {
        while (input_.rest().size() < longestMagic && input_.readOn()) {
        }
        if (!input_.rest().empty() && !Format::begins(input_.rest())) {
            failAt({path_}, "has other bytes after its " + std::string(Format::name) + " data",
                   "copy the file again, or decompress it and look at its end");
        }
        return !input_.rest().empty();
    }

    ByteWindow input_;
    std::string path_;
    Format format_;
    bool isBetweenMembers_ = true;
};

template <class Format>
Decompressed decompressedBy(ByteWindow input, const std::string& path) {
    return {std::make_unique<DecompressedSource<Format>>(std::move(input), path), Format::name};
}

}  // namespace

Decompressed decompressed(std::unique_ptr<ByteSource> source, const std::string& path) {
    ByteWindow input(std::move(source), ByteWindow::inputBlockSize);
    if (Gzip::begins(input.rest())) {
        return decompressedBy<Gzip>(std::move(input), path);
    }
    if (Zstandard::begins(input.rest())) {
        return decompressedBy<Zstandard>(std::move(input), path);
    }
    return {restOf(std::move(input)), ""};
}

}  // namespace vorm::evaluation

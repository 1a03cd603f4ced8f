#pragma once

// For the readers of recordings, and for what decompresses and decodes them: the unread bytes of a
// source as one contiguous view, read in large blocks. The window grows only when one record is
// larger than a block.

#include <vorm/evaluation/source/byte_source.hpp>

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace vorm::evaluation {

class ByteWindow {
public:
    static constexpr std::size_t defaultBlockSize = std::size_t{1} << 18;
    /// Of the windows that sources read from.
    static constexpr std::size_t inputBlockSize = std::size_t{1} << 16;
    /// No record is larger: what goes on for longer is no table.
    static constexpr std::size_t greatestSize = std::size_t{64} << 20;

    /// Reads the first block.
    explicit ByteWindow(std::unique_ptr<ByteSource> source,
                        std::size_t blockSize = defaultBlockSize);

    /// The bytes read from the source and not consumed yet.
    std::string_view rest() const { return {buffer_.data() + begin_, end_ - begin_}; }

    void consume(std::size_t count) { begin_ += count; }

    /// Reads on, so that rest() has more bytes; views into it become invalid. False at the end of
    /// the source, and where rest() has the greatest size.
    bool readOn();

    /// The next line with its line feed, which the last one may lack; empty at the end. Not
    /// consumed. Nothing where readOn stops at the greatest size.
    std::optional<std::string_view> line();

    bool isAtEnd() const { return isAtEnd_; }

    /// As ByteSource::read: first the unread bytes, then straight from the source.
    std::size_t read(char* target, std::size_t most);
    std::size_t taken() const { return source_->taken(); }

    /// Called with the bytes of the stored file taken since the last call: with those before at
    /// once.
    void reportTo(std::function<void(std::size_t)> progress);

private:
    void makeRoom();
    void report();

    std::unique_ptr<ByteSource> source_;
    std::vector<char> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool isAtEnd_ = false;
    std::size_t reported_ = 0;
    std::function<void(std::size_t)> progress_;
};

/// The unread bytes of a window.
std::unique_ptr<ByteSource> restOf(ByteWindow window);

}  // namespace vorm::evaluation

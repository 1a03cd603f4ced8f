#include "byte_window.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vorm::evaluation {

ByteWindow::ByteWindow(std::unique_ptr<ByteSource> source, std::size_t blockSize)
    : source_(std::move(source)), buffer_(std::max<std::size_t>(blockSize, 1)) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    while (rest().size() < byteOrderMark.size() && readOn()) {
    }
    if (rest().starts_with(byteOrderMark)) {
        consume(byteOrderMark.size());
    }
}

bool ByteWindow::readOn() {
    makeRoom();
    const std::size_t before = end_;
    // A pipe gives little at a time; a full buffer keeps the number of attempts at a record small.
    while (!isAtEnd_ && end_ < buffer_.size()) {
        const std::size_t count = source_->read(buffer_.data() + end_, buffer_.size() - end_);
        isAtEnd_ = count == 0;
        end_ += count;
    }
    unreported_ += end_ - before;
    report();
    return end_ > before;
}

void ByteWindow::makeRoom() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
    if (end_ == buffer_.size() && !isAtEnd_ && end_ < greatestSize) {
        buffer_.resize(2 * end_);
    }
}

std::optional<std::string_view> ByteWindow::line() {
    for (std::size_t searched = 0;;) {
        const std::size_t found = rest().find('\n', searched);
        if (found != std::string_view::npos) {
            return rest().substr(0, found + 1);
        }
        searched = rest().size();
        if (!readOn()) {
            return isAtEnd_ ? std::optional(rest()) : std::nullopt;
        }
    }
}

void ByteWindow::reportTo(std::function<void(std::size_t)> progress) {
    progress_ = std::move(progress);
    report();
}

void ByteWindow::report() {
    if (progress_ && unreported_ > 0) {
        progress_(std::exchange(unreported_, 0));
    }
}

}  // namespace vorm::evaluation

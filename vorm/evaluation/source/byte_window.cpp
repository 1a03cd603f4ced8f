#include "byte_window.hpp"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vorm::evaluation {
namespace {

class RestSource final : public ByteSource {
public:
    explicit RestSource(ByteWindow window) : window_(std::move(window)) {}

    std::size_t read(char* target, std::size_t most) override { return window_.read(target, most); }

    std::size_t taken() const override { return window_.taken(); }

private:
    ByteWindow window_;
};

}  // namespace

ByteWindow::ByteWindow(std::unique_ptr<ByteSource> source, std::size_t blockSize)
    : source_(std::move(source)), buffer_(std::max<std::size_t>(blockSize, 1)) {
    readOn();
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

std::size_t ByteWindow::read(char* target, std::size_t most) {
    if (rest().empty()) {
        return source_->read(target, most);
    }
    const std::size_t count = rest().copy(target, most);
    consume(count);
    return count;
}

void ByteWindow::reportTo(std::function<void(std::size_t)> progress) {
    progress_ = std::move(progress);
    report();
}

void ByteWindow::report() {
    if (progress_ && taken() > reported_) {
        const std::size_t before = std::exchange(reported_, taken());
        progress_(reported_ - before);
    }
}

std::unique_ptr<ByteSource> restOf(ByteWindow window) {
    return std::make_unique<RestSource>(std::move(window));
}

}  // namespace vorm::evaluation

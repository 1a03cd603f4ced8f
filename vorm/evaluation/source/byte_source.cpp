#include "byte_source.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace vorm::evaluation {
namespace {

class FileSource final : public ByteSource {
public:
    explicit FileSource(const std::string& path)
        : path_(path), file_(path == "-" ? STDIN_FILENO : ::open(path.c_str(), O_RDONLY)) {
        if (file_ < 0) {
            fail();
        }
    }
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;
    ~FileSource() override {
        if (file_ != STDIN_FILENO) {
            ::close(file_);
        }
    }

    std::size_t read(char* target, std::size_t most) override {
        ssize_t count = 0;
        do {
            count = ::read(file_, target, most);
        } while (count < 0 && errno == EINTR);
        if (count < 0) {
            fail();
        }
        taken_ += static_cast<std::size_t>(count);
        return static_cast<std::size_t>(count);
    }

    std::size_t taken() const override { return taken_; }

private:
    [[noreturn]] void fail() const {
        InputProblem problem;
        problem.message = "cannot read '" + path_ + "': " + std::generic_category().message(errno);
        problem.advice = "check the path and the rights of the file";
        throw InputError(std::move(problem));
    }

    std::string path_;
    int file_;
    std::size_t taken_ = 0;
};

class TextSource final : public ByteSource {
public:
    explicit TextSource(std::string text) : text_(std::move(text)) {}

    std::size_t read(char* target, std::size_t most) override {
        const std::size_t count = text_.copy(target, most, position_);
        position_ += count;
        return count;
    }

    std::size_t taken() const override { return position_; }

private:
    std::string text_;
    std::size_t position_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> fileSource(const std::string& path) {
    return std::make_unique<FileSource>(path);
}

std::unique_ptr<ByteSource> textSource(std::string text) {
    return std::make_unique<TextSource>(std::move(text));
}

}  // namespace vorm::evaluation

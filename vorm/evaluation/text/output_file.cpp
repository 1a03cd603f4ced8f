#include "output_file.hpp"

#include <vorm/evaluation/text/input_error.hpp>

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace vorm::evaluation {
namespace {

std::string adviceFor(int error, const std::string& instead) {
    switch (error) {
        case ENOSPC:
        case EDQUOT:
            return "make room on the disk, or " + instead;
        case EFBIG:
            return "raise the limit of the size of files (ulimit -f), or " + instead;
        case EACCES:
        case ENOENT:
        case ENOTDIR:
        case EPERM:
            return instead + ", or make the folder and its rights fit";
        default:
            return instead;
    }
}

// As much of a text as can be written; errno tells why that is not all of it.
std::size_t writtenOf(std::string_view content, int descriptor) {
    std::size_t done = 0;
    while (done < content.size()) {
        const ssize_t count = ::write(descriptor, content.data() + done, content.size() - done);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            break;
        }
        done += static_cast<std::size_t>(count);
    }
    return done;
}

int flagsOf(OutputFile::Start start) {
    switch (start) {
        case OutputFile::Start::New:
            return O_EXCL;
        case OutputFile::Start::Empty:
            return O_TRUNC;
        case OutputFile::Start::End:
            break;
    }
    return O_APPEND;
}

}  // namespace

void failToWrite(const std::string& what, int error, const std::string& instead) {
    InputProblem problem;
    problem.message = "cannot write " + what + ": " + std::generic_category().message(error);
    problem.advice = adviceFor(error, instead);
    throw InputError(std::move(problem));
}

void writeAll(int descriptor, std::string_view content, const std::string& what,
              const std::string& instead) {
    if (writtenOf(content, descriptor) < content.size()) {
        failToWrite(what, errno, instead);
    }
}

OutputFile::OutputFile(std::string path, Start start, const std::string& name)
    : path_(std::move(path)),
      name_("'" + name + "'"),
      descriptor_(::open(path_.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC | flagsOf(start), 0666)) {
    if (descriptor_ < 0) {
        failToWrite(name_, errno, anotherPath);
    }
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : path_(std::move(other.path_)),
      name_(std::move(other.name_)),
      descriptor_(std::exchange(other.descriptor_, -1)) {}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void OutputFile::write(std::string_view content) {
    const std::size_t done = writtenOf(content, descriptor_);
    if (done < content.size()) {
        const int error = errno;
        takeBack(done);
        failToWrite(name_, error, anotherPath);
    }
}

void OutputFile::close() {
    if (::close(std::exchange(descriptor_, -1)) != 0) {
        failToWrite(name_, errno, anotherPath);
    }
}

void OutputFile::takeBack(std::size_t bytes) const {
    const off_t end = ::lseek(descriptor_, 0, SEEK_CUR);
    if (bytes > 0 && end > 0) {
        std::error_code ignored;
        std::filesystem::resize_file(path_, static_cast<std::uintmax_t>(end) - bytes, ignored);
    }
}

}  // namespace vorm::evaluation

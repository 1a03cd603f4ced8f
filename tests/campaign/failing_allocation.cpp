// Makes an allocation of the program that it is linked into fail: VORM_FAILING_ALLOCATION=K the
// K-th one since the program has set a handler for that, VORM_FAILING_FROM=K all from that one on.
// VORM_ALLOCATIONS=FILE writes how many there were to a file.

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::size_t numberIn(const char* variable) {
    const char* const text = std::getenv(variable);
    return text == nullptr ? 0 : std::strtoull(text, nullptr, 10);
}

// Constants at first: what runs before the constructor below allocates, too.
constinit std::atomic<bool> isCounting = false;
constinit std::atomic<std::size_t> count = 0;
constinit std::size_t failing = 0;
constinit std::size_t failingFrom = 0;

bool fails() {
    if (!isCounting || std::get_new_handler() == nullptr) {
        return false;
    }
    const std::size_t number = ++count;
    return number == failing || (failingFrom != 0 && number >= failingFrom);
}

struct Counting {
    Counting() {
        failing = numberIn("VORM_FAILING_ALLOCATION");
        failingFrom = numberIn("VORM_FAILING_FROM");
        isCounting = true;
    }
    Counting(const Counting&) = delete;
    Counting& operator=(const Counting&) = delete;
    ~Counting() {
        isCounting = false;
        const char* const path = std::getenv("VORM_ALLOCATIONS");
        const int file =
            path == nullptr ? -1 : ::open(path, O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0666);
        if (file < 0) {
            return;
        }
        char digits[32];
        const char* const end = std::to_chars(digits, digits + sizeof digits, count.load()).ptr;
        const bool isWritten = ::write(file, digits, static_cast<std::size_t>(end - digits)) > 0;
        if (::close(file) != 0 || !isWritten) {
            std::abort();
        }
    }
};

const Counting counting;

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

void* malloc(std::size_t size) {
    if (fails()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_malloc(size);
}

void* calloc(std::size_t number, std::size_t size) {
    if (fails()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_calloc(number, size);
}

void* realloc(void* memory, std::size_t size) {
    if (fails()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_realloc(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    if (fails()) {
        errno = ENOMEM;
        return nullptr;
    }
    return __libc_memalign(alignment, size);
}

}  // extern "C"

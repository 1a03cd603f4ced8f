#include "for_each_index.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace vorm::evaluation {

void forEachIndex(std::size_t count, unsigned jobs, const std::function<void(std::size_t)>& visit) {
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> stopped = false;
    std::mutex failureMutex;
    std::size_t failedIndex = count;
    std::exception_ptr failure;

    const auto work = [&] {
        for (std::size_t index = next++; index < count && !stopped; index = next++) {
            try {
                visit(index);
            } catch (...) {
                const std::lock_guard lock(failureMutex);
                stopped = true;
                if (index < failedIndex) {
                    failedIndex = index;
                    failure = std::current_exception();
                }
            }
        }
    };
    {
        std::vector<std::jthread> helpers;
        const std::size_t threads = std::min<std::size_t>(jobs, count);
        for (std::size_t i = 1; i < threads; ++i) {
            try {
                helpers.emplace_back(work);
            } catch (const std::system_error&) {
                break;  // the threads that there are do all the work
            }
        }
        work();
    }
    if (failure) {
        std::rethrow_exception(failure);
    }
}

}  // namespace vorm::evaluation

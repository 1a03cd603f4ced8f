#include "schedule.hpp"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <queue>
#include <system_error>
#include <thread>

namespace vorm::evaluation {
namespace {

class Schedule {
public:
    Schedule(const FormulaGraph& graph, const VertexWork& work)
        : vertices_(graph.vertices), work_(work) {
        for (std::size_t vertex = 0; vertex < vertices_.size(); ++vertex) {
            missingOperands_.push_back(vertices_[vertex].operandCount);
            waitingUsers_.push_back(vertices_[vertex].users.size());
            if (missingOperands_.back() == 0) {
                ready_.push(vertex);
            }
        }
    }

    // What the thread of a helper throws is thrown by those that wait for it.
    void help(const std::stop_token& stop) {
        try {
            work(stop, [] {});
        } catch (...) {
            const std::lock_guard lock(mutex_);
            failure_ = std::current_exception();
            changed_.notify_all();
        }
    }

    // Computes vertices until all are begun or the work is stopped.
    void work(const std::stop_token& stop, const std::function<void()>& afterEach) {
        std::unique_lock lock(mutex_);
        while (true) {
            const auto hasNext = [this] { return !ready_.empty() || begun_ == vertices_.size(); };
            if (!changed_.wait(lock, stop, hasNext) || ready_.empty() || stop.stop_requested()) {
                return;
            }
            const std::size_t vertex = ready_.top();
            ready_.pop();
            ++begun_;
            lock.unlock();
            work_.compute(vertex);
            lock.lock();
            const std::vector<std::size_t> released = finish(vertex);
            lock.unlock();
            changed_.notify_all();
            std::for_each(released.begin(), released.end(), work_.release);
            afterEach();
            lock.lock();
        }
    }

    // Waits until more than `count` vertices are computed; gives how many are.
    std::size_t waitForMoreThan(std::size_t count) {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [&] { return finished_ > count || failure_; });
        if (failure_) {
            std::rethrow_exception(failure_);
        }
        return finished_;
    }

private:
    // Gives the vertices that nothing needs any more.
    std::vector<std::size_t> finish(std::size_t vertex) {
        ++finished_;
        for (const std::size_t user : vertices_[vertex].users) {
            if (--missingOperands_[user] == 0) {
                ready_.push(user);
            }
        }
        std::vector<std::size_t> released;
        if (waitingUsers_[vertex] == 0) {
            released.push_back(vertex);
        }
        for (const std::size_t operand : vertices_[vertex].operandVertices()) {
            if (--waitingUsers_[operand] == 0) {
                released.push_back(operand);
            }
        }
        return released;
    }

    const std::vector<FormulaVertex>& vertices_;
    const VertexWork& work_;
    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::vector<std::size_t> missingOperands_;
    std::vector<std::size_t> waitingUsers_;
    std::priority_queue<std::size_t, std::vector<std::size_t>, std::greater<>> ready_;
    std::size_t begun_ = 0;
    std::size_t finished_ = 0;
    std::exception_ptr failure_;
};

}  // namespace

void runSchedule(const FormulaGraph& graph, const EvaluationOptions& options,
                 const VertexWork& work) {
    const std::size_t total = graph.vertices.size();
    std::size_t reported = 0;
    const auto reportNext = [&] {
        ++reported;
        if (options.progress) {
            options.progress(reported, total);
        }
    };
    Schedule schedule(graph, work);
    if (options.jobs <= 1) {
        schedule.work({}, reportNext);
        return;
    }
    std::vector<std::jthread> threads;
    try {
        for (std::size_t i = 0; i < std::min<std::size_t>(options.jobs, total); ++i) {
            threads.emplace_back([&schedule](const std::stop_token& stop) { schedule.help(stop); });
        }
    } catch (const std::system_error&) {
        // The threads that there are do all the work.
        if (threads.empty()) {
            schedule.work({}, reportNext);
            return;
        }
    }
    while (reported < total) {
        const std::size_t finished = schedule.waitForMoreThan(reported);
        while (reported < finished) {
            reportNext();
        }
    }
}

}  // namespace vorm::evaluation

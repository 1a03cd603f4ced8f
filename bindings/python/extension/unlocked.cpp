#include "unlocked.hpp"

#include <pybind11/pybind11.h>

#include <atomic>
#include <chrono>
#include <future>
#include <system_error>

namespace vorm::python {

namespace py = pybind11;

namespace {

// Ends the work; nobody sees it.
struct Stopped {};

}  // namespace

void workUnlocked(const std::function<void(const Progress&)>& work) {
    std::atomic<bool> isStopped = false;
    const Progress progress = [&](const std::string&) {
        if (isStopped) {
            throw Stopped();
        }
    };
    const py::gil_scoped_release unlock;
    std::future<void> done;
    try {
        done = std::async(std::launch::async, work, progress);
    } catch (const std::system_error&) {
        work(progress);  // there is no thread to be had, and so nobody to ask for signals
        return;
    }
    while (!isStopped &&
           done.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready) {
        const py::gil_scoped_acquire lock;
        if (PyErr_CheckSignals() != 0) {
            isStopped = true;
        }
    }
    if (!isStopped) {
        done.get();
        return;
    }
    done.wait();
    const py::gil_scoped_acquire lock;
    throw py::error_already_set();
}

}  // namespace vorm::python

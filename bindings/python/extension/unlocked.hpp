#pragma once

// Work without the lock of the interpreter, so that its other threads go on, and that ends where
// the user asks for it.

#include <functional>
#include <string>

namespace vorm::python {

/// To be called by the work now and then, from any thread; its text is not used. Throws where the
/// work is to end.
using Progress = std::function<void(const std::string&)>;

/// Does the work in a thread of its own while the caller's lets the interpreter go on and asks it
/// for signals: a handler of Python that throws, such as that of Ctrl-C, ends the work at its next
/// call of Progress, and its exception is thrown here. So is what the work throws. Where the system
/// has no thread to give, the caller's does the work, and signals wait for its end.
void workUnlocked(const std::function<void(const Progress&)>& work);

/// The same for work with a result.
template <class Work>
auto unlocked(const Work& work) {
    decltype(work(Progress())) result;
    workUnlocked([&](const Progress& progress) { result = work(progress); });
    return result;
}

}  // namespace vorm::python

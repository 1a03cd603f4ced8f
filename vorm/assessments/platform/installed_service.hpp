#pragma once

// For the services that a host can replace. The installed one is process-wide and is read on the
// way to every message, perhaps from several threads at once, so it changes atomically. Failures
// can be raised until the process has ended: the one in force then is never destroyed.

#include <memory>
#include <utility>

namespace vorm::platform {

template <class Service>
class InstalledService {
public:
    /// The only one of its kind, which begins with an `Embedded`.
    template <class Embedded>
    static InstalledService& instance() {
        static auto& instance = *new InstalledService(std::make_shared<const Embedded>());
        return instance;
    }

    std::shared_ptr<const Service> get() const { return std::atomic_load(&current_); }

    void install(std::shared_ptr<const Service> service) {
        std::atomic_store(&current_, service ? std::move(service) : embedded_);
    }

private:
    explicit InstalledService(std::shared_ptr<const Service> embedded)
        : embedded_(std::move(embedded)), current_(embedded_) {}

    std::shared_ptr<const Service> embedded_;
    std::shared_ptr<const Service> current_;
};

}  // namespace vorm::platform

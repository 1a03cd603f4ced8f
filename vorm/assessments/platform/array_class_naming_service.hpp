#pragma once

#include <vorm/assessments/export.hpp>

#include <cstdint>
#include <memory>

namespace vorm::platform {

/// Names the numeric array classes of a host by their identifiers. The embedded service knows the
/// logical class (3), "double" (6), "single" (7) and the integers from "int8" (8) to "uint64" (15).
class VORM_ASSESSMENTS_EXPORT ArrayClassNamingService {
public:
    virtual ~ArrayClassNamingService();

    /// The zero-terminated name of the class, or null where there is none. The name must stay
    /// valid for as long as the service does.
    virtual const char* className(std::int32_t classId) const = 0;

    /// The service in force. Safe to call from any thread.
    static std::shared_ptr<const ArrayClassNamingService> global();

    /// Makes `service` the one in force; a null pointer brings the embedded one back. Safe to call
    /// from any thread. The one in force at the end of the process is not destroyed.
    static void install(std::shared_ptr<const ArrayClassNamingService> service);
};

}  // namespace vorm::platform

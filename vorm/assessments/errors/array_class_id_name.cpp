#include "array_class_id_name.hpp"

#include <vorm/assessments/platform/array_class_naming_service.hpp>

namespace vorm::assessments {

std::string ArrayClassIdName(std::int32_t classId) {
    if (classId == halfClassId) {
        return "half";
    }
    const auto service = platform::ArrayClassNamingService::global();
    const char* name = service->className(classId);
    return name ? name : "";
}

}  // namespace vorm::assessments

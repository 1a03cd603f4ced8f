#include "array_class_naming_service.hpp"

#include <vorm/assessments/platform/installed_service.hpp>

#include <array>
#include <cstddef>

namespace vorm::platform {
namespace {

class EmbeddedNames final : public ArrayClassNamingService {
public:
    const char* className(std::int32_t classId) const override {
        constexpr std::int32_t logicalId = 3;
        constexpr std::int32_t firstNumericId = 6;
        constexpr auto numericNames =
            std::to_array({"double", "single", "int8", "uint8", "int16", "uint16", "int32",
                           "uint32", "int64", "uint64"});
        if (classId == logicalId) {
            return "logical";
        }
        if (classId < firstNumericId) {
            return nullptr;
        }
        const auto index = static_cast<std::size_t>(classId - firstNumericId);
        return index < numericNames.size() ? numericNames[index] : nullptr;
    }
};

InstalledService<ArrayClassNamingService>& installedNaming() {
    return InstalledService<ArrayClassNamingService>::instance<EmbeddedNames>();
}

}  // namespace

ArrayClassNamingService::~ArrayClassNamingService() = default;

std::shared_ptr<const ArrayClassNamingService> ArrayClassNamingService::global() {
    return installedNaming().get();
}

void ArrayClassNamingService::install(std::shared_ptr<const ArrayClassNamingService> service) {
    installedNaming().install(std::move(service));
}

}  // namespace vorm::platform

#include "user_exception.hpp"

#include <vorm/assessments/platform/utf.hpp>

namespace vorm::platform {

UserException::UserException(std::u16string_view message) : message_(toUtf8(message)) {}

const char* UserException::what() const noexcept {
    return message_.c_str();
}

}  // namespace vorm::platform

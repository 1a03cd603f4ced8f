#pragma once

#include <vorm/assessments/export.hpp>

#include <exception>
#include <string>
#include <string_view>

namespace vorm::platform {

/// Base of every exception whose message a user is meant to read.
class VORM_ASSESSMENTS_EXPORT UserException : public std::exception {
public:
    explicit UserException(std::u16string_view message);

    /// The message in UTF-8.
    const char* what() const noexcept override;

private:
    std::string message_;
};

}  // namespace vorm::platform

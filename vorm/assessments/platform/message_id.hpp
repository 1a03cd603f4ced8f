#pragma once

#include <vorm/assessments/export.hpp>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vorm::platform {

/// Names a message of a catalog and carries what stands in it.
struct VORM_ASSESSMENTS_EXPORT MessageId {
    using Argument = std::variant<std::int64_t, std::string, std::u16string>;

    MessageId(std::string componentName, std::string keyName, std::vector<Argument> values = {})
        : component(std::move(componentName)),
          key(std::move(keyName)),
          arguments(std::move(values)) {}

    std::string component;
    std::string key;
    std::vector<Argument> arguments;
};

}  // namespace vorm::platform

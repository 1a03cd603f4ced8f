#include "held_name.hpp"

namespace vorm::evaluation {
namespace {

constexpr std::string_view opening = "held(";

}  // namespace

std::string heldName(std::string_view signal) {
    return std::string(opening).append(signal).append(1, ')');
}

std::optional<std::string> signalOfHeldName(std::string_view name) {
    const bool isHeld =
        name.size() > opening.size() + 1 && name.starts_with(opening) && name.ends_with(')');
    return isHeld ? std::optional<std::string>(
                        name.substr(opening.size(), name.size() - opening.size() - 1))
                  : std::nullopt;
}

std::string recordedName(std::string_view name) {
    return signalOfHeldName(name).value_or(std::string(name));
}

}  // namespace vorm::evaluation

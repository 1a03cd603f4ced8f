#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The name by which formulas mean the samples of a signal, held, also where the signal is a line:
/// `held(speed)`.
std::string heldName(std::string_view signal);

/// The signal whose samples such a name means; nothing for other names.
std::optional<std::string> signalOfHeldName(std::string_view name);

/// The same, or the name itself where it means a signal as it is.
std::string recordedName(std::string_view name);

}  // namespace vorm::evaluation

#pragma once

#include <exception>
#include <string>

namespace vorm::evaluation {

/// The message of a failed evaluation and of its causes, one line each, the outermost formula
/// first.
std::string failureText(const std::exception_ptr& failure);

}  // namespace vorm::evaluation

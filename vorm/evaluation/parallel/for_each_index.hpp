#pragma once

#include <cstddef>
#include <functional>

namespace vorm::evaluation {

/// Calls visit(0) ... visit(count - 1), each once, from up to `jobs` threads, of which the caller's
/// is one; with one job they are called in order. Where a call throws, those that have not begun
/// are left out and the exception of the lowest index that threw is thrown again when all others
/// have ended.
void forEachIndex(std::size_t count, unsigned jobs, const std::function<void(std::size_t)>& visit);

}  // namespace vorm::evaluation

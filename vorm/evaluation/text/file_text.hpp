#pragma once

#include <string>
#include <string_view>

namespace vorm::evaluation {

/// The whole content of a file; `-` is standard input. Throws InputError, with the operating
/// system's reason, for what cannot be read.
std::string readFile(const std::string& path);

/// Writes a file whole or not at all: under another name in the same folder first, which ends in
/// `.part` and stays where the program is killed, and which then takes the place of the old file,
/// if there is one, and its rights. A link stays, what it points at is replaced. A path that is no
/// plain file, such as /dev/stdout, is written directly. Throws InputError, with the operating
/// system's reason, where that fails; the old file is as it was then.
void writeFile(const std::string& path, std::string_view content);

}  // namespace vorm::evaluation

// Any bytes as a stored file. The first byte chooses what is declared and how much is read at a
// time, the rest is the file; what cannot be read is refused with InputError and nothing else.

#include <vorm/evaluation/source/text_encoding.hpp>
#include <vorm/evaluation/text/input_error.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

using namespace vorm::evaluation;

// A few compressed bytes can be a text of gigabytes.
constexpr std::size_t most = std::size_t{4} << 20;

// Nothing where the file is refused.
std::optional<std::string> textOf(const std::string& file, std::optional<DeclaredEncoding> declared,
                                  std::size_t blockSize) {
    try {
        const DecodedSource source = openBytes(textSource(file), "fuzz", declared);
        std::string text;
        std::string block(blockSize, '\0');
        std::size_t count = 0;
        do {
            count = source.bytes->read(block.data(), std::min(block.size(), most - text.size()));
            text.append(block, 0, count);
        } while (count > 0 && text.size() < most);
        if (count == 0 && source.bytes->taken() != file.size()) {
            std::abort();
        }
        return text;
    } catch (const InputError&) {
        return std::nullopt;
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string file(reinterpret_cast<const char*>(data) + 1, size - 1);
    const auto choice = static_cast<std::uint8_t>(data[0] % 4);
    const auto declared =
        choice == 0 ? std::nullopt : std::optional(static_cast<DeclaredEncoding>(choice - 1));
    const std::size_t blockSize = 1 + data[0] / 4;
    if (textOf(file, declared, 10'000) != textOf(file, declared, blockSize)) {
        std::abort();
    }
    return 0;
}

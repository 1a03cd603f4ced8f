#include "fingerprint.hpp"

namespace vorm::evaluation {

void Fingerprint::addByte(unsigned char byte) {
    hash_ = (hash_ ^ byte) * 0x100000001b3;
}

Fingerprint& Fingerprint::add(std::string_view text) {
    // So that no two lists of texts are the same bytes.
    for (std::uint64_t length = text.size(), i = 0; i < sizeof length; ++i, length >>= 8) {
        addByte(static_cast<unsigned char>(length & 0xff));
    }
    for (const char c : text) {
        addByte(static_cast<unsigned char>(c));
    }
    return *this;
}

std::string Fingerprint::text() const {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4) {
        text += digits[(hash_ >> shift) & 0xf];
    }
    return text;
}

}  // namespace vorm::evaluation

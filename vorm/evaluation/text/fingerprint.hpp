#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vorm::evaluation {

/// Tells lists of texts apart: that two which differ have one fingerprint is no more likely than
/// chance, though somebody could make two that have (Fowler, Noll and Vo's FNV-1a of 64 bits).
class Fingerprint {
public:
    /// One text more. Linear in its length.
    Fingerprint& add(std::string_view text);

    /// Sixteen hexadecimal digits.
    std::string text() const;

private:
    void addByte(unsigned char byte);

    std::uint64_t hash_ = 0xcbf29ce484222325;
};

}  // namespace vorm::evaluation

#include "toml_text.hpp"

namespace vorm::evaluation::detail {

std::string tomlText(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7f) {
            result += std::string("\\u00") + digits[byte / 16] + digits[byte % 16];
        } else {
            result += c == '"' || c == '\\' ? std::string{'\\', c} : std::string{c};
        }
    }
    return result + '"';
}

std::string tomlKey(const std::string& name) {
    constexpr std::string_view bare =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";
    const bool isBare = !name.empty() && name.find_first_not_of(bare) == std::string::npos;
    return isBare ? name : tomlText(name);
}

std::string tomlList(const std::vector<std::string>& texts) {
    if (texts.size() == 1) {
        return tomlText(texts.front());
    }
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "" : ", ") + tomlText(text);
    }
    return "[" + list + "]";
}

}  // namespace vorm::evaluation::detail

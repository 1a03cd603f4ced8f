#include "html_text.hpp"

#include <vorm/assessments/platform/utf.hpp>

#include <nlohmann/json.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

std::string writableText(std::string_view text) {
    std::u16string characters = platform::toUtf16(text);
    std::replace_if(
        characters.begin(), characters.end(),
        [](char16_t c) {
            return (c < 0x20 && c != u'\n' && c != u'\t') || (c >= 0x7f && c < 0xa0) || c >= 0xfffe;
        },
        u'\xfffd');
    return platform::toUtf8(characters);
}

std::string_view referenceOf(char c) {
    switch (c) {
        case '&':
            return "&amp;";
        case '<':
            return "&lt;";
        case '>':
            return "&gt;";
        case '"':
            return "&quot;";
        case '\'':
            return "&#39;";
        default:
            return {};
    }
}

}  // namespace

std::string htmlText(std::string_view text) {
    std::string written;
    for (const char c : writableText(text)) {
        const std::string_view reference = referenceOf(c);
        reference.empty() ? written += c : written += reference;
    }
    return written;
}

std::string jsonText(std::string_view text) {
    std::string written;
    for (const char c : nlohmann::json(writableText(text)).dump()) {
        c == '<' ? written += "\\u003c" : written += c;
    }
    return written;
}

}  // namespace vorm::evaluation

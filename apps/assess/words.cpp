#include "words.hpp"

namespace assess {

std::string joined(const std::vector<std::string>& words, std::string_view separator) {
    std::string text;
    for (const std::string& word : words) {
        text.append(&word == &words.front() ? "" : separator).append(word);
    }
    return text;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> words{""};
    for (const char c : text) {
        if (c == separator) {
            words.emplace_back();
        } else {
            words.back() += c;
        }
    }
    return words;
}

}  // namespace assess

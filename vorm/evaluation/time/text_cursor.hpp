#pragma once

// For what reads the texts of times piece by piece. What a cursor cannot take it leaves.

#include <vorm/evaluation/text/characters.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace vorm::evaluation {

class TextCursor {
public:
    explicit TextCursor(std::string_view text) : rest_(text) {}

    bool isAtEnd() const { return rest_.empty(); }
    bool isAt(char c) const { return !rest_.empty() && rest_.front() == c; }
    bool isAtDigit() const { return !rest_.empty() && isDigit(rest_.front()); }

    bool take(char c) {
        const bool found = isAt(c);
        rest_.remove_prefix(found ? 1 : 0);
        return found;
    }

    bool takeBlanks() {
        const std::size_t before = rest_.size();
        while (take(' ') || take('\t')) {
        }
        return rest_.size() != before;
    }

    /// A number of that many digits, at most 18; more digits than `most` are left.
    std::optional<std::int64_t> takeNumber(std::size_t least, std::size_t most) {
        std::int64_t number = 0;
        std::size_t count = 0;
        for (; count < most && count < rest_.size() && isDigit(rest_[count]); ++count) {
            number = number * 10 + (rest_[count] - '0');
        }
        if (count < least) {
            return std::nullopt;
        }
        rest_.remove_prefix(count);
        return number;
    }

    /// All letters up to the next other character; of ASCII.
    std::string_view takeLetters() {
        std::size_t count = 0;
        while (count < rest_.size() && isLetter(rest_[count])) {
            ++count;
        }
        const std::string_view letters = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return letters;
    }

    /// The word in small letters, whatever the case in the text; no longer word that begins so.
    bool takeWord(std::string_view word) {
        TextCursor behind = *this;
        if (!equalsInAnyCase(behind.takeLetters(), word)) {
            return false;
        }
        *this = behind;
        return true;
    }

    /// How many characters are left.
    std::size_t size() const { return rest_.size(); }

    static bool equalsInAnyCase(std::string_view text, std::string_view small) {
        if (text.size() != small.size()) {
            return false;
        }
        for (std::size_t i = 0; i < text.size(); ++i) {
            if ((text[i] | caseBit) != small[i]) {
                return false;
            }
        }
        return true;
    }

private:
    static constexpr char caseBit = 'a' ^ 'A';

    std::string_view rest_;
};

}  // namespace vorm::evaluation

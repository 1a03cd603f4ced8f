#include "input_error.hpp"

#include <vorm/evaluation/text/characters.hpp>

#include <algorithm>
#include <string_view>
#include <utility>

namespace vorm::evaluation {
namespace {

std::string placeText(const SourceLocation& where) {
    std::string text = where.file;
    for (const std::size_t number : {where.line, where.column}) {
        if (number != 0) {
            text += (text.empty() ? "" : ":") + std::to_string(number);
        }
    }
    return text.empty() ? text : text + ": ";
}

// The part of a long line that is shown before and after the mark, in characters.
constexpr std::size_t shownAround = 60;

// The bytes of the characters [begin, end).
std::string_view characterRange(std::string_view text, std::size_t begin, std::size_t end) {
    std::size_t first = text.size();
    std::size_t last = text.size();
    std::size_t character = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isStart = charactersIn(text.substr(i, 1)) == 1;
        if (isStart && character == begin) {
            first = i;
        }
        if (isStart && character == end) {
            last = i;
            break;
        }
        character += isStart ? 1 : 0;
    }
    return text.substr(first, last - first);
}

std::string markedExcerpt(const InputProblem& problem) {
    const std::size_t length = charactersIn(problem.excerpt);
    const std::size_t begin = problem.caret - std::min(problem.caret, shownAround);
    const std::size_t end = std::min(length, problem.caret + shownAround);
    const std::string before = begin > 0 ? "..." : "";
    std::string text = "\n    " + before +
                       withoutControls(characterRange(problem.excerpt, begin, end)) +
                       (end < length ? "..." : "");
    if (problem.caretWidth > 0) {
        const std::size_t shown = end - std::min(end, problem.caret);
        text += "\n    " + std::string(before.size() + problem.caret - begin, ' ') +
                std::string(std::max<std::size_t>(1, std::min(problem.caretWidth, shown)), '^');
    }
    return text;
}

std::string messageOf(const InputProblem& problem) {
    std::string text = placeText(problem.where) + problem.message;
    if (!problem.excerpt.empty()) {
        text += markedExcerpt(problem);
    }
    if (!problem.advice.empty()) {
        text += "\n  " + problem.advice;
    }
    return text;
}

}  // namespace

InputError::InputError(InputProblem problem)
    : std::runtime_error(messageOf(problem)), problem_(std::move(problem)) {}

InputError InputError::placed(const SourceLocation& where) const {
    InputProblem problem = problem_;
    if (problem.where.file.empty()) {
        problem.where = where;
    }
    return InputError(std::move(problem));
}

void failAt(SourceLocation where, std::string message, std::string advice) {
    InputProblem problem;
    problem.message = std::move(message);
    problem.where = std::move(where);
    problem.advice = std::move(advice);
    throw InputError(std::move(problem));
}

}  // namespace vorm::evaluation

#include "input_error.hpp"

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

std::string markedExcerpt(const InputProblem& problem) {
    std::string text = "\n    " + problem.excerpt;
    if (problem.caretWidth > 0) {
        text += "\n    " + std::string(problem.caret, ' ') + std::string(problem.caretWidth, '^');
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

}  // namespace vorm::evaluation

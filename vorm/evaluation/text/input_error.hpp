#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vorm::evaluation {

/// A place in a text that a user wrote.
struct SourceLocation {
    std::string file;        ///< empty where the text is no file
    std::size_t line = 0;    ///< from 1; 0 where no line is meant
    std::size_t column = 0;  ///< in characters from 1; 0 where no column is meant
};

/// What is wrong with an input, where, and what to do about it.
struct InputProblem {
    std::string message;  ///< one clause without a full stop: `unknown signal 'sped'`
    SourceLocation where;
    std::string excerpt;         ///< the line in question, or empty
    std::size_t caret = 0;       ///< first marked character of the excerpt, from 0
    std::size_t caretWidth = 0;  ///< 0 where nothing is marked
    std::string advice;          ///< `did you mean 'speed'?`, or empty
};

/// Input that cannot be used. what() is the whole message, over several lines where there is an
/// excerpt, of which at most 60 characters on either side of the mark are shown:
///
///     limits.toml:12:15: unknown signal 'sped'
///         always[0, 5 s](sped < 20)
///                        ^^^^
///       did you mean 'speed'?
class InputError : public std::runtime_error {
public:
    explicit InputError(InputProblem problem);

    const InputProblem& problem() const { return problem_; }
    /// The error at that place, if it names none.
    InputError placed(const SourceLocation& where) const;

private:
    InputProblem problem_;
};

/// Throws an InputError without an excerpt.
[[noreturn]] void failAt(SourceLocation where, std::string message, std::string advice = {});

}  // namespace vorm::evaluation

#include "failure_text.hpp"

#include <vorm/assessments/errors/assessment_exception.hpp>

namespace vorm::evaluation {

std::string failureText(const std::exception_ptr& failure) {
    try {
        std::rethrow_exception(failure);
    } catch (const assessments::AssessmentException& error) {
        std::string text = error.what();
        for (auto cause = error.getCause(); cause != nullptr; cause = cause->getCause()) {
            text += std::string("\n  ") + cause->what();
        }
        return text;
    } catch (const std::exception& error) {
        return error.what();
    }
}

}  // namespace vorm::evaluation

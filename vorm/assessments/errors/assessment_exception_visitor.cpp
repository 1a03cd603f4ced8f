#include "assessment_exception_visitor.hpp"

namespace vorm::assessments {

AssessmentExceptionVisitor::~AssessmentExceptionVisitor() = default;

}  // namespace vorm::assessments

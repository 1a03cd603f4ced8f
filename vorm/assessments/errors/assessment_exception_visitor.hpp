#pragma once

#include <vorm/assessments/export.hpp>

namespace vorm::assessments {

class AssessmentException;
class AssessmentInternalException;
class AssessmentTypeException;
class AssessmentBinaryTypeException;
class AssessmentEvaluationException;

/// Tells the classes of failures apart; see AssessmentException::accept.
class VORM_ASSESSMENTS_EXPORT AssessmentExceptionVisitor {
public:
    virtual ~AssessmentExceptionVisitor();

    virtual void visit(const AssessmentException& failure) = 0;
    virtual void visit(const AssessmentInternalException& failure) = 0;
    virtual void visit(const AssessmentTypeException& failure) = 0;
    virtual void visit(const AssessmentBinaryTypeException& failure) = 0;
    virtual void visit(const AssessmentEvaluationException& failure) = 0;
};

}  // namespace vorm::assessments

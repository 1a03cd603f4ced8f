#pragma once

#include <vorm/assessments/expression/expression.hpp>

#include <boost/variant/static_visitor.hpp>

#include <string>

namespace vorm::assessments {

/// Whether an argument can stand in the text of an alias for a formula: numbers and texts always
/// can, a formula can if it occurs in that one, aliases taken as their bodies. Costs at most the
/// product of the two formulas' sizes.
class VORM_ASSESSMENTS_EXPORT isValidAliasArgumentForExpression {
public:
    class isArgValid;
    class isASubExpression;

    bool operator()(const Expression& expr, const AliasArgument& arg) const;
};

/// The answer for one formula, for each kind of argument. The formula must outlive the visitor.
class VORM_ASSESSMENTS_EXPORT isValidAliasArgumentForExpression::isArgValid
    : public boost::static_visitor<bool> {
public:
    explicit isArgValid(const Expression& expr) : expression_(expr) {}

    bool operator()(bool) const { return true; }
    bool operator()(int) const { return true; }
    bool operator()(double) const { return true; }
    bool operator()(const char*) const { return true; }
    bool operator()(const std::string&) const { return true; }
    bool operator()(const Expression& argument) const;

private:
    const Expression& expression_;
};

/// Whether a candidate occurs in a formula or in what is below a node of any kind, the root
/// included. The candidate must outlive the visitor.
class VORM_ASSESSMENTS_EXPORT isValidAliasArgumentForExpression::isASubExpression
    : public boost::static_visitor<bool> {
public:
    explicit isASubExpression(const Expression& candidate) : candidate_(candidate) {}

    bool operator()(const Expression& expr) const;

private:
    const Expression& candidate_;
};

}  // namespace vorm::assessments

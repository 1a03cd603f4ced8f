#pragma once

#include <vorm/assessments/expression/expression_containers.hpp>

#include <boost/variant/static_visitor.hpp>

#include <string>

namespace vorm::assessments {

/// The texts of a formula and of all its sub-formulas, as to_string gives them.
///
/// Of an alias the formulas among its arguments count as its sub-formulas, since they make its
/// text; its body does not. Each text that is asked for, with the sub-formulas' texts, enters the
/// label tree. Cost: the length of all these texts and the size of all these formulas.
class VORM_ASSESSMENTS_EXPORT ExpressionLabelTreeVisitor
    : public boost::static_visitor<std::string> {
public:
    using LabelTree = ExpressionMap<std::string, Inclusive>;

    /// The label tree of a formula and whatever this visitor visited before; the visitor starts
    /// over.
    LabelTree getTree(const Expression& expression);

    /// The text of a formula, or of a node of any kind.
    std::string operator()(const Expression& expression);

    /// The text of an argument of an alias.
    std::string operator()(bool argument) const;
    std::string operator()(int argument) const;
    std::string operator()(double argument) const;
    std::string operator()(const char* argument) const;
    std::string operator()(const std::string& argument) const;

    /// `label[d]`
    static std::string printTimed(const std::string& label, double d);
    /// `label[a,b]`
    static std::string printInterval(const std::string& label, double a, double b);

private:
    LabelTree labels_;
};

}  // namespace vorm::assessments

#pragma once

#include <vorm/assessments/expression/binary_op.hpp>
#include <vorm/assessments/expression/cast_op.hpp>
#include <vorm/assessments/expression/inner_node.hpp>
#include <vorm/assessments/expression/unary_op.hpp>

#include <boost/variant/variant.hpp>

#include <string>
#include <utility>
#include <vector>

namespace vorm::assessments {

/// One piece of an alias's text. A const char* is not copied and has to outlive the formula; a
/// null one counts as empty text.
using AliasArgument = boost::variant<bool, int, double, const char*, std::string, Expression>;

/// A composite that has the value of its body and is printed as the sequence of its arguments.
struct VORM_ASSESSMENTS_EXPORT alias : detail::InnerNode {
    Expression body;
    std::vector<AliasArgument> arguments;

    /// Each further parameter becomes one argument, in the order given. Throws
    /// AssessmentInternalException where the tree becomes too deep.
    template <class... Arguments>
    explicit alias(const Expression& value, Arguments&&... texts)
        : alias(Expression(value), listOf(std::forward<Arguments>(texts)...), Listed()) {}
    template <class... Arguments>
    explicit alias(Expression&& value, Arguments&&... texts)
        : alias(std::move(value), listOf(std::forward<Arguments>(texts)...), Listed()) {}

    alias(const alias& other);
    alias(alias&& other);
    alias& operator=(const alias& other);
    alias& operator=(alias&& other) = default;
    ~alias();

    alias(const alias& other, detail::WithoutChildren);

private:
    struct Listed {};

    alias(Expression&& value, std::vector<AliasArgument>&& list, Listed);

    template <class... Arguments>
    static std::vector<AliasArgument> listOf(Arguments&&... texts) {
        std::vector<AliasArgument> list;
        list.reserve(sizeof...(texts));
        (list.emplace_back(std::forward<Arguments>(texts)), ...);
        return list;
    }
};

}  // namespace vorm::assessments

#include "alias.hpp"

#include <vorm/assessments/expression/tree_ownership.hpp>

#include <algorithm>

namespace vorm::assessments {
namespace {

std::size_t levelsOf(const Expression& body, const std::vector<AliasArgument>& arguments) {
    std::size_t levels = detail::levelsOf(body);
    for (const AliasArgument& argument : arguments) {
        if (const auto* tree = boost::get<Expression>(&argument)) {
            levels = std::max(levels, detail::levelsOf(*tree));
        }
    }
    return levels;
}

}  // namespace

alias::alias(Expression&& value, std::vector<AliasArgument>&& list, Listed)
    : InnerNode(levelsOf(value, list)), body(detail::taken(value)), arguments(std::move(list)) {}

// Arguments are not copied as variants, since that would recurse from argument to argument.
alias::alias(const alias& other) : alias(other, detail::WithoutChildren()) {
    body = detail::copyOf(other.body);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (const auto* tree = boost::get<Expression>(&other.arguments[i])) {
            arguments[i] = detail::copyOf(*tree);
        }
    }
}

alias::alias(alias&& other)
    : InnerNode(other), body(detail::taken(other.body)), arguments(std::move(other.arguments)) {}

alias::alias(const alias& other, detail::WithoutChildren) : InnerNode(other) {
    arguments.reserve(other.arguments.size());
    for (const AliasArgument& argument : other.arguments) {
        const bool isTree = boost::get<Expression>(&argument) != nullptr;
        arguments.push_back(isTree ? AliasArgument(Expression()) : argument);
    }
}

alias& alias::operator=(const alias& other) {
    return *this = alias(other);
}

alias::~alias() {
    detail::dismantle(body);
    for (AliasArgument& argument : arguments) {
        if (auto* tree = boost::get<Expression>(&argument)) {
            detail::dismantle(*tree);
        }
    }
}

}  // namespace vorm::assessments

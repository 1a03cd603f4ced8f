#pragma once

#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/expression_hash.hpp>
#include <vorm/assessments/facade/timed_trace.hpp>

#include <unordered_map>
#include <unordered_set>

namespace vorm::assessments {

template <class Value, class Policy>
using ExpressionMap =
    std::unordered_map<Expression, Value, ExpressionHash<Policy>, ExpressionEqual<Policy>>;

template <class Policy>
using ExpressionSet =
    std::unordered_set<Expression, ExpressionHash<Policy>, ExpressionEqual<Policy>>;

/// The traces of formulas; an alias and its body share one.
using ExpressionTraces = ExpressionMap<TimedTrace, ModuloAliases>;

}  // namespace vorm::assessments

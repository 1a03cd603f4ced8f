#pragma once

/// The whole public interface of the library.

#include <vorm/assessments/errors/assessment_exception.hpp>
#include <vorm/assessments/errors/evaluation_exception.hpp>
#include <vorm/assessments/errors/type_exceptions.hpp>
#include <vorm/assessments/expression/child_list_visitor.hpp>
#include <vorm/assessments/expression/expression.hpp>
#include <vorm/assessments/expression/expression_containers.hpp>
#include <vorm/assessments/expression/expression_equal.hpp>
#include <vorm/assessments/expression/expression_factory.hpp>
#include <vorm/assessments/expression/expression_first_start_time_visitor.hpp>
#include <vorm/assessments/expression/expression_hash.hpp>
#include <vorm/assessments/expression/expression_influence_cone_visitor.hpp>
#include <vorm/assessments/expression/expression_is_scalar_constant.hpp>
#include <vorm/assessments/expression/expression_label_tree_visitor.hpp>
#include <vorm/assessments/expression/expression_last_known_time_visitor.hpp>
#include <vorm/assessments/expression/expression_node_set_visitor.hpp>
#include <vorm/assessments/expression/is_valid_alias_argument_for_expression.hpp>
#include <vorm/assessments/expression/policies.hpp>
#include <vorm/assessments/facade/timed_trace.hpp>
#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/operators/config_last_window.hpp>
#include <vorm/assessments/platform/array_class_naming_service.hpp>
#include <vorm/assessments/platform/message_catalog.hpp>
#include <vorm/assessments/trace/interval.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

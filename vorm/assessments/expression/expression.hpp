#pragma once

#include <vorm/assessments/expression/expression_type.hpp>
#include <vorm/assessments/expression/inner_nodes.hpp>
#include <vorm/assessments/expression/vorm_op.hpp>

#include <boost/variant/apply_visitor.hpp>
#include <boost/variant/get.hpp>

#include <iosfwd>
#include <string>

namespace vorm::assessments {

/// The formula in one line: `((x + 1) > Shift[2](y))`. Signals appear under their names, literals
/// and operators under their labels, an alias as its arguments one after the other; numbers have
/// six digits and no locale. Linear in the text.
VORM_ASSESSMENTS_EXPORT std::string to_string(const Expression& expression);

/// Writes the text of to_string.
VORM_ASSESSMENTS_EXPORT std::ostream& operator<<(std::ostream& out, const Expression& expression);

}  // namespace vorm::assessments

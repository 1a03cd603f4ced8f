// The strict comparison of two traces, compiled once for every caller.

#include <vorm/assessments/operators/combine.hpp>
#include <vorm/assessments/operators/comparison.hpp>

namespace vorm::assessments {

#define VORM_VALUE_TYPE(T)                                                             \
    template TimedTrace_T<bool> TimedTrace_T<T>::combine<bool>(const TimedTrace_T<T>&, \
                                                               ValueGreater) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments

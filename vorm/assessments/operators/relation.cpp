#include "relation.hpp"

#include <vorm/assessments/operators/combine.hpp>

namespace vorm::assessments::detail {

template <class T>
TimedTrace_T<bool> compare(const TimedTrace_T<T>& left, const TimedTrace_T<T>& right,
                           const Relation& relation) {
    left.throwExceptionIfEnum(right, true);
    return left.template combine<bool>(right, relation);
}

#define VORM_VALUE_TYPE(T)                                                              \
    template TimedTrace_T<bool> compare(const TimedTrace_T<T>&, const TimedTrace_T<T>&, \
                                        const Relation&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments::detail

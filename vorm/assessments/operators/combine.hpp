#pragma once

// The one operator that takes any caller's function object, and therefore the one whose definition
// callers see.

#include <vorm/assessments/operators/combination.hpp>
#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/operators/constant_combination.hpp>
#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments {

template <class T>
template <class R, class F>
TimedTrace_T<R> TimedTrace_T<T>::combine(const TimedTrace_T& other, F f) const {
    using WithConstant = detail::ConstantCombination<T, R, F>;
    return WithConstant::takes(*this, other) ? WithConstant(*this, other, f).run()
                                             : detail::Combination<T, R, F>(*this, other, f).run();
}

#define VORM_VALUE_TYPE(T)                                                                    \
    extern template TimedTrace_T<bool> TimedTrace_T<T>::combine<bool>(const TimedTrace_T<T>&, \
                                                                      ValueGreater) const;
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments

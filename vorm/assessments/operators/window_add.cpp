// The step that keeps the candidates of a window.

#include <vorm/assessments/operators/comparison.hpp>
#include <vorm/assessments/operators/window_bounds.hpp>
#include <vorm/assessments/trace/trace_builder.hpp>

namespace vorm::assessments {

template <class T>
template <class Comparison>
void TimedTrace_T<T>::windowAdd(Comparison comparison, const Point& point) {
    detail::requireHeld(*this);
    if (!(point.time > lastKnownTime)) {
        support::throwTimeValueMustIncrease();
    }
    if (points.empty()) {
        push_back(point);
        return;
    }
    Point added{point.time, point.value};
    while (!points.empty() && comparison(added.value, points.back().value)) {
        added.time = points.back().time;
        points.pop_back();
    }
    points.push_back(added);
    lastKnownTime = point.time;
}

#define VORM_VALUE_TYPE(T)                                                          \
    template void TimedTrace_T<T>::windowAdd(ValueGreaterEq, const TimedPoint<T>&); \
    template void TimedTrace_T<T>::windowAdd(ValueLessEq, const TimedPoint<T>&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments

// A window buffer is kept by one of the two orders that the library knows.
#include <vorm/assessments.hpp>

#include <functional>

#ifdef MISUSE
using Order = std::greater_equal<>;
#else
using Order = vorm::assessments::ValueGreaterEq;
#endif

int main() {
    using vorm::assessments::INTERPOLATION_METHOD;
    vorm::assessments::TimedTrace_T<double> buffer(INTERPOLATION_METHOD::ZOH, 0);
    buffer.windowAdd(Order(), {1, 2});
    return buffer.points.empty();
}

// A function object for combine takes the two values.
#include <vorm/assessments.hpp>

int main() {
    using vorm::assessments::TimedTrace_T;
    const TimedTrace_T<double> one(1);
#ifdef MISUSE
    return one.combine<bool>(one, [](double a) { return a > 0; }).points.empty();
#else
    return one.combine<bool>(one, [](double a, double b) { return a > b; }).points.empty();
#endif
}

// Both operands have one value type; nothing is promoted.
#include <vorm/assessments.hpp>

int main() {
    using vorm::assessments::TimedTrace_T;
    const TimedTrace_T<double> one(1);
#ifdef MISUSE
    const TimedTrace_T<float> other(1);
#else
    const TimedTrace_T<double> other(1);
#endif
    return one.combine<bool>(other, [](auto a, auto b) { return a < b; }).points.empty();
}

// A number becomes a constant trace only where this is said.
#include <vorm/assessments.hpp>

int main() {
    using vorm::assessments::TimedTrace_T;
#ifdef MISUSE
    const TimedTrace_T<double> one = 1.0;
#else
    const TimedTrace_T<double> one(1.0);
#endif
    return one.points.empty();
}

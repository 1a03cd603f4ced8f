// Traces exist for the library's value types and for no other.
#include <vorm/assessments.hpp>

#include <string>

#ifdef MISUSE
using Value = std::string;
#else
using Value = double;
#endif

int main() {
    using vorm::assessments::INTERPOLATION_METHOD;
    const vorm::assessments::TimedTrace_T<Value> trace(INTERPOLATION_METHOD::ZOH, 0);
    return trace.points.empty() ? 0 : 1;
}

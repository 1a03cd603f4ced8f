// A choice between value types does not take one that it has never heard of for another.
#include <vorm/assessments.hpp>

int main() {
#ifdef MISUSE
    using Value = long double;
#else
    using Value = double;
#endif
    return vorm::assessments::IsFloatingPoint<Value>::value ? 0 : 1;
}

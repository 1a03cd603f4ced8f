#include <vorm/assessments.hpp>

int main() {
    return vorm::assessments::TimedTrace_T<bool>(true).points.size() == 1 ? 0 : 1;
}

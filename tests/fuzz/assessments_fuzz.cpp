// Any bytes as an assessment file: it is read, or refused with an InputError.

#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace vorm::evaluation;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        const AssessmentFile file = parseAssessmentFile(text, "fuzzed.toml");
        const FormulaNames names = namesWithoutData(file);
        for (const Assessment& assessment : file.assessments) {
            try {
                typedFormula(file, assessment, names);
            } catch (const InputError&) {
                continue;
            }
        }
    } catch (const InputError&) {
        return 0;
    }
    return 0;
}

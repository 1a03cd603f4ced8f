// Random formulas on random recordings, from text to verdict, against the oracle in exact numbers.
// VORM_EXACT_FORMULAS is the number of formulas.

#include "agreement.hpp"
#include "random_case.hpp"
#include "support/tries.hpp"

namespace vorm::evaluation::test {
namespace {

TEST(ExactFormulas, AreJudgedAsByTheOracle) {
    const int formulas = vorm::test::triesOf("VORM_EXACT_FORMULAS", 3000);
    int compared = 0;
    int delicate = 0;
    vorm::test::checkTimes(formulas / formulasPerRecording, [&] {
        const RandomCase random = anyCase();
        const std::vector<Reported> reported = assessed(random.texts());
        for (std::size_t i = 0; i < reported.size(); ++i) {
            const RandomRequirement& requirement = random.requirements[i];
            const World world = worldOf(random.recording);
            const Judgement expected = judged(requirement, world);
            const Judgement actual = random.inTicks(reported[i].judgement);
            ++compared;
            if (isRight(reported[i], actual, expected)) {
                continue;
            }
            if (isDelicate(requirement, world, expected)) {
                ++delicate;
                continue;
            }
            RC_LOG() << random.shown(requirement) << "  is        "
                     << (reported[i].error.empty() ? shown(actual) : reported[i].error)
                     << "\n  should be " << shown(expected) << '\n';
            RC_FAIL("not what the oracle says");
        }
    });
    EXPECT_LE(delicate * 50, compared) << "too much is excused";
}

}  // namespace
}  // namespace vorm::evaluation::test

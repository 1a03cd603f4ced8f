#include "agreement.hpp"

#include <algorithm>
#include <vector>

namespace vorm::evaluation::test {
namespace {

bool isNear(const Rational& a, const Rational& b) {
    return abs(a - b) <= powerOfTen(-9);
}

// The tick where a time is a moment beside it; else the time.
Rational withoutMoments(const Rational& time) {
    const Rational nearest = nearestWhole(time);
    return abs(time - nearest) < powerOfTen(-20) ? nearest : time;
}

// Times on ticks are exact, others as near as floating-point numbers can tell.
bool agrees(const Rational& actual, const Rational& expected) {
    const Rational exact = withoutMoments(expected);
    return isWhole(exact) ? actual == exact : isNear(actual, exact);
}

template <class Agree>
bool agree(const std::vector<Span>& actual, const std::vector<Span>& expected, const Agree& same) {
    return std::equal(
        actual.begin(), actual.end(), expected.begin(), expected.end(),
        [&](const Span& a, const Span& b) { return same(a.start, b.start) && same(a.end, b.end); });
}

bool isOnTicks(const std::vector<Span>& spans) {
    return std::all_of(spans.begin(), spans.end(), [](const Span& span) {
        return isWhole(withoutMoments(span.start)) && isWhole(withoutMoments(span.end));
    });
}

// A length is as exact as all the ends that it is summed up from.
bool lengthsAgree(const Judgement& actual, const Judgement& expected) {
    const bool isExact = isOnTicks(expected.failures) && isOnTicks(expected.openSpans);
    const auto same = [=](const Rational& a, const Rational& b) {
        return isExact ? a == withoutMoments(b) : isNear(a, b);
    };
    return same(actual.passed, expected.passed) && same(actual.failed, expected.failed) &&
           same(actual.open, expected.open);
}

}  // namespace

bool isRight(const Reported& reported, const Judgement& actual, const Judgement& expected) {
    return reported.error.empty() && actual.verdict == expected.verdict &&
           actual.from == expected.from && actual.to == expected.to &&
           agree(actual.failures, expected.failures, agrees) &&
           agree(actual.openSpans, expected.openSpans, agrees) && lengthsAgree(actual, expected);
}

bool isDelicate(const RandomRequirement& requirement, const World& exact,
                const Judgement& expected) {
    if (!exact.isDelicate) {
        return false;
    }
    World world = exact;
    constexpr std::uint64_t worlds = 14;
    for (std::uint64_t i = 1; i < worlds; ++i) {
        world.inaccuracy = i / 2;
        world.isStepwise = i % 2 == 1;
        const Judgement judgement = judged(requirement, world);
        if (judgement.verdict != expected.verdict ||
            !agree(judgement.failures, expected.failures, isNear) ||
            !agree(judgement.openSpans, expected.openSpans, isNear)) {
            return true;
        }
    }
    return false;
}

}  // namespace vorm::evaluation::test

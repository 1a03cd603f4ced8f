// The oracle on cases that are worked out by hand.

#include "random_case.hpp"

#include <gtest/gtest.h>

#include <sstream>

namespace vorm::evaluation::test {
namespace {

char letterOf(Truth truth) {
    return truth == True ? 'T' : truth == False ? 'F' : '?';
}

Truth truthOf(char letter) {
    return letter == 'T' ? True : letter == 'F' ? False : Open;
}

/// `? 0=T T 3=F F`: open before 0, true from 0 on, false from 3 on.
TruthCourse course(const std::string& text) {
    std::istringstream in(text);
    std::string word;
    TruthCourse result;
    in >> word;
    result.between = {truthOf(word[0])};
    while (in >> word) {
        const std::size_t sign = word.find('=');
        result.events.push_back(rationalOf(word.substr(0, sign)));
        result.at.push_back(truthOf(word[sign + 1]));
        in >> word;
        result.between.push_back(truthOf(word[0]));
    }
    return result;
}

// Moments are shown as the time that they follow, with a `+`.
std::string textOf(const TruthCourse& given) {
    const TruthCourse truth =
        tabulated(given.events, [&](const Rational& time) { return given.valueAt(time); });
    std::string text(1, letterOf(truth.between[0]));
    for (std::size_t i = 0; i < truth.events.size(); ++i) {
        const Rational before = truth.events[i] - moment;
        const bool isMoment = isWhole(before);
        text += ' ' + shown(isMoment ? before : truth.events[i]) + (isMoment ? "+=" : "=") +
                letterOf(truth.at[i]) + ' ' + letterOf(truth.between[i + 1]);
    }
    return text;
}

/// `0:1 2:nan 4:3`.
Quantity samples(const std::string& text, bool isLinear, std::optional<Rational> maxGap = {}) {
    std::istringstream in(text);
    std::string word;
    Samples result{{}, isLinear, std::move(maxGap)};
    while (in >> word) {
        const std::size_t colon = word.find(':');
        const std::string value = word.substr(colon + 1);
        result.samples.push_back({rationalOf(word.substr(0, colon)),
                                  value == "nan" ? std::nullopt : std::optional(std::stoi(value))});
    }
    return result.quantity();
}

Quantity held(const std::string& text, std::optional<Rational> maxGap = {}) {
    return samples(text, false, std::move(maxGap));
}

Quantity line(const std::string& text, std::optional<Rational> maxGap = {}) {
    return samples(text, true, std::move(maxGap));
}

std::string textOf(const Quantity& x, Relation relation, const Rational& limit) {
    return textOf(comparison(x, relation, constantQuantity(limit)));
}

TEST(Oracle, ComparesWhatIsKnown) {
    using enum Relation;
    EXPECT_EQ(textOf(held("0:1 3:0 5:0"), Equal, 1), "? 0=T T 3=F F 5=F ?");
    EXPECT_EQ(textOf(held("0:1 3:0 7:0", 3), Equal, 1), "? 0=T T 3=F ? 7=F ?") << "a hole";
    EXPECT_EQ(textOf(held("0:1 2:nan 4:1"), Equal, 1), "? 0=T T 2=F F 4=T ?");
    EXPECT_EQ(textOf(held("0:1 2:nan 4:1"), Unequal, 1), "? 0=F F 2=T T 4=F ?");
    EXPECT_EQ(textOf(line("0:0 4:2"), Greater, 1), "? 0=F F 2=F T 4=T ?");
    EXPECT_EQ(textOf(line("0:0 4:2"), GreaterEqual, 1), "? 0=F F 2=T T 4=T ?");
    EXPECT_EQ(textOf(line("0:0 3:1"), Equal, Rational(1, 2)), "? 0=F F 1.5=T F 3=F ?");
    EXPECT_EQ(textOf(line("0:0 2:nan 4:0"), Equal, 0), "? 0=T F 4=T ?");
    EXPECT_EQ(textOf(line("0:0 2:nan 9:0", 3), Equal, 0), "? 0=T F 2=F ? 9=T ?");
    EXPECT_EQ(textOf(held("1:0"), Equal, 0), "? 1=T ?") << "one sample";
}

TEST(Oracle, ReckonsWithQuantities) {
    using enum Relation;
    EXPECT_EQ(textOf(absolute(line("0:-2 4:2")), LessEqual, 1), "? 0=F F 1=T T 3=T F 4=F ?");
    EXPECT_EQ(textOf(absolute(line("0:-2 4:2")), Equal, 0), "? 0=F F 2=T F 4=F ?");
    EXPECT_EQ(textOf(shifted(held("0:1 3:0 5:0"), 2), Equal, 1), "? -2=T T 1=F F 3=F ?");
    EXPECT_EQ(textOf(sum(line("0:0 4:4"), held("1:2 3:0 5:0")), GreaterEqual, 4),
              "? 1=F F 2=T T 3=F F 4=T ?");
    EXPECT_EQ(textOf(sum(line("0:0 2:2"), scaled(-1, line("0:0 2:2"))), Equal, 0), "? 0=T T 2=T ?");
    EXPECT_EQ(textOf(comparison(line("0:0 3:3"), Less, line("0:2 3:0"))),
              textOf(tabulated({0, Rational(6, 5), 3}, [](const Rational& t) {
                  return t < 0 || t > 3 ? Open : t < Rational(6, 5) ? True : False;
              })));
}

TEST(Oracle, LooksIntoWindows) {
    const TruthCourse p = course("? 0=T T 3=F F 5=F ?");
    EXPECT_EQ(textOf(always(0, 2, p)), "? 0=T T 1=F F 5=F ?");
    EXPECT_EQ(textOf(eventually(0, 2, p)), "? -2=T T 3=F ?");
    EXPECT_EQ(textOf(always(-2, 0, p)), "? 2=T T 3=F F 7=F ?");
    EXPECT_EQ(textOf(eventually(1, 3, course("? 5=F F 7=T ?"))), "? 4=T T 6=T ?");
    EXPECT_EQ(textOf(eventually(1, 1, p)), textOf(shifted(p, 1)));
    EXPECT_EQ(textOf(always(0, 1, course("F 2=T F"))), "F");
    EXPECT_EQ(textOf(eventually(0, 1, course("F 2=F T 3=F F"))), "F 1=F T 3=F F");
}

TEST(Oracle, WaitsUntil) {
    const TruthCourse p = course("T 4=F F");
    EXPECT_EQ(textOf(until(p, 0, 2, course("F 3=T F"))), "F 1=T T 3=T F");
    EXPECT_EQ(textOf(until(p, 2, 4, course("F 3=T F"))), "F -1=T T 1=T F");
    EXPECT_EQ(textOf(until(p, 0, 2, course("F 4=T F"))), "F 2=T T 4=F F");
    EXPECT_EQ(textOf(until(p, 1, 2, course("F 4=T F"))), "F 2=T T 3=F F");
    EXPECT_EQ(textOf(until(p, 0, 2, course("F 4=F T 6=F F"))), "F") << "p ends a little too early";
    const TruthCourse early = course("T 4=T F");
    const TruthCourse late = course("F 4=F T 6=F F");
    EXPECT_EQ(textOf(until(early, 0, 2, late)), "F");
    EXPECT_EQ(textOf(until(early, 0, 2, late, Handover::UpToTheTime)), "F 2=F T 4=T F");
    EXPECT_EQ(textOf(until(course("T 2=T ?"), 0, 4, course("F 3=T F"))), "F -1=? ? 3=? F");
    EXPECT_EQ(textOf(until(course("T 5=F F"), 0, 2, course("F 3=? ?"))), "F 1=? ? 5=F F");
}

TEST(Oracle, RemembersSince) {
    const TruthCourse p = course("F 2=T T 6=F F");
    EXPECT_EQ(textOf(since(p, 0, 2, course("F 3=T F"))), "F 3=T T 5=T F");
    EXPECT_EQ(textOf(since(p, 1, 2, course("F 3=T F"))), "F 4=T T 5=T F");
    EXPECT_EQ(textOf(since(p, 0, 9, course("F 0=T T 2=F F"))), "F 2=T T 6=F F") << "handed over";
    EXPECT_EQ(textOf(since(p, 0, 9, course("F 0=T T 2=F F"), Handover::UpToTheGoal)), "F");
    EXPECT_EQ(textOf(since(p, 0, 9, course("F 0=T T 1=F F"))), "F");
    EXPECT_EQ(textOf(since(p, 0, 1, course("F 0=T T 2=F F"))), "F 2=T T 3=F F");
    EXPECT_EQ(textOf(since(course("T 4=? T"), 0, 9, course("F 3=T F"))), "F 3=T T 4=? ? 12=? F");
}

TEST(Oracle, TellsWhenTruthChanges) {
    const auto rises = [](const std::string& text) {
        return textOf(rise(course(text), firstKnown(course(text))));
    };
    EXPECT_EQ(rises("? 0=T T 3=F F 5=T ?"), "? 0=F F 5=T ?");
    EXPECT_EQ(rises("F 1=F ? 2=T T 4=F F"), "F 1=F ? 2=? F") << "after a hole";
    EXPECT_EQ(rises("F 1=T ? 2=F F"), "F 1=T ? 2=F F");
    EXPECT_EQ(rises("F 2=F T 4=F F"), "F 2=F T 2+=T F") << "only right after";
    EXPECT_EQ(rises("? 2=? T 4=F F"), "? 2=? F") << "first known right after";
    EXPECT_EQ(rises("T"), "F");
}

TEST(Oracle, JudgesARange) {
    const TruthCourse p = course("? 0=T T 3=F F 5=F ?");
    EXPECT_EQ(shown(judged(p, -1, 7)),
              "FAIL from -1 to 7, failing [3, 5], open [-1, 0] [5, 7], passed 3, failed 2, open 3");
    EXPECT_EQ(shown(judged(p, 0, 2)),
              "PASS from 0 to 2, failing, open, passed 2, failed 0, open 0");
    EXPECT_EQ(shown(judged(p, 0, 3)),
              "FAIL from 0 to 3, failing [3, 3], open, passed 3, failed 0, open 0");
    EXPECT_EQ(shown(judged(p, 6, 7)),
              "NO_RESULT from 6 to 7, failing, open [6, 7], passed 0, failed 0, open 1");
    EXPECT_EQ(shown(judged(course("F 2=T F 4=F F 5=? F"), 1, 6)),
              "FAIL from 1 to 6, failing [1, 2] [2, 5] [5, 6], open [5, 5], passed 0, failed 5, "
              "open 0");
}

}  // namespace
}  // namespace vorm::evaluation::test

#include "support/expressions.hpp"
#include "support/traces.hpp"

#include <vorm/assessments.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/enumeration_literal.hpp>

#include <map>
#include <memory>
#include <mutex>

namespace vorm::test {
namespace {

using evaluation::evaluate;
using evaluation::EvaluationResult;
using evaluation::knownPieces;
using evaluation::SharedPieces;
using evaluation::TracePieces;
using evaluation::Truth;

constexpr auto boolean = evaluation::Meaning::Boolean;
constexpr auto least = evaluation::Meaning::LeastRobustness;

class EvaluatorTest : public testing::Test {
protected:
    template <class... Pieces>
    Expression add(const std::string& name, Pieces... pieces) {
        const Expression leaf = signal(static_cast<std::uint8_t>(signals_.size() + 1), name);
        signals_[boost::get<variable>(leaf).id] =
            std::make_shared<const TracePieces>(TracePieces{TimedTrace(std::move(pieces))...});
        return leaf;
    }

    evaluation::SignalLookup lookup() {
        return [this](const variable& leaf) {
            const std::lock_guard lock(mutex_);
            ++lookups_;
            return signals_.at(leaf.id);
        };
    }

    EvaluationResult evaluated(const Expression& formula, evaluation::Meaning meaning = boolean) {
        return evaluate({{&formula, meaning}}, lookup())[0];
    }

    // Of truth the pieces in which it is known.
    TracePieces pieces(const Expression& formula, evaluation::Meaning meaning = boolean) {
        const EvaluationResult result = evaluated(formula, meaning);
        if (result.failure) {
            std::rethrow_exception(result.failure);
        }
        return result.truth ? knownPieces(*result.truth) : *result.pieces;
    }

    TimedTrace only(const Expression& formula, evaluation::Meaning meaning = boolean) {
        const TracePieces all = pieces(formula, meaning);
        EXPECT_EQ(all.size(), 1U) << formula;
        return all.front();
    }

    // The texts of a failure's chain, the outermost first.
    static std::vector<std::string> chain(const EvaluationResult& result) {
        std::vector<std::string> texts;
        try {
            std::rethrow_exception(result.failure);
        } catch (const AssessmentException& failure) {
            for (const AssessmentException* link = &failure; link != nullptr;
                 link = link->getCause().get()) {
                const auto* named = dynamic_cast<const AssessmentEvaluationException*>(link);
                texts.push_back(named != nullptr ? to_string(named->getExpression())
                                                 : link->what());
            }
        }
        return texts;
    }

    static bool mentions(const EvaluationResult& result, const std::string& text) {
        return result.failure && chain(result).back().find(text) != std::string::npos;
    }

    ExpressionFactory factory_;
    std::map<boost::uuids::uuid, SharedPieces> signals_;
    std::mutex mutex_;
    std::size_t lookups_ = 0;
};

double after(double time) {
    return std::nextafter(time, infinity);
}
double before(double time) {
    return std::nextafter(time, -infinity);
}

TimedTrace_T<bool> truth(const std::vector<std::pair<double, bool>>& steps, double known) {
    TimedTrace_T<bool> result(held, -infinity);
    for (const auto& [time, value] : steps) {
        result.push_back({time, value});
    }
    result.lastKnownTime = known;
    return result;
}

// A line that rises through 1 at time 1, and one sample that is not a number.
TEST_F(EvaluatorTest, ComparesExactlyAtTheCrossingAndFalselyWithNan) {
    const Expression rising = add("line", trace(linear, "0:0 2:2", 2));
    const Expression noNumber = add("nan", trace("0:nan 1:1", 2));
    const Expression one = factory_.Constant(1.0);
    struct Row {
        Expression formula;
        TimedTrace_T<bool> expected;
    };
    const std::vector<Row> rows{
        {factory_.Gt(rising, one), truth({{0, false}, {after(1), true}}, 2)},
        {factory_.Geq(rising, one), truth({{0, false}, {1, true}}, 2)},
        {factory_.Lt(rising, one), truth({{0, true}, {1, false}}, 2)},
        {factory_.Leq(rising, one), truth({{0, true}, {after(1), false}}, 2)},
        {factory_.Eq(rising, one), truth({{0, false}, {1, true}, {after(1), false}}, 2)},
        {factory_.Neq(rising, one), truth({{0, true}, {1, false}, {after(1), true}}, 2)},
        {factory_.Gt(noNumber, one), truth({{0, false}}, 2)},
        {factory_.Geq(noNumber, one), truth({{0, false}, {1, true}}, 2)},
        {factory_.Lt(noNumber, one), truth({{0, false}}, 2)},
        {factory_.Leq(noNumber, one), truth({{0, false}, {1, true}}, 2)},
        {factory_.Eq(noNumber, one), truth({{0, false}, {1, true}}, 2)},
        {factory_.Neq(noNumber, one), truth({{0, true}, {1, false}}, 2)},
    };
    for (const Row& row : rows) {
        EXPECT_TRUE(same(only(row.formula).get<bool>(), row.expected)) << row.formula;
    }
}

TEST_F(EvaluatorTest, EnumerationsCompareWithinTheirOwn) {
    auto mode = trace<std::int32_t>("0:0 1:2", 3);
    mode.enumTypeName = "Mode";
    const Expression signal = add("mode", mode);
    const auto member = [](const std::string& enumeration, std::int32_t value) -> Expression {
        return constantValue(evaluation::enumerationTag(enumeration), "m", value, enumeration);
    };
    const Expression drive = member("Mode", 2);
    EXPECT_TRUE(
        same(only(factory_.Eq(signal, drive)).get<bool>(), truth({{0, false}, {1, true}}, 3)));
    const auto certainty = only(factory_.Neq(signal, drive), least).get<double>();
    EXPECT_TRUE(same(certainty.extractWindow(0, 3, 0), trace("0:inf 1:-inf", 3)));
    EXPECT_TRUE(mentions(evaluated(factory_.Eq(signal, member("Gear", 2))), "'Mode' and 'Gear'"));
    EXPECT_TRUE(mentions(evaluated(factory_.Lt(signal, drive)), "'Mode'"));
    EXPECT_TRUE(mentions(evaluated(cast_op(signal, cast_op::castFlag<double>())), "'Mode'"));
}

template <class T>
Expression cast(const Expression& x) {
    return cast_op(x, cast_op::castFlag<T>());
}

TEST_F(EvaluatorTest, CastsRoundAndSaturate) {
    const Expression x = add("x", trace("0:2.5 1:-2.5 2:1e300 3:-inf 4:0.4", 4));
    const Expression wide = add("wide", [] {
        TimedTrace_T<std::int64_t> values(held, -infinity);
        values.push_back({0, std::numeric_limits<std::int64_t>::max()});
        values.push_back({1, -1});
        return values;
    }());
    const Expression flag = add("flag", truth({{0, true}, {1, false}}, 2));
    EXPECT_TRUE(same(only(cast<std::int8_t>(x)).get<std::int8_t>(),
                     trace<std::int8_t>("0:3 1:-3 2:127 3:-128 4:0")));
    EXPECT_TRUE(same(only(cast<std::uint16_t>(x)).get<std::uint16_t>(),
                     trace<std::uint16_t>("0:3 1:0 2:65535 3:0", 4)));
    EXPECT_EQ(only(cast<std::int64_t>(x)).get<std::int64_t>().valueAt(2),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_TRUE(same(only(cast<bool>(x)).get<bool>(), truth({{0, true}}, 4)));
    EXPECT_EQ(only(cast<std::uint64_t>(wide)).get<std::uint64_t>().valueAt(0),
              9'223'372'036'854'775'807U);
    EXPECT_TRUE(same(only(cast<std::uint32_t>(wide)).get<std::uint32_t>(),
                     trace<std::uint32_t>("0:4294967295 1:0")));
    EXPECT_TRUE(same(only(cast<float>(flag)).get<float>(), trace<float>("0:1 1:0", 2)));
    EXPECT_TRUE(same(only(cast<Verdict>(flag)).get<Verdict>(), trace<Verdict>("0:0 1:1", 2)));
    EXPECT_TRUE(same(only(cast<ValueType<FixedPoint>>(flag)).get<ValueType<FixedPoint>>(),
                     trace<ValueType<FixedPoint>>("0:1 1:0", 2)));
}

TEST_F(EvaluatorTest, CastsOfLinesStayLinesOrAreRefused) {
    const Expression line = add("line", trace(linear, "0:-1 2:1", 3));
    const Expression noNumber = add("nan", trace("0:1 1.5:nan", 3));
    EXPECT_TRUE(same(only(cast<float>(line)).get<float>(), trace<float>(linear, "0:-1 2:1", 3)));
    EXPECT_TRUE(same(only(cast<bool>(line)).get<bool>(),
                     truth({{0, true}, {1, false}, {after(1), true}}, 3)));
    EXPECT_TRUE(mentions(evaluated(cast<std::int32_t>(line)), "linearly interpolated"));
    EXPECT_TRUE(mentions(evaluated(cast<std::int32_t>(noNumber)), "NaN at 1.5 s"));
    EXPECT_TRUE(mentions(evaluated(cast<Verdict>(line)), "double"));
}

TEST_F(EvaluatorTest, StepsOfHeldOperandsStaySteps) {
    const Expression line = add("line", trace(linear, "0:0 4:4"));
    const Expression steps = add("steps", trace("0:10 2:20", 4));
    const TimedTrace_T<double> sum = only(factory_.Plus(line, steps)).get<double>();
    for (const auto& [time, value] : std::map<double, double>{
             {0, 10}, {1.5, 11.5}, {before(2), 12}, {2, 22}, {3, 23}, {4, 24}}) {
        EXPECT_NEAR(sum.valueAt(time).value(), value, 1e-12) << time;
    }
}

TEST_F(EvaluatorTest, BooleansAreCertainAlsoBesideLines) {
    const Expression line = add("line", trace(linear, "0:-1 4:3"));
    const Expression p = add("p", truth({{0, false}, {2, true}}, 4));
    const Expression above = factory_.Gt(line, factory_.Constant(0.0));
    struct Row {
        Expression formula;
        std::map<double, double> expected;
    };
    const std::vector<Row> rows{
        {p, {{0, -infinity}, {1, -infinity}, {2, infinity}, {4, infinity}}},
        {factory_.And(p, above), {{0, -infinity}, {1.5, -infinity}, {2, 1}, {3, 2}}},
        {factory_.Or(p, above), {{0, -1}, {1.5, 0.5}, {2, infinity}, {3.5, infinity}}},
        {factory_.Not(factory_.Or(p, above)), {{0.5, 0.5}, {3, -infinity}}},
        {factory_.And(above, factory_.Constant(true)), {{0, -1}, {3, 2}}},
        {factory_.Or(above, factory_.Constant(false)), {{0, -1}, {3, 2}}},
        {factory_.Eventually(0, 1, factory_.And(p, above)), {{0.5, -infinity}, {1, 1}, {3, 3}}},
        {factory_.Globally(0, 1, factory_.Or(p, above)), {{0, -1}, {1.5, 0.5}, {2, infinity}}},
    };
    for (const Row& row : rows) {
        const TimedTrace result = only(row.formula, least);
        for (const auto& [time, value] : row.expected) {
            EXPECT_EQ(result.get<double>().valueAt(time), value) << row.formula << " at " << time;
        }
    }
}

// Nanoseconds from the begin of a recording, where its times lie in one binade.
double tick(int ticks) {
    return 0x1p34 + ticks * 70'000.0;
}

// Where a line has a whole number, a sum has one, also where it ends: in front of a hole.
TEST_F(EvaluatorTest, SumsReadLinesExactly) {
    for (int length = 2; length <= 12; ++length) {
        for (int i = 1; i < length; ++i) {
            for (int rise = 1; rise <= 12; ++rise) {
                signals_.clear();
                const auto trace = [](INTERPOLATION_METHOD method,
                                      const std::map<int, double>& samples) {
                    TimedTrace_T<double> result(method, -infinity);
                    for (const auto& [time, value] : samples) {
                        result.push_back({tick(time), value});
                    }
                    return result;
                };
                const Expression line = add("line", trace(linear, {{0, 2}, {length, 2.0 + rise}}));
                const Expression limits = add("limits", trace(held, {{0, 3}, {i, 0}}),
                                              trace(held, {{i + 1, 1}, {i + 2, 2}}));
                const TracePieces sums = pieces(factory_.Plus(limits, line));
                ASSERT_FALSE(sums.empty());
                if (rise * i % length == 0) {
                    EXPECT_EQ(sums[0].get<double>().valueAt(tick(i)), 2 + rise * i / length)
                        << rise << " in " << length << ", at " << i;
                }
            }
        }
    }
}

// Two lines meet within the seconds given, and mostly between their samples. Their gap, its
// magnitude and a comparison of the two see that at one time.
TEST_F(EvaluatorTest, MagnitudesAreZeroWhereLinesMeet) {
    const Expression zero = factory_.Constant(0.0);
    for (int length = 1; length <= 12; ++length) {
        for (int from = 1; from <= 4; ++from) {
            for (int to = 1; to <= 4; ++to) {
                signals_.clear();
                const auto line = [&](int first, int last) {
                    TimedTrace_T<double> result(linear, -infinity);
                    result.push_back({tick(0), static_cast<double>(first)});
                    result.push_back({tick(length), static_cast<double>(last)});
                    return result;
                };
                const Expression falling = add("falling", line(from, 0));
                const Expression rising = add("rising", line(0, to));
                const Expression gap = factory_.Minus(falling, rising);
                const Expression closed = factory_.Eq(factory_.Abs(gap), zero);
                const double meeting = tick(0) + (tick(length) - tick(0)) * from / (from + to);
                EXPECT_TRUE(same(only(closed).get<bool>(),
                                 truth({{tick(0), false}, {meeting, true}, {after(meeting), false}},
                                       tick(length))))
                    << length << ": " << from << ", " << to;
                const Expression meets = factory_.Eq(falling, rising);
                EXPECT_TRUE(same(only(meets).get<bool>(), only(closed).get<bool>()));
            }
        }
    }
}

// A magnitude that bends at a rounded time is off by as much before it, also where an instant is
// all that is known of the other operand.
TEST_F(EvaluatorTest, MagnitudesEqualWhatIsKnownAtAnInstant) {
    for (int length = 2; length <= 12; ++length) {
        for (int i = 1; 11 * i < 8 * length; ++i) {
            signals_.clear();
            TimedTrace_T<double> falling(linear, -infinity);
            falling.push_back({tick(0), 8});
            falling.push_back({tick(length), -3});
            TimedTrace_T<double> instant(held, -infinity);
            instant.push_back({tick(i), 0});
            const Expression line = add("line", falling);
            const Expression zero = add("zero", instant);
            const Expression equal = factory_.Leq(factory_.Abs(line), factory_.Plus(line, zero));
            EXPECT_EQ(only(equal).get<bool>().valueAt(tick(i)), true) << i << " of " << length;
        }
    }
}

using Spans = std::vector<std::pair<double, double>>;

Spans spansOf(const TracePieces& pieces) {
    Spans spans;
    for (const TimedTrace& piece : pieces) {
        spans.emplace_back(piece.getStartTime(), piece.getLastKnownTime());
    }
    return spans;
}

TEST_F(EvaluatorTest, NumbersAreKnownWhereAllTheyAreMadeOfIs) {
    const Expression x = add("x", trace("0:1", 10), trace("20:1 25:0", 30), trace("40:1", 41));
    const auto spans = [this](const Expression& formula) { return spansOf(pieces(formula)); };
    EXPECT_EQ(spans(factory_.Globally(0, 2, x)), (Spans{{0, 8}, {20, 28}}));
    EXPECT_EQ(spans(factory_.Eventually(-2, 0, x)), (Spans{{2, 10}, {22, 30}}));
    EXPECT_EQ(spans(factory_.Eventually(1, 2, x)), (Spans{{-1, 8}, {19, 28}, {39, 39}}));
    EXPECT_EQ(spans(factory_.Shift(-5, x)), (Spans{{5, 15}, {25, 35}, {45, 46}}));
    EXPECT_EQ(spans(factory_.Shift(5, x)), (Spans{{-5, 5}, {15, 25}, {35, 36}}));
    EXPECT_EQ(spans(factory_.EpsilonShift(-1, x)),
              (Spans{{0, before(10)}, {20, before(30)}, {40, before(41)}}));
}

// All times in one binade, where shifts of one representable time are exact.
TEST_F(EvaluatorTest, TruthIsKnownWhereWhatIsKnownDecidesIt) {
    const Expression p =
        add("p", truth({{300, true}, {308, false}}, 310), truth({{320, true}}, 330));
    const Expression q = add("q", truth({{300, false}, {322, true}}, 400));
    struct Row {
        const char* what;
        Expression formula;
        std::vector<TimedTrace_T<bool>> known;
    };
    const std::vector<Row> rows{
        {"signal", p, {truth({{300, true}, {308, false}}, 310), truth({{320, true}}, 330)}},
        {"and", factory_.And(p, q), {truth({{300, false}, {322, true}}, 330)}},
        {"or",
         factory_.Or(p, q),
         {truth({{300, true}, {308, false}}, 310), truth({{320, true}}, 400)}},
        {"always fails before the end",
         factory_.Globally(0, 2, p),
         {truth({{300, true}, {306, false}}, 310), truth({{320, true}}, 328)}},
        {"eventually holds before the begin",
         factory_.Eventually(1, 3, p),
         {truth({{297, true}, {307, false}}, 307), truth({{317, true}}, 329)}},
        {"a window of the past",
         factory_.Globally(-2, 0, p),
         {truth({{302, true}, {308, false}}, 312), truth({{322, true}}, 330)}},
        {"shift",
         factory_.Shift(5, p),
         {truth({{295, true}, {303, false}}, 305), truth({{315, true}}, 325)}},
        {"until broken, not reached, or reached",
         factory_.Until(p, 0, 5, q),
         {truth({{300, false}}, before(317)), truth({{320, true}}, 330)}},
        {"just before",
         factory_.EpsilonShift(1, p),
         {truth({{300, true}, {after(308), false}}, 310), truth({{after(320), true}}, 330)}},
        {"just after",
         factory_.EpsilonShift(-1, p),
         {truth({{300, true}, {before(308), false}}, before(310)),
          truth({{320, true}}, before(330))}},
        {"rise",
         factory_.And(p, factory_.EpsilonShift(1, factory_.Not(p))),
         {truth({{300, false}}, 310), truth({{after(320), false}}, 330)}},
    };
    for (const Row& row : rows) {
        const TracePieces known = pieces(row.formula);
        ASSERT_EQ(known.size(), row.known.size()) << row.what;
        for (std::size_t i = 0; i < known.size(); ++i) {
            EXPECT_TRUE(same(known[i].get<bool>(), row.known[i])) << row.what;
        }
    }
}

// Brake at 8, lamp off at 9, end at 10: with 3 s to come the lamp has failed for certain.
TEST_F(EvaluatorTest, AViolationInTheLastWindowIsOne) {
    const Expression brake = add("brake", truth({{0, false}, {8, true}}, 10));
    const Expression lamp = add("lamp", truth({{0, true}, {9, false}}, 10));
    const Expression pressed = factory_.And(brake, factory_.EpsilonShift(1, factory_.Not(brake)));
    const auto responds = [&](const Expression& response) {
        return pieces(factory_.Implies(pressed, response));
    };
    EXPECT_TRUE(same(responds(factory_.Globally(0, 3, lamp)).front().get<bool>(),
                     truth({{0, true}, {8, false}, {after(8), true}}, 10)));
    EXPECT_TRUE(same(responds(factory_.Eventually(0, 3, lamp)).front().get<bool>(),
                     truth({{-3, true}}, 10)));
    const TracePieces open = responds(factory_.Globally(0, 3, brake));
    EXPECT_EQ(spansOf(open), (Spans{{0, before(8)}, {after(8), 10}})) << "else it holds";
}

TEST_F(EvaluatorTest, WithoutSamplesTruthIsOpenAndNumbersAreNowhere) {
    const Expression none = add("none");
    const Expression p = add("p", truth({{0, false}}, 5));
    EXPECT_TRUE(same(*evaluated(none).truth, Truth(0)));
    EXPECT_TRUE(evaluated(none).pieces->empty());
    EXPECT_TRUE(same(*evaluated(factory_.Gt(none, factory_.Constant(1.0))).truth, Truth(0)));
    EXPECT_TRUE(same(only(factory_.And(none, p)).get<bool>(), truth({{0, false}}, 5)));
}

// Whether the condition holds after its end is not known, so that no goal after it counts.
TEST_F(EvaluatorTest, UntilIsOpenWhereItsConditionDecidesAndIsNot) {
    const Expression p = add("p", truth({{0, true}}, 10));
    const Expression q = add("q", truth({{0, false}, {12, true}}, 20));
    const TracePieces known = pieces(factory_.Until(p, 0, 3, q));
    ASSERT_EQ(known.size(), 1U);
    EXPECT_TRUE(same(known[0].get<bool>(), truth({{0, false}}, before(9))));
}

TEST_F(EvaluatorTest, SignalsAreSharedAndConstantsStayConstant) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    EXPECT_EQ(evaluated(x).pieces, signals_.begin()->second);
    EXPECT_EQ(evaluated(x, least).pieces, signals_.begin()->second);
    const Expression sum = factory_.Plus(factory_.Constant(1.0), factory_.Constant(2.0));
    EXPECT_TRUE(same(only(factory_.Globally(0, 5, sum)).get<double>(), TimedTrace_T<double>(3.0)));
}

TEST_F(EvaluatorTest, EachSubFormulaIsEvaluatedOnceForEachMeaning) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    const auto high = [&](const Expression& signal, double limit) {
        return factory_.Gt(signal, factory_.Constant(limit));
    };
    const Expression renamed = variable("renamed", boost::get<variable>(x).id);
    const Expression first = factory_.Implies(high(x, 0.0), high(x, 1));
    const Expression second = factory_.Or(factory_.Not(high(renamed, -0.0)), high(x, 1));
    // x, 0, 1, x > 0, x > 1, the negation and the disjunction, these two and both comparisons
    // twice.
    std::vector<std::size_t> done;
    const evaluation::EvaluationOptions options{1, [&](std::size_t count, std::size_t total) {
                                                    done.push_back(count);
                                                    EXPECT_EQ(total, 11U);
                                                }};
    const auto results =
        evaluate({{&first, boolean}, {&second, boolean}, {&second, least}}, lookup(), options);
    EXPECT_EQ(lookups_, 1U);
    EXPECT_EQ(done.size(), 11U);
    EXPECT_EQ(done.back(), 11U);
    EXPECT_EQ(results[0].truth, results[1].truth);
    EXPECT_FALSE(results[2].truth);
}

TEST_F(EvaluatorTest, ResultsAreFreedAfterTheirLastUser) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    const std::weak_ptr<const TracePieces> watched = signals_.begin()->second;
    Expression formula = factory_.Gt(x, factory_.Constant(0.0));
    for (int level = 0; level < 10; ++level) {
        formula = factory_.Not(std::move(formula));
    }
    std::vector<bool> alive;
    const evaluation::SignalLookup handOver = [this](const variable& leaf) {
        return std::exchange(signals_.at(leaf.id), nullptr);
    };
    evaluate({{&formula, boolean}}, handOver,
             {1, [&](std::size_t, std::size_t) { alive.push_back(!watched.expired()); }});
    const auto count = static_cast<std::size_t>(std::count(alive.begin(), alive.end(), true));
    EXPECT_EQ(alive.size(), 13U);
    EXPECT_EQ(count, 2U);
}

TEST_F(EvaluatorTest, DeepAndWideFormulasCostNoMoreThanTheirSize) {
    const Expression x = add("x", trace("0:1 1:0", 3));
    const Expression high = factory_.Gt(x, factory_.Constant(0.5));
    Expression deep = high;
    for (int level = 0; level < 50'000; ++level) {
        deep = factory_.Not(std::move(deep));
    }
    EXPECT_TRUE(same(only(deep).get<bool>(), truth({{0, true}, {1, false}}, 3)));
    // A tree of two million nodes that says twenty things.
    Expression wide = high;
    for (int level = 0; level < 18; ++level) {
        wide = factory_.And(wide, wide);
    }
    std::size_t total = 0;
    evaluate({{&wide, boolean}}, lookup(),
             {1, [&](std::size_t, std::size_t count) { total = count; }});
    EXPECT_EQ(total, 21U);
}

TEST_F(EvaluatorTest, FailuresNameTheWayToTheFault) {
    const Expression x = add("x", trace("0:1", 3));
    const Expression p = add("p", truth({{0, true}}, 3));
    const Expression clash = factory_.Plus(x, p);
    const Expression shown = factory_.Implies(p, factory_.Gt(clash, factory_.Constant(1.0)));
    const Expression sound = factory_.Not(p);
    for (const unsigned jobs : {1U, 4U}) {
        const auto results =
            evaluate({{&shown, boolean}, {&sound, boolean}, {&clash, boolean}, {&shown, least}},
                     lookup(), {jobs, {}});
        const std::vector<std::string> names = chain(results[0]);
        ASSERT_EQ(names.size(), 4U);
        EXPECT_EQ(names[0], to_string(shown));
        EXPECT_EQ(names[1], to_string(factory_.Gt(clash, factory_.Constant(1.0))));
        EXPECT_EQ(names[2], to_string(clash));
        EXPECT_NE(names[3].find("'double' and 'logical'"), std::string::npos) << names[3];
        EXPECT_FALSE(results[1].failure);
        EXPECT_EQ(chain(results[2]).size(), 2U);
        EXPECT_EQ(chain(results[3]), names);
    }
}

TEST_F(EvaluatorTest, FailuresOfDeepFormulasKeepTheirEnds) {
    const Expression p = add("p", truth({{0, true}}, 3));
    Expression deep = factory_.Abs(factory_.UnaryMinus(p));
    const std::string inner = to_string(boost::get<unary_op>(deep).child);
    for (int level = 0; level < 5'000; ++level) {
        deep = factory_.Not(std::move(deep));
    }
    const std::vector<std::string> names = chain(evaluated(deep));
    EXPECT_EQ(names.size(), 102U);
    EXPECT_EQ(names.front(), to_string(deep));
    EXPECT_EQ(names[100], inner);
}

TEST_F(EvaluatorTest, RefusesWhatHasNoMeaning) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    const Expression line = add("line", trace(linear, "0:1 1:2", 3));
    const Expression unknown = signal(99, "unknown");
    EXPECT_TRUE(mentions(evaluated(nilClass()), "no formula"));
    EXPECT_TRUE(mentions(evaluated(factory_.Multiply(x, line)), "multiplication by constant"));
    EXPECT_TRUE(mentions(evaluated(unary_op(VORM_OP::And, x, "odd")), "'odd'"));
    EXPECT_TRUE(mentions(evaluated(factory_.Slope(x)), "Slope"));
    EXPECT_TRUE(mentions(evaluated(factory_.Not(x)), "'double'"));
    EXPECT_TRUE(mentions(evaluated(factory_.Until(x, 0, 1, x)), "'double'"));
    EXPECT_EQ(chain(evaluated(factory_.Not(unknown)))[1], "unknown99");
}

}  // namespace
}  // namespace vorm::test

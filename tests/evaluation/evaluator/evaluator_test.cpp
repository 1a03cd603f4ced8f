#include "support/expressions.hpp"
#include "support/traces.hpp"

#include <vorm/assessments.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/enumeration_literal.hpp>

#include <map>
#include <memory>
#include <mutex>
#include <new>

namespace vorm::test {
namespace {

using evaluation::evaluate;
using evaluation::EvaluationResult;
using evaluation::knownPieces;
using evaluation::SharedPieces;
using evaluation::TracePieces;
using evaluation::Truth;

constexpr auto boolean = evaluation::Meaning::Boolean;
constexpr auto leastRobustness = evaluation::Meaning::LeastRobustness;

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

TimedTrace_T<bool> truth(const std::vector<std::pair<double, bool>>& steps, double known) {
    TimedTrace_T<bool> result(held, -infinity);
    for (const auto& [time, value] : steps) {
        result.push_back({time, value});
    }
    result.lastKnownTime = known;
    return result;
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
    const auto certainty = only(factory_.Neq(signal, drive), leastRobustness).get<double>();
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
        const TimedTrace result = only(row.formula, leastRobustness);
        for (const auto& [time, value] : row.expected) {
            EXPECT_EQ(result.get<double>().valueAt(time), value) << row.formula << " at " << time;
        }
    }
}

// Nanoseconds from the begin of a recording, where its times lie in one binade.
double tick(int ticks) {
    return 0x1p34 + ticks * 70'000.0;
}

TimedTrace_T<double> ticking(INTERPOLATION_METHOD method, const std::map<int, double>& samples) {
    TimedTrace_T<double> result(method, -infinity);
    for (const auto& [time, value] : samples) {
        result.push_back({tick(time), value});
    }
    return result;
}

// Where a line has a whole number, a sum has one, also where it ends: in front of a hole.
TEST_F(EvaluatorTest, SumsReadLinesExactly) {
    for (int length = 2; length <= 12; ++length) {
        for (int i = 1; i < length; ++i) {
            for (int rise = 1; rise <= 12; ++rise) {
                signals_.clear();
                const Expression line =
                    add("line", ticking(linear, {{0, 2}, {length, 2.0 + rise}}));
                const Expression limits = add("limits", ticking(held, {{0, 3}, {i, 0}}),
                                              ticking(held, {{i + 1, 1}, {i + 2, 2}}));
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
                const Expression falling =
                    add("falling", ticking(linear, {{0, 1.0 * from}, {length, 0}}));
                const Expression rising =
                    add("rising", ticking(linear, {{0, 0}, {length, 1.0 * to}}));
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

TEST_F(EvaluatorTest, MagnitudesOfLinesThatEndOnZeroBendAtTheirSamples) {
    const Expression line = add("line", trace(linear, "0:-1 1:0 2:1 3:0 4:-2", 4));
    const auto magnitude = only(factory_.Abs(line)).get<double>();
    EXPECT_TRUE(same(magnitude, trace(linear, "0:1 1:0 2:1 3:0 4:2", 4)));
}

// A magnitude that bends at a rounded time is off by as much before it, also where an instant is
// all that is known of the other operand.
TEST_F(EvaluatorTest, MagnitudesEqualWhatIsKnownAtAnInstant) {
    for (int length = 2; length <= 12; ++length) {
        for (int i = 1; 11 * i < 8 * length; ++i) {
            signals_.clear();
            const Expression line = add("line", ticking(linear, {{0, 8}, {length, -3}}));
            const Expression zero = add("zero", ticking(held, {{i, 0}}));
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
    EXPECT_EQ(spans(factory_.Eventually(1, 2, x)), (Spans{{-1, 8}, {19, 28}, {39, 39}}));
    EXPECT_EQ(spans(factory_.EpsilonShift(-1, x)),
              (Spans{{0, before(10)}, {20, before(30)}, {40, before(41)}}));
}

TEST_F(EvaluatorTest, WithoutSamplesTruthIsOpenAndNumbersAreNowhere) {
    const Expression none = add("none");
    const Expression p = add("p", truth({{0, false}}, 5));
    EXPECT_TRUE(same(*evaluated(none).truth, Truth(0)));
    EXPECT_TRUE(evaluated(none).pieces->empty());
    EXPECT_TRUE(same(*evaluated(factory_.Gt(none, factory_.Constant(1.0))).truth, Truth(0)));
    EXPECT_TRUE(same(only(factory_.And(none, p)).get<bool>(), truth({{0, false}}, 5)));
}

TEST_F(EvaluatorTest, SignalsAreSharedAndConstantsStayConstant) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    EXPECT_EQ(evaluated(x).pieces, signals_.begin()->second);
    EXPECT_EQ(evaluated(x, leastRobustness).pieces, signals_.begin()->second);
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
    const auto results = evaluate(
        {{&first, boolean}, {&second, boolean}, {&second, leastRobustness}}, lookup(), options);
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
        const auto results = evaluate(
            {{&shown, boolean}, {&sound, boolean}, {&clash, boolean}, {&shown, leastRobustness}},
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

// Taken for a failure of one formula, it could be told of none.
TEST_F(EvaluatorTest, MissingMemoryIsNoFailureOfAFormula) {
    const Expression x = signal(1, "x");
    const evaluation::SignalLookup withoutMemory = [](const variable&) -> SharedPieces {
        throw std::bad_alloc();
    };
    for (const unsigned jobs : {1U, 4U}) {
        EXPECT_THROW(evaluate({{&x, boolean}, {&x, leastRobustness}}, withoutMemory, {jobs, {}}),
                     std::bad_alloc);
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

TEST_F(EvaluatorTest, ChangesAreInstants) {
    auto modes = trace<std::int32_t>("0:1 1:2 3:2", 4);
    modes.enumTypeName = "Mode";
    const Expression mode = add("mode", modes, trace<std::int32_t>("6:5 7:6", 9));
    const TracePieces changes = pieces(unary_op(VORM_OP::Changed, mode, "changed"));
    ASSERT_EQ(changes.size(), 2U);
    EXPECT_TRUE(same(changes[0].get<bool>(), truth({{0, false}, {1, true}, {after(1), false}}, 4)));
    EXPECT_TRUE(
        same(changes[1].get<bool>(), truth({{after(6), false}, {7, true}, {after(7), false}}, 9)))
        << "what was before a hole is not known at its end";
    TimedTrace_T<double> close = trace("1:0", 3);
    close.push_back({after(1), 1});
    close.push_back({after(after(1)), nan});
    close.push_back({2, nan});
    close.lastKnownTime = 3;
    const auto next = only(unary_op(VORM_OP::Changed, add("close", close), "changed"));
    EXPECT_TRUE(same(next.get<bool>(),
                     truth({{1, false}, {after(1), true}, {after(after(after(1))), false}}, 3)));
}

TEST_F(EvaluatorTest, LinesAreScaledByWhatIsHeld) {
    const Expression line = add("line", trace(linear, "0:0 4:8", 4));
    const Expression factor = add("factor", trace("0:1 2:-2 3:0", 4));
    const auto product = only(factory_.Multiply(line, factor)).get<double>();
    EXPECT_EQ(*product.valueAt(1), 2);
    EXPECT_EQ(*product.valueAt(before(2)), *trace(linear, "0:0 4:8", 4).valueAt(before(2)));
    EXPECT_EQ(*product.valueAt(2.5), -10);
    EXPECT_EQ(*product.valueAt(3.5), 0);
    const Expression quotient = binary_op(VORM_OP::Divide, line, factor, "/");
    const TracePieces quotients = pieces(quotient);
    EXPECT_EQ(*quotients.front().get<double>().valueAt(2.5), -2.5);
    const Expression isLarge = factory_.Geq(quotient, factory_.Constant(-100.0));
    EXPECT_TRUE(same(only(isLarge).get<bool>(), truth({{0, true}, {3, false}}, 4)))
        << "what is divided by 0 is NaN, and compares to nothing";
}

TEST_F(EvaluatorTest, SumsOverWindowsAreInSeconds) {
    const Expression x = add("x", trace("0:2 2:4", 6), trace("8:1", 9));
    const auto sum = [&](VORM_OP op, double a, double b, const Expression& operand) {
        return timedwindow_unary_op(op, operand, "sum", a, b);
    };
    const TracePieces integral = pieces(sum(VORM_OP::Integral, -1, 1, x));
    ASSERT_EQ(integral.size(), 1U) << "the second piece is shorter than the window";
    EXPECT_TRUE(same(integral[0].get<double>(), trace(linear, "1:4 3:8 5:8", 5)));
    EXPECT_EQ(*only(sum(VORM_OP::Mean, 0, 4, x)).get<double>().valueAt(1), 3.5);
    const Expression nans = add("nans", trace("0:2 2:nan", 6));
    EXPECT_TRUE(mentions(evaluated(sum(VORM_OP::Mean, 0, 1, nans)), "NaN at 2 s"));
    const Expression p = factory_.Gt(x, factory_.Constant(3.0));
    EXPECT_TRUE(
        same(only(sum(VORM_OP::Duration, 0, 2, p)).get<double>(), trace(linear, "0:0 2:2 4:2", 4)));
}

TEST_F(EvaluatorTest, RefusesWhatHasNoMeaning) {
    const Expression x = add("x", trace("0:1 1:2", 3));
    const Expression line = add("line", trace(linear, "0:1 1:2", 3));
    const Expression unknown = signal(99, "unknown");
    EXPECT_TRUE(mentions(evaluated(nilClass()), "no formula"));
    EXPECT_TRUE(mentions(evaluated(factory_.Multiply(line, line)), "product of two lines"));
    EXPECT_TRUE(mentions(evaluated(binary_op(VORM_OP::Divide, x, line, "/")), "divided by a line"));
    EXPECT_TRUE(mentions(evaluated(unary_op(VORM_OP::Sine, line, "sin")), "no line"));
    EXPECT_TRUE(mentions(evaluated(unary_op(VORM_OP::Changed, line, "changed")), "no line"));
    EXPECT_TRUE(mentions(evaluated(timedwindow_unary_op(VORM_OP::Mean, line, "mean", 0, 1)),
                         "integral of a line"));
    EXPECT_TRUE(mentions(evaluated(unary_op(VORM_OP::And, x, "odd")), "'odd'"));
    EXPECT_TRUE(mentions(evaluated(factory_.Slope(x)), "Slope"));
    EXPECT_TRUE(mentions(evaluated(factory_.Not(x)), "'double'"));
    EXPECT_TRUE(mentions(evaluated(factory_.Until(x, 0, 1, x)), "'double'"));
    EXPECT_EQ(chain(evaluated(factory_.Not(unknown)))[1], "unknown99");
}

}  // namespace
}  // namespace vorm::test

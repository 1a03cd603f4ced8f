#include "signal_column.hpp"

#include <vorm/evaluation/signal/sample_order.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

std::size_t countOf(const SampleTimes& times) {
    const auto* ticks = std::get_if<TickTimes>(&times);
    return ticks != nullptr ? ticks->ticks.size() : std::get<NumberTimes>(times).numbers.size();
}

ExactTime timeAt(const TickTimes& times, std::size_t index) {
    return times.zero + WideInteger{times.ticks[index]} * times.unit;
}

void checkUnit(const SampleTimes& times) {
    const auto* ticks = std::get_if<TickTimes>(&times);
    if (ticks != nullptr && (ticks->unit <= ExactTime() || ticks->unit > second)) {
        failAt({}, "the unit of its times is no length of time up to a second");
    }
    const auto* numbers = std::get_if<NumberTimes>(&times);
    if (numbers != nullptr && numbers->unit <= ExactTime()) {
        failAt({}, "the unit of its times is no length of time");
    }
}

bool isWithinRange(ExactTime time) {
    return ExactTime::of(time.text(), second) == time;
}

ExactTime timeAt(const NumberTimes& times, std::size_t index) {
    const double number = times.numbers[index];
    const auto time = times.unit == second ? ExactTime::ofSeconds(number)
                                           : ExactTime::of(shortestNumber(number), times.unit);
    if (!time) {
        failAt({}, "the time " + shortestNumber(number) + " is " +
                       (std::isfinite(number) ? "beyond the range of times" : "not finite"));
    }
    return times.zero + *time;
}

// The first or the last time, which bound the others.
template <class Times>
ExactTime endTimeAt(const Times& times, std::size_t index) {
    const ExactTime time = timeAt(times, index);
    if (!isWithinRange(times.zero) || !isWithinRange(time)) {
        failAt({}, "the time is beyond the range of times");
    }
    return time;
}

// Whether doubles hold that many ticks, and all fewer.
bool isExact(WideInteger ticks) {
    constexpr WideInteger most = WideInteger{1} << 53;
    return ticks <= most && ticks >= -most;
}

// How many ticks of the timeline lie before the zero of the times; nothing where these are not
// whole.
std::optional<std::int64_t> wholeTicksBefore(ExactTime zero, const Timeline& counting) {
    const WideInteger tick = counting.tick().attoseconds();
    const WideInteger distance = (zero - counting.timeAt(0)).attoseconds();
    const WideInteger ticks = distance / tick;
    return distance % tick == 0 && isExact(ticks) ? std::optional(static_cast<std::int64_t>(ticks))
                                                  : std::nullopt;
}

// Counts times on a timeline without a bias. Decimals of few digits that are whole ticks stay
// integers: of at most 15 digits no two are the same double, and so it is the shortest one of a
// number that is read back from it.
class NumberCounter {
public:
    NumberCounter(const NumberTimes& times, const Timeline& counting)
        : times_(times), counting_(counting) {
        const WideInteger tick = counting.tick().attoseconds();
        const auto zero = wholeTicksBefore(times.zero, counting);
        double power = 1;  // of ten, which double has up to 1e22
        WideInteger ticks = 1;
        while (ticks * tick < times.unit.attoseconds() && power < mostDecimal_) {
            ticks *= 10;
            power *= 10;
        }
        if (zero && ticks * tick == times.unit.attoseconds()) {
            zero_ = *zero;
            perUnit_ = power;
        }
    }

    bool goesBackAt(std::size_t index) const {
        return times_.numbers[index] < times_.numbers[index - 1];
    }
    double counted(std::size_t index) const {
        const double number = times_.numbers[index];
        const double product = number * perUnit_;
        // False for a NaN.
        if (std::abs(product) < mostDecimal_) {
            const auto ticks = static_cast<std::int64_t>(product + (product < 0 ? -0.5 : 0.5));
            const WideInteger count = WideInteger{zero_} + ticks;
            // Nor is it so where no power of ten leads from the unit to ticks.
            if (static_cast<double>(ticks) / perUnit_ == number && isExact(count)) {
                return static_cast<double>(static_cast<std::int64_t>(count));
            }
        }
        return counting_.counted(timeAt(times_, index));
    }

private:
    static constexpr double mostDecimal_ = 1e15;

    const NumberTimes& times_;
    const Timeline& counting_;
    double perUnit_ = 0;  // ticks; 0 where that is no power of ten
    std::int64_t zero_ = 0;
};

// As NumberCounter; ticks that are whole ones of the timeline stay integers.
class TickCounter {
public:
    TickCounter(const TickTimes& times, const Timeline& counting)
        : times_(times), counting_(counting) {
        const WideInteger tick = counting.tick().attoseconds();
        const auto zero = wholeTicksBefore(times.zero, counting);
        if (zero && times.unit.attoseconds() % tick == 0) {
            factor_ = static_cast<std::int64_t>(times.unit.attoseconds() / tick);
            zero_ = *zero;
        }
    }

    bool goesBackAt(std::size_t index) const {
        return times_.ticks[index] < times_.ticks[index - 1];
    }
    double counted(std::size_t index) const {
        const WideInteger count = zero_ + WideInteger{times_.ticks[index]} * factor_;
        return factor_ != 0 && isExact(count)
                   ? static_cast<double>(static_cast<std::int64_t>(count))
                   : counting_.counted(timeAt(times_, index));
    }

private:
    const TickTimes& times_;
    const Timeline& counting_;
    std::int64_t factor_ = 0;  // 0 where ticks are no whole ones of the timeline
    WideInteger zero_ = 0;
};

NumberCounter counterOf(const NumberTimes& times, const Timeline& counting) {
    return {times, counting};
}

TickCounter counterOf(const TickTimes& times, const Timeline& counting) {
    return {times, counting};
}

// What is thrown in a call about a column names its signal, and the sample where one is in work.
class NamedColumn {
public:
    explicit NamedColumn(const SignalColumn& column) : column_(column) {}

    void workAt(std::size_t index) { index_ = index; }
    void endWork() { index_.reset(); }

    [[noreturn]] void fail(const InputError& error) const {
        InputProblem problem = error.problem();
        const std::string index = index_ ? ", index " + std::to_string(*index_) : "";
        problem.message = "signal " + shown(column_.name) + index + ": " + problem.message;
        throw InputError(std::move(problem));
    }

private:
    const SignalColumn& column_;
    std::optional<std::size_t> index_;
};

// Calls with an object that is told which sample is in work.
template <class Call>
auto naming(const SignalColumn& column, const Call& call) {
    NamedColumn named(column);
    try {
        return call(named);
    } catch (const InputError& error) {
        named.fail(error);
    }
}

void checkLength(const std::string& what, std::size_t count, std::size_t times) {
    if (count != times) {
        failAt({}, "has " + std::to_string(times) + " times, but " + std::to_string(count) + " " +
                       what);
    }
}

void check(const SignalColumn& column) {
    const std::size_t times = countOf(column.times);
    std::visit([&](const auto& values) { checkLength("values", values.size(), times); },
               column.values);
    if (!column.missing.empty()) {
        checkLength("marks of missing ones", column.missing.size(), times);
    }
    if (column.enumeration && !std::holds_alternative<SampleView<std::int32_t>>(column.values)) {
        failAt({}, "the positions of an enumeration's members are of type int32");
    }
    checkUnit(column.times);
}

template <class Times>
std::vector<double> countedTimes(const Times& times, std::size_t count, const Timeline& counting,
                                 NamedColumn& named) {
    const auto counter = counterOf(times, counting);
    std::vector<double> counted(count);
    for (std::size_t i = 0; i < count; ++i) {
        named.workAt(i);
        counted[i] = counter.counted(i);
        if (i > 0 && counter.goesBackAt(i)) [[unlikely]] {
            failAt({},
                   "the time goes back from " + timeAt(times, i - 1).text() + " s to " +
                       timeAt(times, i).text() + " s",
                   "samples stand in the order of their times");
        }
    }
    return counted;
}

template <class T>
class ColumnReader {
public:
    ColumnReader(const SignalColumn& column, const SignalRules& rules, NamedColumn& named)
        : column_(column),
          values_(std::get<SampleView<T>>(column.values)),
          named_(named),
          order_(rules),
          collector_(interpolationOf(rules, assessments::IsFloatingPoint<T>::value,
                                     typeText(*rules.type))) {}

    SharedPieces read(const Timeline& timeline) {
        const std::vector<double> times = std::visit(
            [&](const auto& written) {
                return countedTimes(written, values_.size(), order_.rules().timeline, named_);
            },
            column_.times);
        for (std::size_t i = 0; i < times.size(); ++i) {
            named_.workAt(i);
            if (isSample(i)) {
                take(times[i], values_[i]);
            }
        }
        named_.endWork();
        auto pieces = collector_.take();
        if (column_.enumeration) {
            for (auto& piece : pieces) {
                piece.enumTypeName = column_.enumeration->name;
            }
        }
        return sharedPieces(std::move(pieces), timeline);
    }

private:
    bool isSample(std::size_t i) const {
        return (column_.missing.empty() || !column_.missing[i]) &&
               (column_.nan == NanMeaning::Value || !assessments::support::isNan(values_[i]));
    }

    void take(double time, const T& value) {
        if constexpr (std::is_same_v<T, std::int32_t>) {
            checkMember(value);
        }
        order_.place(time, [&](SampleStep step) { collector_.add(step, time, value); });
    }

    void checkMember(std::int32_t value) const {
        if (column_.enumeration &&
            (value < 0 || static_cast<std::size_t>(value) >= column_.enumeration->members.size())) {
            failAt({}, std::to_string(value) + " is the position of no member of the enumeration " +
                           shown(column_.enumeration->name));
        }
    }

    const SignalColumn& column_;
    const SampleView<T> values_;
    NamedColumn& named_;
    SampleOrder order_;
    TraceCollector<T> collector_;
};

SignalRules rulesOf(const SignalColumn& column, const Timeline& counting) {
    SignalRules rules;
    rules.subject = "the signal";
    rules.type = column.enumeration ? SignalType::of(column.enumeration)
                                    : SignalType{column.values.index(), nullptr};
    rules.interpolation = column.interpolation;
    rules.isInterpolationDeclared = true;
    if (column.maxGap) {
        rules.maxGap = counting.ticksIn(*column.maxGap);
    }
    rules.equalTimes = column.equalTimes;
    rules.timeline = counting;
    return rules;
}

}  // namespace

std::optional<TimeSpan> recordedSpan(const std::vector<SignalColumn>& columns) {
    std::optional<TimeSpan> span;
    for (const SignalColumn& column : columns) {
        const std::size_t count = countOf(column.times);
        if (count == 0) {
            continue;
        }
        naming(column, [&](NamedColumn& named) {
            checkUnit(column.times);
            const auto at = [&](std::size_t index) {
                named.workAt(index);
                return std::visit([&](const auto& times) { return endTimeAt(times, index); },
                                  column.times);
            };
            const auto first = at(0);
            const auto last = at(count - 1);
            span = {span ? std::min(span->start, first) : first,
                    span ? std::max(span->end, last) : last};
        });
    }
    return span;
}

Timeline timelineOf(const std::vector<SignalColumn>& columns, ExactTime resolution,
                    ExactTime reach) {
    if (resolution > second ||
        std::none_of(timeUnits.begin(), timeUnits.end(),
                     [&](const TimeUnit& unit) { return unit.length == resolution; })) {
        failAt({}, "the resolution is no unit of time up to a second",
               "it is one of fs, ps, ns, us, ms and s");
    }
    const auto span = recordedSpan(columns);
    if (!span) {
        return Timeline(resolution).over(0, 0);
    }
    const Timeline counting(resolution, span->start);
    return counting.over(0, counting.at(span->end), counting.ticksIn(reach));
}

Signal signalOf(const SignalColumn& column, const Timeline& timeline) {
    return naming(column, [&](NamedColumn& named) {
        check(column);
        const SignalRules rules = rulesOf(column, timeline.withoutBias());
        const auto pieces = std::visit(
            [&]<class T>(const std::span<const T>&) {
                return ColumnReader<T>(column, rules, named).read(timeline);
            },
            column.values);
        return Signal{column.name, *rules.type, column.unit, pieces};
    });
}

}  // namespace vorm::evaluation

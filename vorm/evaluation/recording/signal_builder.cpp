#include "signal_builder.hpp"

#include <vorm/evaluation/signal/integer_range.hpp>
#include <vorm/evaluation/table/cell_kind.hpp>
#include <vorm/evaluation/table/cell_value.hpp>
#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/text/text_hash.hpp>

#include <cmath>

namespace vorm::evaluation {
namespace {

using assessments::INTERPOLATION_METHOD;

template <class T>
RecordedPieces heldPieces(std::deque<assessments::TimedTrace_T<T>> pieces,
                          const Timeline& timeline) {
    const SharedPieces shared = sharedPieces(std::move(pieces), timeline);
    return {shared, shared};
}

/// A column of a declared type, or of bool.
template <class T>
class TypedBuilder final : public SignalBuilder {
public:
    explicit TypedBuilder(const SignalRules& rules)
        : SignalBuilder(rules),
          collector_(interpolationOf(rules, assessments::IsFloatingPoint<T>::value,
                                     typeText(SignalType::of<T>())),
                     rules.alsoHeld) {}

    Result finish(const std::string&, const Timeline& timeline) override {
        return {SignalType::of<T>(), collector_.take(timeline)};
    }

private:
    void take(SampleStep step, double time, std::string_view text) override {
        collector_.add(step, time, cellValue<T>(text, rules().subject));
    }

    SampleCollector<T> collector_;
};

/// A column of numbers without a declared type: of double, until an integer comes that has no
/// double while all before it were integers too.
class NumberBuilder final : public SignalBuilder {
public:
    explicit NumberBuilder(const SignalRules& rules)
        : SignalBuilder(rules), numbers_(rules.interpolation, rules.alsoHeld) {
        // A linear trace has lost the samples on its lines when the first such integer comes.
        if (rules.interpolation == INTERPOLATION_METHOD::LINEAR) {
            integers_.emplace(INTERPOLATION_METHOD::ZOH);
        }
    }

    Result finish(const std::string&, const Timeline& timeline) override {
        const auto type = range_.valueType();
        if (!type) {
            return {SignalType::of<double>(), numbers_.take(timeline)};
        }
        const SignalType integer{type, nullptr};
        interpolationOf(rules(), false, typeText(integer));
        if (integer.is<std::uint64_t>()) {
            return {integer, heldPieces(integers_->take(), timeline)};
        }
        const auto toSigned = [](std::uint64_t bits) { return static_cast<std::int64_t>(bits); };
        return {integer, heldPieces(integers_->converted<std::int64_t>(toSigned).take(), timeline)};
    }

private:
    void take(SampleStep step, double time, std::string_view text) override {
        const auto bits = range_.areIntegers() ? range_.add(text) : std::nullopt;
        // A minus zero is an integer, but as a double it keeps its sign.
        const bool isNatural = bits && text.front() != '-';
        const double number =
            isNatural ? static_cast<double>(*bits) : cellValue<double>(text, rules().subject);
        if (!bits) {
            checkRounding(text, number);
            integers_.reset();
        } else if (integers_ || range_.valueType()) {
            addInteger(step, time, *bits);
        }
        numbers_.add(step, time, number);
    }

    // Of a held column, whose values are those of the samples and nothing between them.
    void checkRounding(std::string_view text, double number) const {
        const bool mayRound =
            range_.hasInexact() || (std::abs(number) >= 0x1p53 && isInexactInteger(text));
        if (mayRound && rules().interpolation == INTERPOLATION_METHOD::ZOH) {
            failAt({},
                   "no type holds " + shown(text) + " and the other numbers of " + rules().subject +
                       " exactly",
                   "declare type = \"double\" to have them rounded, or \"int64\" or "
                   "\"uint64\" where there are to be no others");
        }
    }

    void addInteger(SampleStep step, double time, std::uint64_t bits) {
        if (!integers_) {
            integers_.emplace(numbers_.converted<std::uint64_t>(bitsOf));
        }
        integers_->add(step, time, bits);
    }

    // Of an integer that a 64-bit type holds.
    static std::uint64_t bitsOf(double number) {
        return number < 0 ? static_cast<std::uint64_t>(static_cast<std::int64_t>(number))
                          : static_cast<std::uint64_t>(number);
    }

    SampleCollector<double> numbers_;
    std::optional<TraceCollector<std::uint64_t>> integers_;  // their bits in two's complement
    IntegerRange range_;
};

/// A column of texts: the members of a declared enumeration, or new members as they appear.
class EnumerationBuilder final : public SignalBuilder {
public:
    explicit EnumerationBuilder(const SignalRules& rules)
        : SignalBuilder(rules),
          declared_(rules.type ? rules.type->enumeration : nullptr),
          isOpen_(declared_ == nullptr || declared_->members.empty()),
          collector_(interpolationOf(rules, false, "enumeration")) {
        for (const std::string& member :
             isOpen_ ? std::vector<std::string>() : declared_->members) {
            addMember(member);
        }
    }

    Result finish(const std::string& name, const Timeline& timeline) override {
        auto enumeration = declared_;
        if (isOpen_) {
            const bool isNamed = declared_ != nullptr && !declared_->name.empty();
            enumeration = std::make_shared<const Enumeration>(
                Enumeration{isNamed ? declared_->name : name, std::move(members_), true});
        }
        auto pieces = collector_.take();
        for (auto& piece : pieces) {
            piece.enumTypeName = enumeration->name;
        }
        return {SignalType::of(enumeration), heldPieces(std::move(pieces), timeline)};
    }

private:
    bool isOfTexts() const override { return true; }

    void take(SampleStep step, double time, std::string_view text) override {
        collector_.add(step, time, valueOf(text));
    }

    std::int32_t valueOf(std::string_view text) {
        const auto found = values_.find(text);
        if (found != values_.end()) {
            return found->second;
        }
        if (!isOpen_) {
            failAt({},
                   shown(text) + " in " + rules().subject + " is no member of the enumeration " +
                       shown(declared_->name),
                   adviceFor(text));
        }
        return addMember(std::string(text));
    }

    std::string adviceFor(std::string_view text) const {
        const std::string near = suggestion(text, members_);
        return near.empty() ? "its members are " + quotedList(members_) : near;
    }

    std::int32_t addMember(std::string member) {
        const auto value = static_cast<std::int32_t>(members_.size());
        members_.push_back(member);
        return values_.emplace(std::move(member), value).first->second;
    }

    std::shared_ptr<const Enumeration> declared_;
    bool isOpen_;
    std::vector<std::string> members_;
    TextMap<std::int32_t> values_;
    TraceCollector<std::int32_t> collector_;
};

}  // namespace

void SignalBuilder::checkPoint(const Cell& cell) const {
    if (!isOfTexts()) {
        failForPoint(cell, rules().subject);
    }
}

std::unique_ptr<SignalBuilder> makeSignalBuilder(const SignalRules& rules, const Cell& first) {
    if (rules.type && !rules.type->isEnumerated() && rules.type->isKnown()) {
        return boost::mp11::mp_with_index<boost::mp11::mp_size<assessments::ValueTypes>>(
            *rules.type->valueType, [&](auto index) -> std::unique_ptr<SignalBuilder> {
                using T = boost::mp11::mp_at<assessments::ValueTypes, decltype(index)>;
                return std::make_unique<TypedBuilder<T>>(rules);
            });
    }
    if (rules.type && rules.type->isEnumerated()) {
        return std::make_unique<EnumerationBuilder>(rules);
    }
    if (isTruthText(first.text) && !first.isText) {
        return std::make_unique<TypedBuilder<bool>>(rules);
    }
    // What only looks like a number is for that builder to refuse.
    if (!first.isText && isLikeNumber(first.text)) {
        return std::make_unique<NumberBuilder>(rules);
    }
    return std::make_unique<EnumerationBuilder>(rules);
}

}  // namespace vorm::evaluation

#include "signal_type.hpp"

#include <vorm/assessments/trace/value_traits.hpp>

#include <boost/mp11/algorithm.hpp>

#include <algorithm>
#include <array>
#include <iterator>

namespace vorm::evaluation {
namespace {

constexpr auto names =
    std::to_array({"double", "float", "int8", "uint8", "int16", "uint16", "int32", "uint32",
                   "int64", "uint64", "bool", "half", "fixed", "verdict"});
static_assert(names.size() == boost::mp11::mp_size<assessments::ValueTypes>::value);

}  // namespace

std::optional<std::int32_t> Enumeration::valueOf(std::string_view member) const {
    const auto found = std::find(members.begin(), members.end(), member);
    if (found == members.end()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(std::distance(members.begin(), found));
}

SignalType SignalType::of(std::shared_ptr<const Enumeration> enumeration) {
    return {assessments::valueTypeIndex<std::int32_t>, std::move(enumeration)};
}

bool operator==(const SignalType& a, const SignalType& b) {
    if (a.isEnumerated() && b.isEnumerated()) {
        return a.enumeration->name == b.enumeration->name;
    }
    return a.valueType == b.valueType && a.isEnumerated() == b.isEnumerated();
}

const std::vector<std::string>& valueTypeNames() {
    static const std::vector<std::string> texts(names.begin(), names.end());
    return texts;
}

std::optional<std::size_t> valueTypeOf(std::string_view name) {
    if (name == "single") {
        return assessments::valueTypeIndex<float>;
    }
    if (name == "logical") {
        return assessments::valueTypeIndex<bool>;
    }
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(std::distance(names.begin(), found));
}

bool hasLines(std::size_t valueType) {
    return boost::mp11::mp_with_index<names.size()>(valueType, [](auto index) -> bool {
        return assessments::IsFloatingPoint<
            boost::mp11::mp_at<assessments::ValueTypes, decltype(index)>>::value;
    });
}

std::string typeText(const SignalType& type) {
    if (type.isEnumerated()) {
        return "enumeration " + type.enumeration->name;
    }
    return type.isKnown() ? valueTypeNames()[*type.valueType] : "unknown type";
}

}  // namespace vorm::evaluation

#include "declared_recording.hpp"

#include <boost/mp11/algorithm.hpp>

#include <memory>
#include <optional>
#include <type_traits>
#include <utility>

namespace vorm::evaluation {
namespace {

using namespace assessments;

// None of a verdict, which has no zero.
template <class T>
std::optional<TimedTrace> zeroes(const SignalType& type, INTERPOLATION_METHOD interpolation,
                                 const Timeline& timeline) {
    if constexpr (std::is_same_v<T, Verdict>) {
        return std::nullopt;
    } else {
        TimedTrace_T<T> trace(IsFloatingPoint<T>::value ? interpolation : INTERPOLATION_METHOD::ZOH,
                              timeline.at({}));
        trace.points.push_back({timeline.at({}), ZERO<T>()});
        trace.lastKnownTime = timeline.at(second);
        trace.enumTypeName = type.isEnumerated() ? type.enumeration->name : "";
        return trace;
    }
}

}  // namespace

Recording declaredRecording(const RecordingLayout& layout) {
    Recording recording;
    recording.name = "the declared signals";
    const Timeline counting(layout.time.resolution.length);
    recording.timeline = counting.over(0, counting.at(second));
    for (const SignalLayout& signal : layout.signals) {
        const SignalType type = signal.type.value_or(SignalType());
        if (!type.isKnown()) {
            continue;
        }
        auto trace = boost::mp11::mp_with_index<boost::mp11::mp_size<ValueTypes>::value>(
            *type.valueType, [&](auto index) {
                return zeroes<boost::mp11::mp_at_c<ValueTypes, index>>(
                    type, signal.interpolation.value_or(layout.interpolation), recording.timeline);
            });
        if (trace) {
            recording.availableNames.push_back(signal.name);
            recording.signals.push_back(
                {signal.name, type, signal.unit,
                 std::make_shared<const TracePieces>(TracePieces{std::move(*trace)})});
        }
    }
    return recording;
}

}  // namespace vorm::evaluation

#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/platform/fixed_point.hpp>
#include <vorm/assessments/platform/half_float.hpp>

#include <boost/mp11/algorithm.hpp>
#include <boost/mp11/list.hpp>

#include <cstddef>
#include <cstdint>

namespace vorm::assessments {

using platform::FixedPoint;
using platform::HalfFloat;

/// A verdict at one time. Verdicts order by their numeric value.
enum class VORM_ASSESSMENTS_EXPORT resultEnum_t : std::uint8_t {
    PASS = 0,         ///< the requirement holds
    FAIL = 1,         ///< the requirement is violated
    NO_RESULT = 254,  ///< there is no data to tell
};

// Exported from its first declaration on: a hidden argument would hide every template over it.
template <class T>
class VORM_ASSESSMENTS_EXPORT ValueType;

/// Every value type that a trace can have, as a list; the single source is value_types.def.
using ValueTypes = boost::mp11::mp_pop_front<boost::mp11::mp_list<void
#define VORM_VALUE_TYPE(T) , T
#include <vorm/assessments/value_types.def>
                                                                  >>;

/// The position of T among the value types: the index of its trace in TimedTrace and of its tag.
template <class T>
inline constexpr std::size_t valueTypeIndex = boost::mp11::mp_find<ValueTypes, T>::value;

static_assert(boost::mp11::mp_size<ValueTypes>::value == 14);
static_assert(valueTypeIndex<double> == 0 && valueTypeIndex<float> == 1);
static_assert(valueTypeIndex<std::int8_t> == 2 && valueTypeIndex<std::uint64_t> == 9);
static_assert(valueTypeIndex<bool> == 10 && valueTypeIndex<HalfFloat> == 11);
static_assert(valueTypeIndex<ValueType<FixedPoint>> == 12);
static_assert(valueTypeIndex<ValueType<resultEnum_t>> == 13);

}  // namespace vorm::assessments

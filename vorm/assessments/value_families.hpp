#pragma once

// For code that treats value types differently.
//
// A choice between families names each one that it knows, those that it refuses too, and ends in
//
//     } else {
//         static_assert(support::isForgotten<T>, "A value type without a sum.");
//     }
//
// A value type that joins the list does not compile until every choice knows it.

#include <vorm/assessments/value_types.hpp>

#include <type_traits>

namespace vorm::assessments::support {

template <class T, class... Types>
inline constexpr bool isOneOf = (std::is_same_v<T, Types> || ...);

template <class T>
inline constexpr bool isReal = isOneOf<T, double, float>;
/// The integers that count; bool has the same operators and another meaning.
template <class T>
inline constexpr bool isInteger = isOneOf<T, std::int8_t, std::uint8_t, std::int16_t, std::uint16_t,
                                          std::int32_t, std::uint32_t, std::int64_t, std::uint64_t>;
template <class T>
inline constexpr bool isBool = isOneOf<T, bool>;
template <class T>
inline constexpr bool isHalf = isOneOf<T, HalfFloat>;
template <class T>
inline constexpr bool isFixedPoint = isOneOf<T, ValueType<FixedPoint>>;
template <class T>
inline constexpr bool isVerdict = isOneOf<T, ValueType<resultEnum_t>>;

/// What static_cast turns into a double and back.
template <class T>
inline constexpr bool isNumber = isReal<T> || isInteger<T> || isBool<T> || isHalf<T>;

/// False, but known to be so only when T is.
template <class T>
inline constexpr bool isForgotten = false;

}  // namespace vorm::assessments::support

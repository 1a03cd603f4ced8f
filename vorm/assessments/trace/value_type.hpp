#pragma once

#include <vorm/assessments/export.hpp>
#include <vorm/assessments/value_types.hpp>

#include <boost/smart_ptr/make_shared_object.hpp>
#include <boost/smart_ptr/shared_ptr.hpp>

namespace vorm::assessments {

/// A sample value that lives in shared storage: copies share the value and never copy it, which
/// keeps traces of large values cheap. The value itself never changes. A move shares it like a
/// copy: what was moved from keeps its value.
///
/// Arithmetic is that of T. Verdicts have none: their operators throw std::runtime_error, for
/// example "Unsupported operator '+' for type resultType_t".
template <class T>
class VORM_ASSESSMENTS_EXPORT ValueType {
public:
    explicit ValueType(const T& value) : value_(boost::make_shared<T>(value)) {}
    // No moves, which would leave no value behind.
    ValueType(const ValueType&) = default;
    ValueType& operator=(const ValueType&) = default;

    const T& get() const { return *value_; }

    friend bool operator==(const ValueType& a, const ValueType& b) { return a.get() == b.get(); }
    friend bool operator!=(const ValueType& a, const ValueType& b) { return !(a == b); }
    friend bool operator<(const ValueType& a, const ValueType& b) { return a.get() < b.get(); }
    friend bool operator<=(const ValueType& a, const ValueType& b) { return a.get() <= b.get(); }
    friend bool operator>(const ValueType& a, const ValueType& b) { return b < a; }
    friend bool operator>=(const ValueType& a, const ValueType& b) { return b <= a; }

private:
    boost::shared_ptr<T> value_;
};

template <class T>
ValueType<T> operator+(const ValueType<T>& a, const ValueType<T>& b) {
    return ValueType<T>(a.get() + b.get());
}

template <class T>
ValueType<T> operator-(const ValueType<T>& a, const ValueType<T>& b) {
    return ValueType<T>(a.get() - b.get());
}

template <class T>
ValueType<T> operator*(const ValueType<T>& a, const ValueType<T>& b) {
    return ValueType<T>(a.get() * b.get());
}

template <class T>
ValueType<T> operator-(const ValueType<T>& a) {
    return ValueType<T>(-a.get());
}

using Verdict = ValueType<resultEnum_t>;

VORM_ASSESSMENTS_EXPORT Verdict operator+(const Verdict&, const Verdict&);
VORM_ASSESSMENTS_EXPORT Verdict operator-(const Verdict&, const Verdict&);
VORM_ASSESSMENTS_EXPORT Verdict operator*(const Verdict&, const Verdict&);
VORM_ASSESSMENTS_EXPORT Verdict operator-(const Verdict&);

}  // namespace vorm::assessments

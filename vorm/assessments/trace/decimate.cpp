// Thinning a trace for display.

#include <vorm/assessments/trace/timed_trace.hpp>

namespace vorm::assessments {
namespace {

// The least and the greatest sample of the bucket being filled; of equal ones the earliest.
template <class T>
struct Bucket {
    double start;
    const TimedPoint<T>* least;
    const TimedPoint<T>* greatest;

    void take(const TimedPoint<T>& point) {
        if (point.value < least->value) {
            least = &point;
        } else if (greatest->value < point.value) {
            greatest = &point;
        }
    }

    void writeTo(std::deque<TimedPoint<T>>& kept) const {
        const bool leastFirst = least->time < greatest->time;
        write(leastFirst ? *least : *greatest, kept);
        write(leastFirst ? *greatest : *least, kept);
    }

private:
    // Least and greatest can be one sample, and the first sample opens two buckets when it lies a
    // whole bucket or more after time 0.
    static void write(const TimedPoint<T>& point, std::deque<TimedPoint<T>>& kept) {
        if (kept.empty() || kept.back().time < point.time) {
            kept.push_back(point);
        }
    }
};

}  // namespace

template <class T>
void TimedTrace_T<T>::decimate(const double& decimationInterval) {
    if (points.empty()) {
        return;
    }
    const double span = points.back().time - points.front().time;
    if (span / decimationInterval > static_cast<double>(points.size())) {
        return;
    }
    Points kept;
    Bucket<T> bucket{0.0, &points.front(), &points.front()};
    for (const Point& point : points) {
        if (point.time - bucket.start >= decimationInterval) {
            bucket.writeTo(kept);
            bucket = {point.time, &point, &point};
        } else {
            bucket.take(point);
        }
    }
    bucket.writeTo(kept);
    if (kept.front().time > points.front().time) {
        kept.push_front(points.front());
    }
    points = std::move(kept);
}

#define VORM_VALUE_TYPE(T) template void TimedTrace_T<T>::decimate(const double&);
#include <vorm/assessments/value_types.def>

}  // namespace vorm::assessments

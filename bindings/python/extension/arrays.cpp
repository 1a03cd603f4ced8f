#include "arrays.hpp"

#include <vorm/evaluation/time/time_unit.hpp>

#include <limits>

namespace vorm::python {

namespace py = pybind11;
using evaluation::ExactTime;
using evaluation::WideInteger;

std::int64_t nanosecondsOf(ExactTime time) {
    const WideInteger unit = evaluation::nanosecond.attoseconds();
    const WideInteger half = time < ExactTime() ? -unit / 2 : unit / 2;
    const WideInteger count = (time.attoseconds() + half) / unit;
    if (count > std::numeric_limits<std::int64_t>::max() ||
        count < std::numeric_limits<std::int64_t>::min()) {
        throw py::value_error("the time " + time.text() + " s is beyond what nanoseconds reach");
    }
    return static_cast<std::int64_t>(count);
}

py::object timeObject(ExactTime time, TimeForm form) {
    return form == TimeForm::Seconds ? py::object(py::float_(time.seconds()))
                                     : py::object(py::int_(nanosecondsOf(time)));
}

py::array timeArray(const std::vector<ExactTime>& times, TimeForm form) {
    if (form == TimeForm::Seconds) {
        std::vector<double> seconds;
        for (const ExactTime time : times) {
            seconds.push_back(time.seconds());
        }
        return arrayOf(seconds);
    }
    std::vector<std::int64_t> nanoseconds;
    for (const ExactTime time : times) {
        nanoseconds.push_back(nanosecondsOf(time));
    }
    return arrayOf(nanoseconds);
}

py::array spanArray(const std::vector<evaluation::TimeSpan>& spans, TimeForm form) {
    std::vector<ExactTime> ends;
    for (const auto& [start, end] : spans) {
        ends.push_back(start);
        ends.push_back(end);
    }
    return timeArray(ends, form).reshape({static_cast<py::ssize_t>(spans.size()), py::ssize_t{2}});
}

}  // namespace vorm::python

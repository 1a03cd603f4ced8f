#include "column.hpp"

#include "file.hpp"
#include "unlocked.hpp"

#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/recording/recording_in_memory.hpp>
#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/time/time_unit.hpp>

#include <boost/mp11/algorithm.hpp>
#include <pybind11/numpy.h>
#include <pybind11/stl.h>

#include <memory>

namespace vorm::python {

namespace py = pybind11;
using assessments::HalfFloat;
using evaluation::ExactTime;
using evaluation::SignalColumn;

namespace {

// A column, and what keeps its samples in memory.
struct Column {
    SignalColumn column;
    py::array times;
    py::array values;
    py::array missing;
    bool isTyped;  // else nothing tells the type of its values
    std::shared_ptr<const std::vector<HalfFloat>> halves;
};

// What an array holds, as it lies there. Throws TypeError unless it has one dimension, is aligned
// and without gaps: who calls has made it so.
template <class T>
std::span<const T> view(const py::array& array, const char* what) {
    const py::object flags = array.attr("flags");
    if (array.ndim() != 1 || !flags.attr("c_contiguous").cast<bool>() ||
        !flags.attr("aligned").cast<bool>() ||
        array.itemsize() != static_cast<py::ssize_t>(sizeof(T))) {
        throw py::type_error(std::string(what) + " are no plain array");
    }
    return {static_cast<const T*>(array.data()), static_cast<std::size_t>(array.size())};
}

// The letter of a type's kind and its size, of the machine's own order of bytes: `f8`, `u2`.
std::string arrayType(const py::array& array) {
    const py::dtype type = array.dtype();
    if (!type.attr("isnative").cast<bool>()) {
        throw py::type_error("an array of a foreign order of bytes");
    }
    return std::string(1, type.kind()) + std::to_string(type.itemsize());
}

evaluation::SampleTimes timesOf(const py::array& times, ExactTime unit, ExactTime zero) {
    if (arrayType(times) == "i8") {
        return evaluation::TickTimes{view<std::int64_t>(times, "times"), unit, zero};
    }
    if (arrayType(times) == "f8") {
        return evaluation::NumberTimes{view<double>(times, "times"), unit, zero};
    }
    throw py::type_error("times are int64 or float64");
}

// The numeric types whose NumPy array lies in memory as their samples do.
template <class T>
constexpr char kindOf = std::is_same_v<T, bool>       ? 'b'
                        : std::is_floating_point_v<T> ? 'f'
                        : std::is_unsigned_v<T>       ? 'u'
                                                      : 'i';

void takeValues(Column& column) {
    const std::string type = arrayType(column.values);
    if (type == "f2") {
        std::vector<HalfFloat> halves;
        for (const std::uint16_t bits : view<std::uint16_t>(column.values, "values")) {
            halves.push_back(HalfFloat::fromBits(bits));
        }
        column.halves = std::make_shared<const std::vector<HalfFloat>>(std::move(halves));
        column.column.values = evaluation::SampleView<HalfFloat>(*column.halves);
        return;
    }
    bool isTaken = false;
    boost::mp11::mp_for_each<
        boost::mp11::mp_transform<std::type_identity, assessments::ValueTypes>>([&](auto identity) {
        using T = typename decltype(identity)::type;
        if constexpr (std::is_arithmetic_v<T>) {
            if (type == kindOf<T> + std::to_string(sizeof(T))) {
                column.column.values = view<T>(column.values, "values");
                isTaken = true;
            }
        }
    });
    if (!isTaken) {
        throw py::type_error("no signal has values of the type " + type);
    }
}

ExactTime seconds(const std::string& decimal) {
    const auto time = ExactTime::of(decimal, evaluation::second);
    if (!time) {
        evaluation::failAt({}, decimal + " s is beyond the range of times");
    }
    return *time;
}

ExactTime unitLength(const std::string& name) {
    const auto unit = evaluation::timeUnitOf(name);
    if (!unit) {
        throw py::value_error("'" + name + "' is no unit of time");
    }
    return unit->length;
}

Column makeColumn(const std::string& name, const py::array& times, const std::string& timeUnit,
                  const std::string& zero, const py::array& values,
                  const std::optional<py::array>& missing,
                  const std::optional<std::pair<std::string, std::vector<std::string>>>& members,
                  const std::string& unit, bool isTyped, bool isNanValue, bool isLinear,
                  const std::optional<std::string>& maxGap, const std::string& equalTimes) {
    Column column{{}, times, values, {}, isTyped, nullptr};
    column.column.name = name;
    column.column.times = timesOf(times, unitLength(timeUnit), seconds(zero));
    takeValues(column);
    if (missing) {
        if (arrayType(*missing) != "b1") {
            throw py::type_error("marks of missing samples are bool");
        }
        column.missing = *missing;
        column.column.missing = view<bool>(column.missing, "marks of missing samples");
    }
    if (members) {
        column.column.enumeration = std::make_shared<const evaluation::Enumeration>(
            evaluation::Enumeration{members->first, members->second});
    }
    column.column.unit = unit;
    column.column.nan =
        isNanValue ? evaluation::NanMeaning::Value : evaluation::NanMeaning::NoSample;
    column.column.interpolation = isLinear ? assessments::INTERPOLATION_METHOD::LINEAR
                                           : assessments::INTERPOLATION_METHOD::ZOH;
    if (maxGap) {
        column.column.maxGap = seconds(*maxGap);
    }
    column.column.equalTimes = equalTimes == "first"  ? evaluation::EqualTimes::First
                               : equalTimes == "last" ? evaluation::EqualTimes::Last
                                                      : evaluation::EqualTimes::Refuse;
    return column;
}

evaluation::Recording recordingOf(const std::string& name, const std::vector<Column>& columns,
                                  const std::vector<std::string>& availableNames,
                                  const evaluation::RecordingOptions& options) {
    std::vector<SignalColumn> views;
    for (const Column& column : columns) {
        views.push_back(column.column);
    }
    // Too quick to be worth a thread of its own.
    const py::gil_scoped_release unlock;
    evaluation::Recording recording = evaluation::recordingOf(name, views, options);
    recording.availableNames = availableNames;
    for (const Column& column : columns) {
        for (evaluation::Signal& signal : recording.signals) {
            const bool isOfColumn = evaluation::recordedName(signal.name) == column.column.name;
            signal.type = isOfColumn && !column.isTyped ? evaluation::SignalType() : signal.type;
        }
    }
    return recording;
}

// Dates are read and shown as those of files: in the declared zone, whatever that of the data.
evaluation::WallClock clockFrom(ExactTime zero, const std::string& zone) {
    return zone.empty() ? evaluation::WallClock(zero)
                        : evaluation::WallClock(zero, evaluation::TimeZone::called(zone));
}

evaluation::Recording readFor(const evaluation::ParsedFormula& formula,
                              const std::vector<std::string>& paths) {
    return unlocked([&](const Progress& progress) {
        evaluation::ReadingOptions options;
        options.wanted = formula.names();
        options.reach = reachOf(formula);
        options.progress = [&](std::size_t) { progress(""); };
        return evaluation::readRecording({paths}, {}, options);
    });
}

}  // namespace

void addColumns(py::module_& module) {
    py::class_<Column>(module, "Column")
        .def(py::init(&makeColumn), py::kw_only(), py::arg("name"), py::arg("times"),
             py::arg("time_unit"), py::arg("zero"), py::arg("values"), py::arg("missing"),
             py::arg("members"), py::arg("unit"), py::arg("is_typed"), py::arg("is_nan_value"),
             py::arg("is_linear"), py::arg("max_gap"), py::arg("equal_times"));
    py::class_<evaluation::Recording>(module, "Recording")
        .def_static(
            "for_file",
            [](const File& file, const std::vector<std::string>& only, const std::string& name,
               const std::vector<Column>& columns, const std::vector<std::string>& available,
               const std::optional<std::string>& dateOfZero) {
                const auto& layout = file.content().layout;
                const auto assessments = chosenBy(file, only, {});
                evaluation::Recording recording =
                    recordingOf(name, columns, available,
                                {unitLength(std::string(layout.time.resolution.name)),
                                 reachOf(file.content(), assessments),
                                 namesToRead(file.content(), assessments)});
                if (dateOfZero) {
                    recording.clock = clockFrom(seconds(*dateOfZero), layout.time.zone);
                }
                return recording;
            },
            py::arg("file"), py::arg("only"), py::arg("name"), py::arg("columns"),
            py::arg("available"), py::arg("date_of_zero"))
        .def_static(
            "for_formula",
            [](const evaluation::ParsedFormula& formula, const std::string& name,
               const std::vector<Column>& columns, const std::vector<std::string>& available) {
                return recordingOf(name, columns, available,
                                   {evaluation::nanosecond, reachOf(formula), formula.names()});
            },
            py::arg("formula"), py::arg("name"), py::arg("columns"), py::arg("available"))
        .def_static("read", &readFor, py::arg("formula"), py::arg("paths"));
}

}  // namespace vorm::python

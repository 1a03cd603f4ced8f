#include "file.hpp"

#include <vorm/evaluation/assessment/assessment_choice.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/table/column_header.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/time/counted_time.hpp>
#include <vorm/evaluation/time/time_notation.hpp>
#include <vorm/evaluation/time/time_zone.hpp>

#include <pybind11/stl.h>

namespace vorm::python {

namespace py = pybind11;
using evaluation::EqualTimes;
using evaluation::SignalLayout;
using evaluation::TimeOrigin;

namespace {

std::optional<std::string> textOf(const std::optional<evaluation::ExactTime>& time) {
    return time ? std::optional(time->text()) : std::nullopt;
}

std::optional<std::string> nameOf(const std::optional<evaluation::TimeUnit>& unit) {
    return unit ? std::optional<std::string>(unit->name) : std::nullopt;
}

std::string nameOf(EqualTimes equalTimes) {
    switch (equalTimes) {
        case EqualTimes::First:
            return "first";
        case EqualTimes::Last:
            return "last";
        case EqualTimes::Refuse:
            break;
    }
    return "error";
}

bool isLinear(assessments::INTERPOLATION_METHOD interpolation) {
    return interpolation == assessments::INTERPOLATION_METHOD::LINEAR;
}

// What kind of origin, and the text that belongs to it.
std::pair<std::string, std::string> originOf(const TimeOrigin::Choice& origin) {
    if (const auto* file = std::get_if<TimeOrigin::FirstOf>(&origin)) {
        return {"file", file->file};
    }
    if (const auto* time = std::get_if<TimeOrigin::At>(&origin)) {
        return {"time", time->time};
    }
    return {std::holds_alternative<TimeOrigin::FirstSample>(origin) ? "first" : "recorded", ""};
}

using Members = std::pair<std::string, std::vector<std::string>>;

// The name and the members of an enumeration that declares them.
std::optional<Members> membersOf(const SignalLayout& signal) {
    return signal.type && signal.type->isEnumerated() && !signal.type->enumeration->members.empty()
               ? std::optional(
                     Members(signal.type->enumeration->name, signal.type->enumeration->members))
               : std::nullopt;
}

std::optional<std::string> declaredType(const SignalLayout& signal) {
    if (!signal.type) {
        return std::nullopt;
    }
    return signal.type->isEnumerated() ? "enum" : typeText(*signal.type);
}

// The time of a date that is written in one of the usual ways; nothing for one that means several
// days, and for any other text.
std::optional<std::string> dateSeconds(const std::string& text, const std::string& zone) {
    std::vector<evaluation::TimeNotation> notations = evaluation::notationsOf(text);
    std::erase(notations, evaluation::TimeNotation::Clock);
    const auto time =
        notations.size() == 1 ? evaluation::read(text, notations.front()) : std::nullopt;
    if (!time) {
        return std::nullopt;
    }
    const bool isLocal = !time->hasOffset && !zone.empty();
    return (isLocal ? evaluation::TimeZone::called(zone).utcOf(time->time) : time->time).text();
}

void addDeclaration(py::module_& module) {
    py::class_<SignalLayout>(module, "Declaration")
        .def_readonly("name", &SignalLayout::name)
        .def_readonly("column", &SignalLayout::column)
        .def_readonly("file", &SignalLayout::file)
        .def_readonly("unit", &SignalLayout::unit)
        .def_property_readonly("type", &declaredType)
        .def_property_readonly("members", &membersOf)
        .def_property_readonly("is_linear",
                               [](const SignalLayout& signal) {
                                   return signal.interpolation
                                              ? std::optional(isLinear(*signal.interpolation))
                                              : std::nullopt;
                               })
        .def_property_readonly("max_gap",
                               [](const SignalLayout& signal) { return textOf(signal.maxGap); })
        .def_property_readonly("equal_times", [](const SignalLayout& signal) {
            return signal.equalTimes ? std::optional(nameOf(*signal.equalTimes)) : std::nullopt;
        });
}

File fileOf(const std::string& text, const std::string& name,
            const std::vector<std::pair<std::string, std::string>>& parameters) {
    std::vector<evaluation::ParameterSetting> settings;
    for (const auto& [parameter, value] : parameters) {
        settings.push_back({parameter, value, "parameters"});
    }
    return File(evaluation::parseAssessmentFile(text, name, settings));
}

py::dict parametersOf(const File& file) {
    py::dict values;
    for (const evaluation::FormulaParameter& parameter : file.content().parameters) {
        values[py::str(parameter.name)] = valueOf(parameter);
    }
    return values;
}

}  // namespace

std::vector<const evaluation::Assessment*> chosenBy(const File& file,
                                                    const std::vector<std::string>& only,
                                                    const std::vector<std::string>& skip) {
    evaluation::RunOptions options;
    options.only = only;
    options.skip = skip;
    return chosenAssessments(file.content(), options);
}

void addFiles(py::module_& module) {
    addDeclaration(module);
    py::class_<File>(module, "File")
        .def(py::init(&fileOf), py::arg("text"), py::arg("name"), py::arg("parameters"))
        .def_property_readonly("name", [](const File& file) { return file.content().name; })
        .def_property_readonly("parameters", &parametersOf)
        .def_property_readonly("title", [](const File& file) { return file.content().title; })
        .def_property_readonly(
            "assessments",
            [](const File& file) {
                std::vector<std::string> names;
                for (const evaluation::Assessment& assessment : file.content().assessments) {
                    names.push_back(assessment.name);
                }
                return names;
            })
        .def(
            "chosen",
            [](const File& file, const std::vector<std::string>& only,
               const std::vector<std::string>& skip) {
                std::vector<std::string> names;
                for (const evaluation::Assessment* assessment : chosenBy(file, only, skip)) {
                    names.push_back(assessment->name);
                }
                return names;
            },
            py::arg("only"), py::arg("skip"))
        .def(
            "names_to_read",
            [](const File& file, const std::vector<std::string>& only) {
                return namesToRead(file.content(), chosenBy(file, only, {}));
            },
            py::arg("only"))
        .def_property_readonly("declarations",
                               [](const File& file) { return file.content().layout.signals; })
        .def_property_readonly(
            "is_linear",
            [](const File& file) { return isLinear(file.content().layout.interpolation); })
        .def_property_readonly(
            "max_gap", [](const File& file) { return textOf(file.content().layout.maxGap); })
        .def_property_readonly(
            "equal_times",
            [](const File& file) { return nameOf(file.content().layout.time.equalTimes); })
        .def_property_readonly("missing",
                               [](const File& file) { return file.content().layout.missing; })
        .def_property_readonly(
            "time_unit", [](const File& file) { return nameOf(file.content().layout.time.unit); })
        .def_property_readonly("zone",
                               [](const File& file) { return file.content().layout.time.zone; })
        .def_property_readonly(
            "origin", [](const File& file) { return originOf(file.content().layout.time.origin); });

    module.def("read_text", &evaluation::readFile, py::arg("path"));
    module.def(
        "column_header",
        [](const std::string& text) {
            const auto header = evaluation::columnHeaders({text}).front();
            return std::pair(header.name, header.unit);
        },
        py::arg("text"));
    module.def(
        "time_unit_in_name",
        [](const std::string& name) {
            return nameOf(timeUnitIn(evaluation::columnHeaders({name}).front()));
        },
        py::arg("name"));
    module.def(
        "is_time_name",
        [](const std::string& name) {
            return timeNameOf(evaluation::columnHeaders({name}).front()) >=
                   evaluation::TimeName::Usual;
        },
        py::arg("name"));
    module.def("date_seconds", &dateSeconds, py::arg("text"), py::arg("zone"));
    module.def(
        "number_seconds",
        [](const std::string& text, const std::string& unit) {
            return textOf(evaluation::ExactTime::of(text, evaluation::timeUnitOf(unit)->length));
        },
        py::arg("text"), py::arg("unit"));
    module.def(
        "epoch_unit",
        [](double number) {
            const auto time = evaluation::ExactTime::ofSeconds(number);
            return time ? nameOf(evaluation::epochUnitOf(*time)) : std::nullopt;
        },
        py::arg("number"));
}

}  // namespace vorm::python

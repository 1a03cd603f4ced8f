#include "assessment_file.hpp"

#include <vorm/evaluation/assessment/layout_reading.hpp>
#include <vorm/evaluation/assessment/parameter_reading.hpp>
#include <vorm/evaluation/assessment/toml_table.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

namespace vorm::evaluation {
namespace {

using detail::TomlDocument;
using detail::TomlTable;

class FileReader {
public:
    FileReader(const TomlDocument& document, const std::vector<ParameterSetting>& settings)
        : document_(document), settings_(settings) {
        file_.name = document.name;
    }

    AssessmentFile read() {
        TomlTable root(document_, document_.root, "the file");
        file_.title = root.text("title").value_or("");
        if (auto table = root.table("recording", "[recording]")) {
            detail::readLayout(*table, file_.layout);
        }
        if (auto table = root.table("enumerations", "[enumerations]")) {
            table->forEach([this](const std::string& name, const toml::node& node) {
                readEnumeration(name, node);
            });
        }
        if (auto table = root.table("signals", "[signals]")) {
            table->forEach([this](const std::string& name, const toml::node& node) {
                readSignal(name, node);
            });
        }
        readParameters(root);
        if (auto table = root.table("definitions", "[definitions]")) {
            table->forEach([this](const std::string& name, const toml::node& node) {
                readDefinition(name, node);
            });
        }
        readAssessments(root.node("assessment"));
        root.refuseOthers();
        return std::move(file_);
    }

private:
    void readEnumeration(const std::string& name, const toml::node& node) {
        const toml::array* list = node.as_array();
        auto enumeration = std::make_shared<Enumeration>();
        enumeration->name = name;
        if (list != nullptr && !valueTypeOf(name) && name != "enum") {
            for (const toml::node& member : *list) {
                if (const auto* text = member.as_string()) {
                    enumeration->members.push_back(text->get());
                }
            }
            const std::set<std::string> distinct(enumeration->members.begin(),
                                                 enumeration->members.end());
            if (!list->empty() && distinct.size() == list->size()) {
                enumerations_[name] = std::move(enumeration);
                return;
            }
        }
        document_.fail(node, "'" + name + "' is no enumeration",
                       "write its members in order, each once: " + name + R"( = ["off", "on"])");
    }

    void readSignal(const std::string& name, const toml::node& node) {
        SignalLayout signal;
        signal.name = name;
        signal.where = document_.placeOf(node);
        if (const auto* column = node.as_string()) {
            signal.column = column->get();
        } else if (const auto* keys = node.as_table()) {
            TomlTable table(document_, *keys, "the signal '" + name + "'");
            signal.column = table.text("column").value_or("");
            signal.file = table.text("file").value_or("");
            signal.type = typeOf(table, name);
            signal.interpolation = detail::interpolation(table);
            signal.unit = table.text("unit").value_or("");
            signal.maxGap = detail::maxGap(table);
            signal.equalTimes = detail::equalTimes(table);
            table.refuseOthers();
        } else {
            document_.fail(node, "the signal '" + name + "' has to be a column name or a table",
                           name + R"( = { column = "...", interpolation = "linear" })");
        }
        file_.layout.signals.push_back(std::move(signal));
    }

    std::optional<SignalType> typeOf(TomlTable& table, const std::string& signal) const {
        const auto name = table.text("type");
        if (!name) {
            return std::nullopt;
        }
        if (const auto index = valueTypeOf(*name)) {
            return SignalType{*index, nullptr};
        }
        if (*name == "enum") {
            return SignalType::of(std::make_shared<Enumeration>(Enumeration{signal, {}}));
        }
        if (const auto found = enumerations_.find(*name); found != enumerations_.end()) {
            return SignalType::of(found->second);
        }
        std::vector<std::string> types = valueTypeNames();
        types.emplace_back("enum");
        for (const auto& [enumeration, members] : enumerations_) {
            types.push_back(enumeration);
        }
        document_.fail(*table.node("type"), "there is no type '" + *name + "'",
                       "it is one of " + quotedList(types, types.size()));
    }

    void readParameters(TomlTable& root) {
        if (auto table = root.table("parameters", "[parameters]")) {
            file_.parameters = detail::readParameters(document_, *table);
        }
        detail::setParameters(file_.parameters, settings_, document_.name);
        parameters_ = std::make_shared<const FormulaParameters>(file_.parameters);
    }

    SourcedFormula formula(const toml::value<std::string>& text) const {
        FormulaSource source = document_.formulaAt(text);
        try {
            return {source, ParsedFormula(text.get(), parameters_)};
        } catch (const FormulaError& error) {
            throw placed(error, source);
        }
    }

    void readDefinition(const std::string& name, const toml::node& node) {
        const auto* text = node.as_string();
        if (text == nullptr) {
            document_.fail(node, "the definition '" + name + "' has to be a formula in quotes",
                           name + " = \"speed > 3\"");
        }
        if (name.empty()) {
            document_.fail(node, "the definition has no name",
                           "name it, so that formulas can use it");
        }
        file_.definitions.emplace(name, formula(*text));
    }

    void readAssessments(const toml::node* node) {
        const toml::array* list = node == nullptr ? nullptr : node->as_array();
        if (node != nullptr && (list == nullptr || !list->is_array_of_tables())) {
            document_.fail(*node, "'assessment' has to be a list of tables",
                           "begin each with a line [[assessment]]");
        }
        if (list == nullptr || list->empty()) {
            InputProblem problem;
            problem.message = "there is no assessment in the file";
            problem.where.file = document_.name;
            problem.advice = R"(add [[assessment]] with name = "..." and formula = "...")";
            throw InputError(std::move(problem));
        }
        for (const toml::node& element : *list) {
            readAssessment(*element.as_table());
        }
    }

    static Severity severityOf(TomlTable& table) {
        const auto choice = table.choice("severity", {severityNames.begin(), severityNames.end()});
        return static_cast<Severity>(choice.value_or(0));
    }

    static std::vector<std::string> tagsOf(TomlTable& table) {
        std::vector<std::string> tags = table.texts("tags").value_or(std::vector<std::string>());
        std::set<std::string> known;
        for (const std::string& tag : tags) {
            if (tag.empty() || !known.insert(tag).second) {
                table.fail("tags",
                           tag.empty() ? "a tag is empty" : "the tag '" + tag + "' is given twice");
            }
        }
        return tags;
    }

    void readAssessment(const toml::table& keys) {
        TomlTable table(document_, keys, "[[assessment]]");
        const auto& name = table.requiredText("name");
        for (const Assessment& other : file_.assessments) {
            if (other.name == name.get()) {
                document_.fail(name, "there are two assessments '" + other.name + "'",
                               "give one of them another name");
            }
        }
        Assessment assessment{name.get(),
                              table.text("description").value_or(""),
                              severityOf(table),
                              tagsOf(table),
                              formula(table.requiredText("formula")),
                              table.rangeLimit("from"),
                              table.rangeLimit("to")};
        if (assessment.from && assessment.to && assessment.to->isSurelyBefore(*assessment.from)) {
            document_.fail(*table.node("to"), "'to' is before 'from'");
        }
        table.refuseOthers();
        file_.assessments.push_back(std::move(assessment));
    }

    const TomlDocument& document_;
    const std::vector<ParameterSetting>& settings_;
    AssessmentFile file_;
    std::shared_ptr<const FormulaParameters> parameters_;
    std::map<std::string, std::shared_ptr<const Enumeration>> enumerations_;
};

}  // namespace

const Assessment& AssessmentFile::find(std::string_view assessment) const {
    std::vector<std::string> names;
    for (const Assessment& candidate : assessments) {
        if (candidate.name == assessment) {
            return candidate;
        }
        names.push_back(candidate.name);
    }
    InputProblem problem;
    problem.message = "there is no assessment '" + std::string(assessment) + "'";
    problem.where.file = name;
    problem.advice = suggestion(assessment, names);
    if (problem.advice.empty()) {
        problem.advice = "it has " + quotedList(names);
    }
    throw InputError(std::move(problem));
}

AssessmentFile parseAssessmentFile(std::string_view text, const std::string& name,
                                   const std::vector<ParameterSetting>& settings) {
    const TomlDocument document(text, name);
    return FileReader(document, settings).read();
}

AssessmentFile readAssessmentFile(const std::string& path,
                                  const std::vector<ParameterSetting>& settings) {
    return parseAssessmentFile(readFile(path), path == "-" ? "standard input" : path, settings);
}

}  // namespace vorm::evaluation

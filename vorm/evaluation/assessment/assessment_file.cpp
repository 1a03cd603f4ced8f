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
    /// Without a list of errors the first one is thrown.
    FileReader(const TomlDocument& document, const std::vector<ParameterSetting>& settings,
               PartlyReadFile& result, bool goesOn)
        : document_(document), settings_(settings), result_(result), goesOn_(goesOn) {
        file_.name = document.name;
    }

    void read() {
        TomlTable root(document_, document_.root, "the file");
        attempt([&] { file_.title = root.text("title").value_or(""); });
        attempt([&] {
            if (auto table = root.table("recording", "[recording]")) {
                detail::readLayout(*table, file_.layout);
            }
        });
        readEach(root, "enumerations", &FileReader::readEnumeration);
        readEach(root, "signals", &FileReader::readSignal);
        hasParameters_ = attempt([&] { readParameters(root); });
        detail::setParameters(file_.parameters, settings_, document_.name);
        parameters_ = std::make_shared<const FormulaParameters>(file_.parameters);
        readEach(root, "definitions", &FileReader::readDefinition);
        attempt([&] { readAssessments(root.node("assessment")); });
        attempt([&] { root.refuseOthers(); });
    }

private:
    // Whether it can be read.
    template <class Read>
    bool attempt(Read read) {
        if (!goesOn_) {
            read();
            return true;
        }
        try {
            read();
            return true;
        } catch (const InputError& error) {
            result_.errors.push_back(error);
            return false;
        }
    }

    void readEach(TomlTable& root, const char* key,
                  void (FileReader::*readOne)(const std::string&, const toml::node&)) {
        attempt([&] {
            if (auto table = root.table(key, "[" + std::string(key) + "]")) {
                table->forEach([&](const std::string& name, const toml::node& node) {
                    attempt([&] { (this->*readOne)(name, node); });
                });
            }
        });
    }

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
            requireLines(table, signal);
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

    void requireLines(TomlTable& table, const SignalLayout& signal) const {
        const bool isLinear = signal.interpolation == assessments::INTERPOLATION_METHOD::LINEAR;
        if (isLinear && signal.type && signal.type->isKnown() &&
            !hasLines(*signal.type->valueType)) {
            document_.fail(*table.node("interpolation"),
                           "the signal '" + signal.name + "' is of type " + typeText(*signal.type) +
                               ", which has no linear interpolation",
                           "leave it out, or declare type = \"double\" for numbers");
        }
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
    }

    SourcedFormula formula(const toml::value<std::string>& text) const {
        FormulaSource source = document_.formulaAt(text);
        try {
            return {source, ParsedFormula(text.get(), parameters_)};
        } catch (const FormulaError& error) {
            throw placed(error, source);
        }
    }

    // Whether a formula can be read, or its parameters are what keeps it from that.
    bool hasItsParameters(const toml::value<std::string>& text) const {
        return hasParameters_ || text.get().find('$') == std::string::npos;
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
        result_.unreadDefinitions.insert(name);
        if (hasItsParameters(*text)) {
            file_.definitions.emplace(name, formula(*text));
            result_.unreadDefinitions.erase(name);
        }
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
            attempt([&] { readAssessment(*element.as_table()); });
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
        std::string name;
        std::string description;
        Severity severity = Severity::Error;
        std::vector<std::string> tags;
        std::optional<SourcedFormula> requirement;
        std::optional<RangeLimit> from;
        std::optional<RangeLimit> to;
        const bool isNamed = attempt([&] { name = newName(table); });
        attempt([&] { description = table.text("description").value_or(""); });
        attempt([&] { severity = severityOf(table); });
        attempt([&] { tags = tagsOf(table); });
        attempt([&] { requirement = requirementOf(table); });
        attempt([&] { from = table.rangeLimit("from"); });
        attempt([&] { to = table.rangeLimit("to"); });
        attempt([&] {
            if (from && to && to->isSurelyBefore(*from)) {
                document_.fail(*table.node("to"), "'to' is before 'from'");
            }
        });
        attempt([&] { table.refuseOthers(); });
        if (isNamed && requirement) {
            file_.assessments.push_back(
                {name, description, severity, tags, *requirement, from, to});
        }
    }

    const std::string& newName(TomlTable& table) {
        const auto& name = table.requiredText("name");
        if (!names_.insert(name.get()).second) {
            document_.fail(name, "there are two assessments '" + name.get() + "'",
                           "give one of them another name");
        }
        if (name.get().empty()) {
            document_.fail(name, "the assessment has no name", "name it for the reports");
        }
        return name.get();
    }

    // None where only its parameters are wrong.
    std::optional<SourcedFormula> requirementOf(TomlTable& table) const {
        const auto& text = table.requiredText("formula");
        return hasItsParameters(text) ? std::optional(formula(text)) : std::nullopt;
    }

    const TomlDocument& document_;
    const std::vector<ParameterSetting>& settings_;
    PartlyReadFile& result_;
    bool goesOn_;
    AssessmentFile& file_ = result_.file;
    bool hasParameters_ = true;
    std::set<std::string> names_;
    std::shared_ptr<const FormulaParameters> parameters_;
    std::map<std::string, std::shared_ptr<const Enumeration>> enumerations_;
};

std::string nameOfFile(const std::string& path) {
    return path == "-" ? "standard input" : path;
}

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
    PartlyReadFile result;
    FileReader(document, settings, result, false).read();
    return std::move(result.file);
}

PartlyReadFile parsePartly(std::string_view text, const std::string& name,
                           const std::vector<ParameterSetting>& settings) {
    const TomlDocument document(text, name);
    PartlyReadFile result;
    FileReader(document, settings, result, true).read();
    return result;
}

AssessmentFile readAssessmentFile(const std::string& path,
                                  const std::vector<ParameterSetting>& settings) {
    return parseAssessmentFile(readFile(path), nameOfFile(path), settings);
}

PartlyReadFile readPartly(const std::string& path, const std::vector<ParameterSetting>& settings) {
    return parsePartly(readFile(path), nameOfFile(path), settings);
}

}  // namespace vorm::evaluation

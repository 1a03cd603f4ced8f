#include "assessment_file.hpp"

#include <vorm/evaluation/assessment/fault_collection.hpp>
#include <vorm/evaluation/assessment/layout_reading.hpp>
#include <vorm/evaluation/assessment/parameter_reading.hpp>
#include <vorm/evaluation/assessment/signal_declarations.hpp>
#include <vorm/evaluation/assessment/toml_table.hpp>
#include <vorm/evaluation/formula/token.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/fingerprint.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <utility>

namespace vorm::evaluation {
namespace {

using detail::TomlDocument;
using detail::TomlTable;

class FileReader {
public:
    /// Faults are collected in the result, or the first one is thrown.
    FileReader(const TomlDocument& document, PartlyReadFile& result, bool collectsFaults)
        : document_(document),
          result_(result),
          file_(result.file),
          faults_(collectsFaults ? &result.errors : nullptr),
          declarations_(document) {
        file_.name = document.name;
        file_.fingerprint = Fingerprint().add(document.text).text();
    }

    void read(const std::vector<ParameterSetting>& settings) {
        TomlTable root(document_, document_.root, "the file");
        faults_.attempt([&] { file_.title = root.text("title").value_or(""); });
        result_.hasLayout = readLayout(root);
        readEach(root, "enumerations", &FileReader::readEnumeration);
        result_.hasLayout = readEach(root, "signals", &FileReader::readSignal) && result_.hasLayout;
        hasParameters_ = readEach(root, "parameters", &FileReader::readParameter);
        setParameters(settings);
        readEach(root, "definitions", &FileReader::readDefinition);
        const toml::node* assessments = root.node("assessment");
        const std::size_t before = result_.errors.size();
        root.refuseOthers(faults_);
        // A key in another spelling may be why there are none.
        if (assessments != nullptr || result_.errors.size() == before) {
            faults_.attempt([&] { readAssessments(assessments); });
        }
    }

private:
    bool readLayout(TomlTable& root) {
        const std::size_t before = result_.errors.size();
        faults_.attempt([&] {
            if (auto table = root.table("recording", "[recording]")) {
                detail::readLayout(*table, file_.layout, faults_);
            }
        });
        return result_.errors.size() == before;
    }

    // Whether it is a table, if there is one.
    bool readEach(TomlTable& root, const char* key,
                  void (FileReader::*readOne)(const std::string&, const toml::node&)) {
        return faults_.attempt([&] {
            if (auto table = root.table(key, "[" + std::string(key) + "]")) {
                table->forEach([&](const std::string& name, const toml::node& node) {
                    faults_.attempt([&] { (this->*readOne)(name, node); });
                });
            }
        });
    }

    void readEnumeration(const std::string& name, const toml::node& node) {
        declarations_.readEnumeration(name, node);
    }

    void readSignal(const std::string& name, const toml::node& node) {
        result_.unreadNames.insert(name);
        if (auto signal = declarations_.signal(name, node)) {
            file_.layout.signals.push_back(std::move(*signal));
            result_.unreadNames.erase(name);
        }
    }

    void readParameter(const std::string& name, const toml::node& node) {
        unreadParameters_.insert(name);
        file_.parameters.push_back(detail::readParameter(document_, name, node));
        unreadParameters_.erase(name);
    }

    void setParameters(std::vector<ParameterSetting> settings) {
        std::erase_if(settings, [&](const ParameterSetting& setting) {
            return isUnreadParameter(setting.name);
        });
        detail::setParameters(file_.parameters, settings, document_.name);
        parameters_ = std::make_shared<const FormulaParameters>(file_.parameters);
    }

    bool isUnreadParameter(std::string_view name) const {
        return !hasParameters_ || unreadParameters_.contains(name);
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
        const std::vector<Token> words = tokensOf(text.get());
        return std::none_of(words.begin(), words.end(), [&](const Token& word) {
            return word.kind == TokenKind::Parameter && isUnreadParameter(word.text.substr(1));
        });
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
        result_.unreadNames.insert(name);
        if (hasItsParameters(*text)) {
            file_.definitions.emplace(name, formula(*text));
            result_.unreadNames.erase(name);
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
            faults_.attempt([&] { readAssessment(*element.as_table()); });
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
        const bool isNamed = faults_.attempt([&] { name = newName(table); });
        faults_.attempt([&] { description = table.text("description").value_or(""); });
        faults_.attempt([&] { severity = severityOf(table); });
        faults_.attempt([&] { tags = tagsOf(table); });
        faults_.attempt([&] { requirement = requirementOf(table); });
        faults_.attempt([&] { from = table.rangeLimit("from"); });
        faults_.attempt([&] { to = table.rangeLimit("to"); });
        faults_.attempt([&] {
            if (from && to && to->isSurelyBefore(*from)) {
                document_.fail(*table.node("to"), "'to' is before 'from'");
            }
        });
        table.refuseOthers(faults_);
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
    PartlyReadFile& result_;
    AssessmentFile& file_;
    const detail::FaultCollection faults_;
    detail::SignalDeclarations declarations_;
    bool hasParameters_ = true;
    std::set<std::string, std::less<>> unreadParameters_;
    std::shared_ptr<const FormulaParameters> parameters_;
    std::set<std::string> names_;
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
    FileReader(document, result, false).read(settings);
    return std::move(result.file);
}

PartlyReadFile parsePartly(std::string_view text, const std::string& name,
                           const std::vector<ParameterSetting>& settings) {
    const TomlDocument document(text, name);
    PartlyReadFile result;
    FileReader(document, result, true).read(settings);
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

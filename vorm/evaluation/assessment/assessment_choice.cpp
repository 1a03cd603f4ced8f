#include "assessment_choice.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

#include <fnmatch.h>
#include <locale.h>

#include <algorithm>
#include <set>

namespace vorm::evaluation {
namespace {

constexpr std::string_view tagMark = "tag:";

// Within it a character is one of UTF-8, as files write it whatever the terminal does.
class CharactersOfUtf8 {
public:
    CharactersOfUtf8() : before_(::uselocale(locale())) {}
    ~CharactersOfUtf8() { ::uselocale(before_); }
    CharactersOfUtf8(const CharactersOfUtf8&) = delete;
    CharactersOfUtf8& operator=(const CharactersOfUtf8&) = delete;

private:
    // Where a system has none, characters stay bytes.
    static locale_t locale() {
        static const locale_t utf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return utf8;
    }

    locale_t before_;
};

// The names among these that a text chooses.
std::set<std::string> chosenNames(const std::string& text, const std::vector<std::string>& names) {
    if (std::find(names.begin(), names.end(), text) != names.end()) {
        return {text};
    }
    const CharactersOfUtf8 characters;
    std::set<std::string> chosen;
    for (const std::string& name : names) {
        if (::fnmatch(text.c_str(), name.c_str(), 0) == 0) {
            chosen.insert(name);
        }
    }
    return chosen;
}

std::vector<std::string> tagsIn(const AssessmentFile& file) {
    std::vector<std::string> tags;
    for (const Assessment& assessment : file.assessments) {
        for (const std::string& tag : assessment.tags) {
            if (std::find(tags.begin(), tags.end(), tag) == tags.end()) {
                tags.push_back(tag);
            }
        }
    }
    return tags;
}

std::vector<std::string> namesIn(const AssessmentFile& file) {
    std::vector<std::string> names;
    for (const Assessment& assessment : file.assessments) {
        names.push_back(assessment.name);
    }
    return names;
}

// The assessments of a file that a text chooses.
class Chooser {
public:
    explicit Chooser(const AssessmentFile& file)
        : file_(file), names_(namesIn(file)), tags_(tagsIn(file)) {}

    std::set<const Assessment*> chosen(const std::vector<std::string>& texts) const {
        std::set<const Assessment*> all;
        for (const std::string& text : texts) {
            all.merge(chosen(text));
        }
        return all;
    }

private:
    std::set<const Assessment*> chosen(const std::string& text) const {
        const bool isName = std::find(names_.begin(), names_.end(), text) != names_.end();
        if (text.starts_with(tagMark) && !isName) {
            return withTag(text.substr(tagMark.size()));
        }
        const std::set<std::string> names = chosenNames(text, names_);
        if (names.empty()) {
            file_.find(text);  // tells that there is none
        }
        return those([&](const Assessment& assessment) { return names.contains(assessment.name); });
    }

    std::set<const Assessment*> withTag(const std::string& text) const {
        const std::set<std::string> tags = chosenNames(text, tags_);
        if (tags.empty()) {
            const std::string near = suggestion(text, tags_);
            failAt({file_.name, 0, 0}, "there is no assessment with the tag '" + text + "'",
                   !near.empty()   ? near
                   : tags_.empty() ? "none of them has tags"
                                   : "there is " + quotedList(tags_));
        }
        return those([&](const Assessment& assessment) {
            return std::any_of(assessment.tags.begin(), assessment.tags.end(),
                               [&](const std::string& tag) { return tags.contains(tag); });
        });
    }

    template <class IsMeant>
    std::set<const Assessment*> those(IsMeant isMeant) const {
        std::set<const Assessment*> found;
        for (const Assessment& assessment : file_.assessments) {
            if (isMeant(assessment)) {
                found.insert(&assessment);
            }
        }
        return found;
    }

    const AssessmentFile& file_;
    const std::vector<std::string> names_;
    const std::vector<std::string> tags_;
};

}  // namespace

std::vector<const Assessment*> chosenAssessments(const AssessmentFile& file,
                                                 const RunOptions& options) {
    const Chooser chooser(file);
    const auto only = chooser.chosen(options.only);
    const auto skipped = chooser.chosen(options.skip);
    std::vector<const Assessment*> assessments;
    for (const Assessment& assessment : file.assessments) {
        if ((options.only.empty() || only.contains(&assessment)) &&
            !skipped.contains(&assessment)) {
            assessments.push_back(&assessment);
        }
    }
    if (assessments.empty()) {
        failAt({file.name, 0, 0}, "no assessment is left to be run",
               "what is to be skipped is skipped also where it is chosen");
    }
    return assessments;
}

}  // namespace vorm::evaluation

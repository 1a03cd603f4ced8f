#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/layout_keys.hpp>
#include <vorm/evaluation/text/characters.hpp>

#include <functional>
#include <sstream>

namespace vorm::evaluation::test {
namespace {

using assessments::INTERPOLATION_METHOD;
using Texts = std::vector<std::string>;

RecordingLayout layoutOf(const std::string& key, const Texts& texts) {
    return evaluation::layoutWith({}, {{key, texts, "--" + key}});
}

using L = const RecordingLayout&;

// A key, one value, and another one; each with whether a layout has it.
struct Row {
    const char* key;
    Texts before;
    std::function<bool(L)> isBefore;
    Texts after;
    std::function<bool(L)> isAfter;
};

// What is read is the one value or the other.
template <class Read, class Value>
Row valueRow(const char* key, const Texts& before, const Texts& after, const Value& one,
             const Value& other, Read read) {
    return {key, before, [=](L l) { return read(l) == one; }, after,
            [=](L l) { return read(l) == other; }};
}

// The same, where it is the text that was given.
template <class Read>
Row textRow(const char* key, const std::string& before, const std::string& after, Read read) {
    return valueRow(key, {before}, {after}, before, after, read);
}

const std::vector<Row> rows{
    valueRow("encoding", {"latin-1"}, {"utf-8"}, DeclaredEncoding::Latin1, DeclaredEncoding::Utf8,
             [](L l) { return l.encoding; }),
    valueRow("header", {"14"}, {"1"}, 14U, 1U, [](L l) { return l.header; }),
    valueRow("first_row", {"4"}, {"2"}, 4U, 2U, [](L l) { return l.firstRow; }),
    valueRow("names", {"a", "b"}, {"c"}, Texts{"a", "b"}, Texts{"c"}, [](L l) { return l.names; }),
    valueRow("bad_rows", {"skip"}, {"error"}, BadRows::Skip, BadRows::Refuse,
             [](L l) { return l.badRows; }),
    valueRow("decimal", {"comma"}, {"point"}, ',', '.', [](L l) { return l.decimal; }),
    valueRow("missing", {"?", "none"}, {"x"}, Texts{"?", "none"}, Texts{"x"},
             [](L l) { return l.missing; }),
    textRow("zone", "Europe/Berlin", "UTC", [](L l) { return l.time.zone; }),
    valueRow("times_back", {"split"}, {"drop"}, TimesBack::Split, TimesBack::Drop,
             [](L l) { return l.time.timesBack; }),
    valueRow("delimiter", {";"}, {"|"}, ';', '|', [](L l) { return l.delimiter; }),
    valueRow("time", {"Date", "Clock"}, {"T"}, Texts{"Date", "Clock"}, Texts{"T"},
             [](L l) { return l.time.columns; }),
    textRow("unit", "ms", "h", [](L l) { return l.time.unit.value().name; }),
    textRow("time_format", "%H:%M", "", [](L l) { return l.time.format; }),
    textRow("resolution", "ps", "s", [](L l) { return l.time.resolution.name; }),
    textRow("origin", "-46408.6", "first",
            [](L l) {
                const auto* const at = std::get_if<TimeOrigin::At>(&l.time.origin);
                const bool isFirst = std::holds_alternative<TimeOrigin::FirstSample>(l.time.origin);
                return at != nullptr ? at->time : isFirst ? "first" : "";
            }),
    valueRow("equal_times", {"last"}, {"error"}, EqualTimes::Last, EqualTimes::Refuse,
             [](L l) { return l.time.equalTimes; }),
    valueRow("form", {"long"}, {"long"}, true, true, [](L l) { return l.longForm.has_value(); }),
    textRow("name_column", "n", "N", [](L l) { return l.longForm.value().nameColumn; }),
    textRow("value_column", "v", "V", [](L l) { return l.longForm.value().valueColumn; }),
    valueRow("interpolation", {"linear"}, {"held"}, INTERPOLATION_METHOD::LINEAR,
             INTERPOLATION_METHOD::ZOH, [](L l) { return l.interpolation; }),
    valueRow("max_gap", {"0.5"}, {"20 ms"}, std::string("0.5"), std::string("0.02"),
             [](L l) { return l.maxGap.value().text(); }),
};

TEST(LayoutKeys, EachChangesWhatItSaysAndNothingElse) {
    Texts names;
    for (const LayoutKey& key : layoutKeys()) {
        names.push_back(key.name);
    }
    ASSERT_EQ(names.size(), rows.size());
    std::vector<LayoutSetting> settings;
    for (const Row& row : rows) {
        EXPECT_EQ(std::count(names.begin(), names.end(), row.key), 1) << row.key;
        settings.insert(settings.begin(), {row.key, row.before, ""});
    }
    const RecordingLayout before = evaluation::layoutWith(declaring({declared("x")}), settings);
    for (const Row& changed : rows) {
        const auto after = evaluation::layoutWith(before, {{changed.key, changed.after, ""}});
        for (const Row& row : rows) {
            EXPECT_TRUE(&row == &changed ? row.isAfter(after) : row.isBefore(after))
                << row.key << " after a change of " << changed.key;
        }
        EXPECT_EQ(after.signals.size(), 1U);
    }
}

TEST(LayoutKeys, TheWideFormHasNoColumnsOfTheLongOne) {
    const auto narrow = evaluation::layoutWith({}, {{"form", {"long"}, ""}});
    EXPECT_FALSE(evaluation::layoutWith(narrow, {{"form", {"wide"}, ""}}).longForm.has_value());
}

TEST(LayoutKeys, DelimitersHaveNames) {
    for (const auto& [text, delimiter] :
         std::vector<std::pair<std::string, char>>{{",", ','},
                                                   {"comma", ','},
                                                   {"semicolon", ';'},
                                                   {"tab", '\t'},
                                                   {"\t", '\t'},
                                                   {"\\t", '\t'},
                                                   {" ", ' '},
                                                   {"t", 't'}}) {
        EXPECT_EQ(layoutOf("delimiter", {text}).delimiter, delimiter) << text;
    }
    for (const std::string text : {"", "\"", "\n", "Tab", ",,", "\\n"}) {
        EXPECT_NE(errorOf([&] { layoutOf("delimiter", {text}); }), "no error") << text;
    }
}

TEST(LayoutKeys, AllChoicesThatAreNamedAreTaken) {
    std::size_t count = 0;
    for (const LayoutKey& key : layoutKeys()) {
        std::istringstream alternatives(key.value);
        for (std::string word; std::getline(alternatives, word, '|');) {
            if (word != vorm::evaluation::lowerCase(word)) {
                continue;  // stands for others
            }
            EXPECT_NO_THROW(layoutOf(key.name, {word})) << key.name << " = " << word;
            ++count;
        }
    }
    EXPECT_GE(count, 30U);
}

TEST(LayoutKeys, ErrorsNameTheSetting) {
    EXPECT_EQ(errorOf([] { layoutOf("unit", {"parsec"}); }),
              "--unit: 'parsec' is no unit\n"
              "  it is one of 'fs', 'ps', 'ns', 'us', 'ms', 's', 'min' and 'h'");
    EXPECT_EQ(errorOf([] { layoutOf("name_column", {"n"}); }),
              "--name_column: 'name_column' needs the long form\n  set 'form' to 'long'");
    EXPECT_EQ(errorOf([] { layoutOf("uint", {"s"}); }),
              "unknown key 'uint' in the layout\n  did you mean 'unit'?");
}

}  // namespace
}  // namespace vorm::evaluation::test

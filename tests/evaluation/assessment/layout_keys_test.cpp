#include "evaluation/recording/recorded.hpp"

#include <vorm/evaluation/assessment/layout_keys.hpp>

namespace vorm::evaluation::test {
namespace {

using assessments::INTERPOLATION_METHOD;
using Texts = std::vector<std::string>;

RecordingLayout layoutOf(const std::string& key, const Texts& texts) {
    return evaluation::layoutWith({}, {{key, texts, "--" + key}});
}

// A key, one value, and another one; each with whether a layout has it.
struct Row {
    const char* key;
    Texts before;
    bool (*isBefore)(const RecordingLayout&);
    Texts after;
    bool (*isAfter)(const RecordingLayout&);
};

using L = const RecordingLayout&;

const std::vector<Row> rows{
    {"encoding",
     {"latin-1"},
     [](L l) { return l.encoding == DeclaredEncoding::Latin1; },
     {"utf-8"},
     [](L l) { return l.encoding == DeclaredEncoding::Utf8; }},
    {"header",
     {"14"},
     [](L l) { return l.header == 14U; },
     {"1"},
     [](L l) { return l.header == 1U; }},
    {"first_row",
     {"4"},
     [](L l) { return l.firstRow == 4U; },
     {"2"},
     [](L l) { return l.firstRow == 2U; }},
    {"names",
     {"a", "b"},
     [](L l) {
         return l.names == Texts{"a", "b"};
     },
     {"c"},
     [](L l) { return l.names == Texts{"c"}; }},
    {"bad_rows",
     {"skip"},
     [](L l) { return l.badRows == BadRows::Skip; },
     {"error"},
     [](L l) { return l.badRows == BadRows::Refuse; }},
    {"decimal",
     {"comma"},
     [](L l) { return l.decimal == ','; },
     {"point"},
     [](L l) { return l.decimal == '.'; }},
    {"missing",
     {"?", "none"},
     [](L l) {
         return l.missing == Texts{"?", "none"};
     },
     {"x"},
     [](L l) { return l.missing == Texts{"x"}; }},
    {"zone",
     {"Europe/Berlin"},
     [](L l) { return l.time.zone == "Europe/Berlin"; },
     {"UTC"},
     [](L l) { return l.time.zone == "UTC"; }},
    {"times_back",
     {"split"},
     [](L l) { return l.time.timesBack == TimesBack::Split; },
     {"drop"},
     [](L l) { return l.time.timesBack == TimesBack::Drop; }},
    {"delimiter",
     {";"},
     [](L l) { return l.delimiter == ';'; },
     {"|"},
     [](L l) { return l.delimiter == '|'; }},
    {"time",
     {"Date", "Clock"},
     [](L l) {
         return l.time.columns == Texts{"Date", "Clock"};
     },
     {"T"},
     [](L l) { return l.time.columns == Texts{"T"}; }},
    {"unit",
     {"ms"},
     [](L l) { return l.time.unit.value().name == "ms"; },
     {"h"},
     [](L l) { return l.time.unit.value().name == "h"; }},
    {"time_format",
     {"%H:%M"},
     [](L l) { return l.time.format == "%H:%M"; },
     {""},
     [](L l) { return l.time.format.empty(); }},
    {"resolution",
     {"ps"},
     [](L l) { return l.time.resolution.name == "ps"; },
     {"s"},
     [](L l) { return l.time.resolution.name == "s"; }},
    {"origin",
     {"-46408.6"},
     [](L l) { return std::get<TimeOrigin::At>(l.time.origin).time == "-46408.6"; },
     {"first"},
     [](L l) { return std::holds_alternative<TimeOrigin::FirstSample>(l.time.origin); }},
    {"equal_times",
     {"last"},
     [](L l) { return l.time.equalTimes == EqualTimes::Last; },
     {"error"},
     [](L l) { return l.time.equalTimes == EqualTimes::Refuse; }},
    {"form",
     {"long"},
     [](L l) { return l.longForm.has_value(); },
     {"long"},
     [](L l) { return l.longForm.has_value(); }},
    {"name_column",
     {"n"},
     [](L l) { return l.longForm.value().nameColumn == "n"; },
     {"N"},
     [](L l) { return l.longForm.value().nameColumn == "N"; }},
    {"value_column",
     {"v"},
     [](L l) { return l.longForm.value().valueColumn == "v"; },
     {"V"},
     [](L l) { return l.longForm.value().valueColumn == "V"; }},
    {"interpolation",
     {"linear"},
     [](L l) { return l.interpolation == INTERPOLATION_METHOD::LINEAR; },
     {"held"},
     [](L l) { return l.interpolation == INTERPOLATION_METHOD::ZOH; }},
    {"max_gap",
     {"0.5"},
     [](L l) { return l.maxGap.value().text() == "0.5"; },
     {"20 ms"},
     [](L l) { return l.maxGap.value().text() == "0.02"; }},
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

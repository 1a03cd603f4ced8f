#include "layout_keys.hpp"

#include <vorm/evaluation/assessment/layout_reading.hpp>

#include <algorithm>

namespace vorm::evaluation {
namespace {

using detail::LayoutReading;
using detail::TomlDocument;
using detail::TomlTable;

toml::table tableOf(const std::vector<LayoutSetting>& settings) {
    toml::table table;
    for (const LayoutSetting& setting : settings) {
        if (setting.texts.size() == 1) {
            table.insert_or_assign(setting.key, setting.texts.front());
            continue;
        }
        toml::array list;
        for (const std::string& text : setting.texts) {
            list.push_back(text);
        }
        table.insert_or_assign(setting.key, std::move(list));
    }
    return table;
}

[[noreturn]] void failAtSetting(const InputError& error, const std::string& key,
                                const std::vector<LayoutSetting>& settings) {
    InputProblem problem = error.problem();
    const auto setting =
        std::find_if(settings.begin(), settings.end(),
                     [&](const LayoutSetting& candidate) { return candidate.key == key; });
    problem.where.file = setting->source;
    throw InputError(std::move(problem));
}

}  // namespace

const std::vector<LayoutKey>& layoutKeys() {
    static const std::vector<LayoutKey> keys = [] {
        std::vector<LayoutKey> all;
        for (const LayoutReading& reading : detail::layoutReadings()) {
            all.push_back(reading.key);
        }
        return all;
    }();
    return keys;
}

RecordingLayout layoutWith(RecordingLayout layout, const std::vector<LayoutSetting>& settings) {
    const TomlDocument document({}, {});
    const toml::table given = tableOf(settings);
    TomlTable table(document, given, "the layout");
    for (const LayoutReading& reading : detail::layoutReadings()) {
        try {
            detail::readKey(reading, table, layout);
        } catch (const InputError& error) {
            failAtSetting(error, reading.key.name, settings);
        }
    }
    table.refuseOthers();
    return layout;
}

}  // namespace vorm::evaluation

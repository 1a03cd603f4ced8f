#include "table_origin.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

namespace vorm::evaluation {
namespace {

std::optional<ExactTime> earliest(std::vector<Table>& tables) {
    std::optional<ExactTime> least;
    for (Table& table : tables) {
        const auto first = table.hasTime() ? table.firstTime() : std::nullopt;
        if (first && (!least || *first < *least)) {
            least = first;
        }
        if (tables.size() > mostOpenTables) {
            table.close();
        }
    }
    return least;
}

std::optional<ExactTime> firstOf(std::vector<Table>& tables, const std::string& name) {
    std::vector<std::string> names;
    for (Table& table : tables) {
        if (table.file().isCalled(name)) {
            if (table.file().hasNamesake && table.file().path != name) {
                failAt({}, "several files " + shown(name) + " may give time 0",
                       "name the path: origin = { file = " + shown(table.file().path) + " }");
            }
            return table.firstTime();
        }
        names.push_back(table.file().name());
    }
    const std::string near = suggestion(name, names);
    failAt({}, "the recording has no file " + shown(name) + " to give time 0",
           near.empty() ? "its files are " + quotedList(names) : near);
}

ExactTime at(const Table& table, const std::string& time) {
    try {
        return table.times().front().timeOf(time);
    } catch (const InputError& error) {
        failAt({}, "the origin " + shown(time) + " is no time: " + error.problem().message,
               "write it as the files write their times");
    }
}

}  // namespace

std::vector<ExactTime> originsOf(std::vector<Table>& tables, const TimeOrigin::Choice& choice) {
    std::optional<ExactTime> common;
    if (std::holds_alternative<TimeOrigin::FirstSample>(choice)) {
        common = earliest(tables);
    } else if (const auto* first = std::get_if<TimeOrigin::FirstOf>(&choice)) {
        common = firstOf(tables, first->file);
    }
    const auto* given = std::get_if<TimeOrigin::At>(&choice);
    std::vector<ExactTime> origins;
    for (const Table& table : tables) {
        origins.push_back(given != nullptr && table.hasTime() ? at(table, given->time)
                                                              : common.value_or(ExactTime()));
    }
    return origins;
}

}  // namespace vorm::evaluation

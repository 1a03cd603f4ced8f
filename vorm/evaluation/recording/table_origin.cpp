#include "table_origin.hpp"

#include <vorm/evaluation/text/nearest_names.hpp>

namespace vorm::evaluation {
namespace {

std::optional<Instant> earliest(std::vector<Table>& tables) {
    std::optional<Instant> least;
    for (Table& table : tables) {
        const auto first = table.hasTime() ? table.firstInstant() : std::nullopt;
        if (first && (!least || isBefore(*first, *least))) {
            least = first;
        }
        if (tables.size() > mostOpenTables) {
            table.close();
        }
    }
    return least;
}

std::optional<Instant> firstOf(std::vector<Table>& tables, const std::string& name) {
    std::vector<std::string> names;
    for (Table& table : tables) {
        if (table.file().isCalled(name)) {
            if (table.file().hasNamesake && table.file().path != name) {
                failAt({}, "several files " + shown(name) + " may give time 0",
                       "name the path: origin = { file = " + shown(table.file().path) + " }");
            }
            return table.firstInstant();
        }
        names.push_back(table.file().name());
    }
    const std::string near = suggestion(name, names);
    failAt({}, "the recording has no file " + shown(name) + " to give time 0",
           near.empty() ? "its files are " + quotedList(names) : near);
}

Instant at(const Table& table, const std::string& time) {
    try {
        return table.time().instantOf(time);
    } catch (const CellProblem& problem) {
        failAt({}, "the origin " + shown(time) + " is no time: " + problem.message,
               "write it as the files write their times");
    }
}

}  // namespace

std::vector<std::optional<Origin>> originsOf(std::vector<Table>& tables,
                                             const TimeOrigin::Choice& choice) {
    std::optional<Instant> common;
    if (std::holds_alternative<TimeOrigin::FirstSample>(choice)) {
        common = earliest(tables);
    } else if (const auto* first = std::get_if<TimeOrigin::FirstOf>(&choice)) {
        common = firstOf(tables, first->file);
    }
    std::vector<std::optional<Origin>> origins;
    for (const Table& table : tables) {
        if (!table.hasTime()) {
            origins.emplace_back();
            continue;
        }
        const TimeUnit& unit = table.time().unit();
        const auto* given = std::get_if<TimeOrigin::At>(&choice);
        const Instant recorded{unit, 0, 0};
        origins.emplace_back(
            Origin(given ? at(table, given->time) : common.value_or(recorded), unit));
    }
    return origins;
}

}  // namespace vorm::evaluation

#include "signal_naming.hpp"

#include <vorm/evaluation/text/characters.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>

#include <algorithm>
#include <map>

namespace vorm::evaluation {
namespace {

class Naming {
public:
    Naming(const std::vector<TableSignals>& tables, const SignalSelection& selection)
        : selection_(selection) {
        for (const TableSignals& table : tables) {
            for (const ColumnHeader& header : table.available) {
                if (selection.declarationsOf(table.file, header).empty()) {
                    filesOf_[header.name].push_back(&table.file);
                }
            }
        }
    }

    /// All names of a column that is not declared, the one that comes first without need.
    std::vector<std::string> namesOf(const RecordingFile& file, const std::string& column) const {
        std::vector<std::string> names;
        if (filesOf_.at(column).size() == 1 && !selection_.isDeclared(column)) {
            names.push_back(column);
        }
        if (selection_.hasSeveralFiles()) {
            names.push_back(nameInFile(file, column));
        }
        return names;
    }

    /// Those of the names to give the signal: the wanted ones, or the first.
    std::vector<std::string> chosenNames(const RecordingFile& file,
                                         const std::string& column) const {
        checkUnambiguous(column);
        auto names = namesOf(file, column);
        if (selection_.wantsAll()) {
            names.resize(std::min<std::size_t>(names.size(), 1));
        } else {
            std::erase_if(names, [&](const std::string& name) { return !selection_.wants(name); });
        }
        return names;
    }

private:
    void checkUnambiguous(const std::string& column) const {
        const auto& files = filesOf_.at(column);
        if (selection_.wantsAll() || files.size() == 1 || !selection_.wants(column) ||
            selection_.isDeclared(column)) {
            return;
        }
        std::vector<std::string> names;
        std::vector<std::string> paths;
        for (const RecordingFile* file : files) {
            names.push_back(nameInFile(*file, column));
            paths.push_back(file->path);
        }
        failAt({}, "the column " + shown(column) + " is in the files " + quotedList(paths),
               "name one of " + quotedList(names));
    }

    const SignalSelection& selection_;
    std::map<std::string, std::vector<const RecordingFile*>> filesOf_;
};

class NamedSignals {
public:
    NamedSignals(const SignalSelection& selection, const RecordingLayout& layout,
                 const Timeline& timeline)
        : selection_(selection), layout_(layout) {
        recording_.timeline = timeline;
    }

    Recording take(std::string name, std::vector<TableSignals>& tables,
                   std::vector<InputError> leftOut, bool isWhole) {
        recording_.name = std::move(name);
        recording_.leftOut = std::move(leftOut);
        const Naming naming(tables, selection_);
        for (TableSignals& table : tables) {
            for (ColumnReading& column : table.columns) {
                add(column,
                    column.declaration != nullptr
                        ? std::vector{column.declaration->name}
                        : naming.chosenNames(table.file, column.header.name),
                    table.file.path);
            }
            listNames(table, naming);
        }
        for (const SignalLayout& signal : layout_.signals) {
            if (selection_.wants(signal.name) && recording_.find(signal.name) == nullptr) {
                addMissing(signal, tables, isWhole);
            }
        }
        return std::move(recording_);
    }

private:
    void add(ColumnReading& column, const std::vector<std::string>& names,
             const std::string& path) {
        if (names.empty()) {
            return;
        }
        const auto result = column.finish(names.front(), recording_.timeline);
        const std::string& unit = column.declaration != nullptr && !column.declaration->unit.empty()
                                      ? column.declaration->unit
                                      : column.header.unit;
        for (const std::string& name : names) {
            const auto [other, isNew] = pathOf_.emplace(name, path);
            if (!isNew) {
                failAt(column.rules.where,
                       "the signal " + shown(name) + " is in '" + other->second + "' and in '" +
                           path + "'",
                       "declare which one: " + name + " = { file = \"...\" }");
            }
            addSignal({name, result.type, unit, result.pieces.signal}, result.pieces.held);
        }
    }

    void addSignal(Signal signal, const SharedPieces& held) {
        if (selection_.wantsHeld(signal.name)) {
            recording_.signals.push_back({heldName(signal.name), signal.type, signal.unit, held});
        }
        recording_.signals.push_back(std::move(signal));
    }

    void listNames(const TableSignals& table, const Naming& naming) {
        auto& available = recording_.availableNames;
        for (const ColumnHeader& header : table.available) {
            const auto declarations = selection_.declarationsOf(table.file, header);
            for (const SignalLayout* signal : declarations) {
                available.push_back(signal->name);
            }
            if (declarations.empty()) {
                const auto names = naming.namesOf(table.file, header.name);
                available.insert(available.end(), names.begin(), names.end());
            }
        }
    }

    // A look at the first rows of a table of the long form need not meet every signal.
    void addMissing(const SignalLayout& signal, const std::vector<TableSignals>& tables,
                    bool isWhole) {
        if (!isWhole) {
            const auto none = std::make_shared<TracePieces>();
            addSignal({signal.name, signal.type.value_or(SignalType()), signal.unit, none}, none);
            return;
        }
        if (!recording_.leftOut.empty()) {
            throw InputError(recording_.leftOut.front());
        }
        std::vector<std::string> columns;
        std::vector<std::string> files;
        bool hasFile = signal.file.empty();
        for (const TableSignals& table : tables) {
            hasFile = hasFile || table.file.isCalled(signal.file);
            files.push_back(table.file.name());
            for (const ColumnHeader& header : table.available) {
                columns.push_back(header.name);
            }
        }
        if (!hasFile) {
            failAt(signal.where,
                   shown(recording_.name) + " has no file " + shown(signal.file) +
                       " for the signal " + shown(signal.name),
                   adviceFrom(signal.file, files, "files"));
        }
        failAt(signal.where,
               shown(recording_.name) + " has no column " + shown(columnOf(signal)) +
                   " for the signal " + shown(signal.name),
               adviceFrom(columnOf(signal), columns, "columns"));
    }

    static std::string adviceFrom(const std::string& name, const std::vector<std::string>& names,
                                  const std::string& kind) {
        const std::string near = suggestion(name, names);
        return near.empty() ? "its " + kind + " are " + quotedList(names) : near;
    }

    const SignalSelection& selection_;
    const RecordingLayout& layout_;
    Recording recording_;
    std::map<std::string, std::string> pathOf_;
};

}  // namespace

Recording namedSignals(std::string name, const Timeline& timeline, std::vector<TableSignals> tables,
                       std::vector<InputError> leftOut, const SignalSelection& selection,
                       const RecordingLayout& layout, bool isWhole) {
    return NamedSignals(selection, layout, timeline)
        .take(std::move(name), tables, std::move(leftOut), isWhole);
}

}  // namespace vorm::evaluation

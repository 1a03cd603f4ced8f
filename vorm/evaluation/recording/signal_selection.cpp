#include "signal_selection.hpp"

#include <algorithm>

namespace vorm::evaluation {

SignalSelection::SignalSelection(const RecordingLayout& layout,
                                 const std::optional<std::set<std::string>>& wanted,
                                 bool hasSeveralFiles)
    : layout_(layout), wanted_(wanted), hasSeveralFiles_(hasSeveralFiles) {}

std::vector<const SignalLayout*> SignalSelection::declarationsOf(const RecordingFile& file,
                                                                 const ColumnHeader& header) const {
    std::vector<const SignalLayout*> found;
    for (const SignalLayout& signal : layout_.signals) {
        if ((signal.file.empty() || file.isCalled(signal.file)) &&
            header.isCalled(columnOf(signal))) {
            found.push_back(&signal);
        }
    }
    return found;
}

std::vector<const SignalLayout*> SignalSelection::requestsFor(const RecordingFile& file,
                                                              const ColumnHeader& header) const {
    auto found = declarationsOf(file, header);
    if (!found.empty()) {
        std::erase_if(found, [&](const SignalLayout* signal) { return !wants(signal->name); });
        return found;
    }
    // A declared signal takes its name from the columns that are called so.
    const bool isWanted = (wants(header.name) && !isDeclared(header.name)) ||
                          (hasSeveralFiles_ && wants(nameInFile(file, header.name)));
    return isWanted ? std::vector<const SignalLayout*>{nullptr} : found;
}

bool SignalSelection::meansSeveral(const RecordingFile& file, const ColumnHeader& header) const {
    for (const SignalLayout* signal : declarationsOf(file, header)) {
        if (columnOf(*signal) == header.text && wants(signal->name)) {
            return true;
        }
    }
    return !wantsAll() && ((wants(header.text) && !isDeclared(header.text)) ||
                           (hasSeveralFiles_ && wants(nameInFile(file, header.text))));
}

bool SignalSelection::wantsHeld(const RecordingFile& file, const ColumnHeader& header,
                                const SignalLayout* declaration) const {
    return declaration != nullptr
               ? wantsHeld(declaration->name)
               : wantsHeld(header.name) || wantsHeld(nameInFile(file, header.name));
}

bool SignalSelection::isDeclared(const std::string& name) const {
    return std::any_of(layout_.signals.begin(), layout_.signals.end(),
                       [&](const SignalLayout& signal) { return signal.name == name; });
}

}  // namespace vorm::evaluation

#pragma once

// Which columns of which files are to be read, and what their signals are called.

#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/signal/held_name.hpp>
#include <vorm/evaluation/signal/time_line.hpp>
#include <vorm/evaluation/source/recording_file.hpp>
#include <vorm/evaluation/table/column_header.hpp>

#include <set>

namespace vorm::evaluation {

class SignalSelection {
public:
    SignalSelection(const RecordingLayout& layout,
                    const std::optional<std::set<std::string>>& wanted, bool hasSeveralFiles);

    bool wantsAll() const { return !wanted_; }
    /// A signal as it is.
    bool wants(const std::string& name) const {
        return !wanted_ || (wanted_->contains(name) && !signalOfHeldName(name));
    }
    /// The samples of a signal, held.
    bool wantsHeld(const std::string& name) const {
        return wanted_ && wanted_->contains(heldName(name));
    }
    /// The same of a signal that is read from that column: its declaration, or null.
    bool wantsHeld(const RecordingFile& file, const ColumnHeader& header,
                   const SignalLayout* declaration) const;
    /// Whether formulas may mean the time of the recording by its name.
    bool wantsTime() const {
        const std::string name(timeName);
        return !wantsAll() && wants(name) && !isDeclared(name);
    }
    bool hasSeveralFiles() const { return hasSeveralFiles_; }

    /// The signals that are declared to stand in that column, wanted or not.
    std::vector<const SignalLayout*> declarationsOf(const RecordingFile& file,
                                                    const ColumnHeader& header) const;

    /// One for each signal to read from that column: its declaration, or null where it has none.
    std::vector<const SignalLayout*> requestsFor(const RecordingFile& file,
                                                 const ColumnHeader& header) const;

    /// Whether the text of a column, which others of the file have too, is the only name for a
    /// signal to read.
    bool meansSeveral(const RecordingFile& file, const ColumnHeader& header) const;

    /// Whether the layout declares a signal of that name.
    bool isDeclared(const std::string& name) const;

private:
    const RecordingLayout& layout_;
    const std::optional<std::set<std::string>>& wanted_;
    bool hasSeveralFiles_;
};

/// The column that a declaration means.
inline const std::string& columnOf(const SignalLayout& declaration) {
    return declaration.column.empty() ? declaration.name : declaration.column;
}

/// The name of a column that the file's name tells apart.
inline std::string nameInFile(const RecordingFile& file, const std::string& column) {
    return file.prefix() + '.' + column;
}

}  // namespace vorm::evaluation

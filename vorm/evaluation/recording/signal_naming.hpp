#pragma once

// Gives the signals that were read their names, once all names of all files are known.

#include <vorm/evaluation/recording/table_reading.hpp>

namespace vorm::evaluation {

/// The signals of a recording under their names. Where `isWhole`, all rows were read and each
/// declared signal that is wanted has to be there. Throws InputError where it is not, the first of
/// `leftOut` if files were left out, where a name fits columns of several files, and where the
/// timeline cannot tell two samples apart.
Recording namedSignals(std::string name, const Timeline& timeline, std::vector<TableSignals> tables,
                       std::vector<InputError> leftOut, const SignalSelection& selection,
                       const RecordingLayout& layout, bool isWhole);

}  // namespace vorm::evaluation

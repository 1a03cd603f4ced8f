#include "recording_parts.hpp"

#include <vorm/evaluation/table/table.hpp>
#include <vorm/evaluation/text/characters.hpp>

namespace vorm::evaluation {
namespace {

std::size_t partCountOf(Table& table) {
    if (table.times().size() > 1) {
        failAt(table.headerPlace(), "has columns with times of their own, which cannot be split");
    }
    std::size_t count = 1;
    std::optional<ExactTime> last;
    while (table.next()) {
        try {
            const ExactTime time = table.time();
            count += last && time < *last ? 1U : 0U;
            last = time;
        } catch (const InputError& error) {
            table.fail(error, table.times().front().column());
        }
    }
    return count;
}

}  // namespace

std::vector<RecordingSource> partsOf(const RecordingSource& source, const RecordingLayout& layout) {
    if (layout.time.timesBack != TimesBack::Split) {
        return {source};
    }
    const std::vector<RecordingFile> files = recordingFiles(source);
    if (files.size() != 1 || !files.front().canReopen) {
        failAt({}, shown(source.name()) + " cannot be split where times go back",
               "only a single file can, which is no pipe");
    }
    Table table(files.front(), layout, ByteWindow::defaultBlockSize);
    const std::size_t count = partCountOf(table);
    std::vector<RecordingSource> parts;
    for (std::size_t part = 1; part <= count; ++part) {
        parts.push_back({source.paths, part, count});
    }
    return parts;
}

}  // namespace vorm::evaluation

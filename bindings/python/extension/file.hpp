#pragma once

// Assessment files, with what Python has to know of them to choose and prepare columns.

#include <vorm/evaluation/assessment/assessment_file.hpp>

#include <pybind11/pybind11.h>

#include <memory>
#include <string>
#include <vector>

namespace vorm::python {

/// An assessment file that several runs share.
class File {
public:
    explicit File(evaluation::AssessmentFile content)
        : content_(std::make_shared<const evaluation::AssessmentFile>(std::move(content))) {}

    const evaluation::AssessmentFile& content() const { return *content_; }

private:
    std::shared_ptr<const evaluation::AssessmentFile> content_;
};

/// The assessments that the texts choose, as evaluation::chosenAssessments.
std::vector<const evaluation::Assessment*> chosenBy(const File& file,
                                                    const std::vector<std::string>& only,
                                                    const std::vector<std::string>& skip);

/// Adds File and Declaration to the module, and what tells of the name of a column.
void addFiles(pybind11::module_& module);

}  // namespace vorm::python

// Every public header of the evaluation layer, and a formula from its text to its tree and back.

#include <vorm/evaluation/assessment/assess.hpp>
#include <vorm/evaluation/assessment/assessment_file.hpp>
#include <vorm/evaluation/assessment/evaluation_error.hpp>
#include <vorm/evaluation/assessment/explanation.hpp>
#include <vorm/evaluation/assessment/formula_source.hpp>
#include <vorm/evaluation/assessment/judgement.hpp>
#include <vorm/evaluation/assessment/outcome.hpp>
#include <vorm/evaluation/assessment/run.hpp>
#include <vorm/evaluation/assessment/typed_assessment.hpp>
#include <vorm/evaluation/assessment/wanted_signals.hpp>
#include <vorm/evaluation/evaluator/evaluator.hpp>
#include <vorm/evaluation/formula/enumeration_literal.hpp>
#include <vorm/evaluation/formula/formula.hpp>
#include <vorm/evaluation/formula/formula_error.hpp>
#include <vorm/evaluation/recording/recording.hpp>
#include <vorm/evaluation/recording/recording_in_memory.hpp>
#include <vorm/evaluation/recording/recording_layout.hpp>
#include <vorm/evaluation/recording/recording_survey.hpp>
#include <vorm/evaluation/report/explanation_report.hpp>
#include <vorm/evaluation/report/json_report.hpp>
#include <vorm/evaluation/report/junit_report.hpp>
#include <vorm/evaluation/report/survey_report.hpp>
#include <vorm/evaluation/report/table_report.hpp>
#include <vorm/evaluation/report/verdict_text.hpp>
#include <vorm/evaluation/signal/signal.hpp>
#include <vorm/evaluation/signal/signal_column.hpp>
#include <vorm/evaluation/signal/signal_rules.hpp>
#include <vorm/evaluation/signal/signal_type.hpp>
#include <vorm/evaluation/source/recording_source.hpp>
#include <vorm/evaluation/table/table_layout.hpp>
#include <vorm/evaluation/text/file_text.hpp>
#include <vorm/evaluation/text/input_error.hpp>
#include <vorm/evaluation/text/nearest_names.hpp>
#include <vorm/evaluation/text/shortest_number.hpp>
#include <vorm/evaluation/time/exact_time.hpp>
#include <vorm/evaluation/time/time_format.hpp>
#include <vorm/evaluation/time/time_span.hpp>
#include <vorm/evaluation/time/time_text.hpp>
#include <vorm/evaluation/time/time_unit.hpp>
#include <vorm/evaluation/time/timeline.hpp>

#include <iostream>

int main() {
    using namespace vorm::evaluation;
    const ParsedFormula formula("G[0, 1 s](x > 3) -> y");
    std::cout << formulaText(expressionOf(formula)) << "\n";
    try {
        parseAssessmentFile("title = 3", "a.toml");
    } catch (const InputError& error) {
        std::cout << error.problem().where.file << "\n";
    }
}

// A formula from its text to its tree and back, and on a recording in memory.

#include <vorm/evaluation.hpp>

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

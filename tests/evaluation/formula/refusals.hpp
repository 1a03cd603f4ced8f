#pragma once

// Formulas that are refused, as rows.

#include <vorm/evaluation/formula/formula_error.hpp>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vorm::evaluation {

struct Refusal {
    std::string text;
    std::string marked;  ///< the part of the text that the failure is about
    std::string message;
    std::string advice;
};

/// Hands each text to the call, which is to refuse it so.
template <class Call>
void expectRefusals(const std::vector<Refusal>& refusals, const Call& call) {
    for (const Refusal& refusal : refusals) {
        try {
            call(refusal.text);
            ADD_FAILURE() << refusal.text << " is taken";
        } catch (const FormulaError& error) {
            EXPECT_EQ(error.problem().message, refusal.message) << refusal.text;
            EXPECT_EQ(error.problem().advice, refusal.advice) << refusal.text;
            EXPECT_EQ(refusal.text.substr(error.span().begin, error.span().length), refusal.marked)
                << refusal.text;
        }
    }
}

}  // namespace vorm::evaluation

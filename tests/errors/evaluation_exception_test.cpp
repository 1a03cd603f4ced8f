#include "support/expressions.hpp"

#include <stdexcept>
#include <typeinfo>

namespace vorm::test {
namespace {

using Failure = AssessmentException;

// What the dispatcher makes of whatever `fail` throws during the evaluation of `formula`.
template <class Fail>
std::shared_ptr<Failure> dispatched(const Expression& formula, Fail fail) {
    try {
        try {
            fail();
        } catch (...) {
            evaluation_exception_dispatcher(formula);
        }
    } catch (const AssessmentEvaluationException& failure) {
        return std::make_shared<AssessmentEvaluationException>(failure);
    }
    return nullptr;
}

const Expression& failedFormula(const Failure& failure) {
    return dynamic_cast<const AssessmentEvaluationException&>(failure).getExpression();
}

TEST(AssessmentEvaluationException, FreesALongChainOfCauses) {
    std::shared_ptr<Failure> chain = std::make_shared<AssessmentInternalException>("first fault");
    for (int link = 0; link < 200'000; ++link) {
        chain = std::make_shared<AssessmentEvaluationException>(signal(1), chain);
    }
    EXPECT_NO_FATAL_FAILURE(chain.reset());
}

TEST(EvaluationExceptionDispatcher, ReturnsWhereNothingIsInFlight) {
    EXPECT_NO_THROW(evaluation_exception_dispatcher(signal(1)));
}

struct ClassName : AssessmentExceptionVisitor {
    std::string name;
    void visit(const AssessmentException&) override { name = "plain"; }
    void visit(const AssessmentInternalException&) override { name = "internal"; }
    void visit(const AssessmentTypeException&) override { name = "type"; }
    void visit(const AssessmentBinaryTypeException&) override { name = "binary"; }
    void visit(const AssessmentEvaluationException&) override { name = "evaluation"; }
};

TEST(AssessmentException, KeepsItsClassItsTextAndItsCauseWhereverItGoes) {
    const auto cause = std::make_shared<AssessmentInternalException>("first fault");
    const auto tag = AssessmentTypeException::typeTAG<float>();
    const AssessmentException plain(quillet::assessments::TimeValueMustIncrease(), cause);
    const AssessmentInternalException internal("text", cause);
    const AssessmentTypeException type(tag, cause);
    const AssessmentBinaryTypeException binary(tag, tag, cause);
    const AssessmentEvaluationException evaluation(variable("\xff \xc3\xa4", idOf(2)), cause);
    EXPECT_NE(evaluation.GetUnicodeMessageTxt().find(u'\u00e4'), std::u16string::npos);
    const std::pair<std::string, const Failure*> failures[] = {{"plain", &plain},
                                                               {"internal", &internal},
                                                               {"type", &type},
                                                               {"binary", &binary},
                                                               {"evaluation", &evaluation}};
    for (const auto& [name, failure] : failures) {
        const std::unique_ptr<Failure> copy(failure->clone());
        ClassName visited;
        copy->accept(visited);
        EXPECT_EQ(visited.name, name);
        // Thrown, caught by the dispatcher and kept as the cause of what it throws.
        const auto head = dispatched(signal(1, "head"), [&] { copy->rethrow(); });
        ASSERT_NE(head, nullptr);
        EXPECT_EQ(to_string(failedFormula(*head)), "head1");
        const Failure& caught = *head->getCause();
        EXPECT_EQ(typeid(caught), typeid(*failure));
        EXPECT_EQ(caught.GetUnicodeMessageTxt(), failure->GetUnicodeMessageTxt());
        EXPECT_STREQ(caught.what(), failure->what());
        EXPECT_EQ(caught.getCause(), cause);
    }
}

TEST(EvaluationExceptionDispatcher, WrapsForeignExceptionsAndLetsOthersThrough) {
    const auto head = dispatched(signal(1), [] { throw std::runtime_error("out of luck"); });
    ASSERT_NE(head, nullptr);
    const Failure& cause = *head->getCause();
    EXPECT_EQ(typeid(cause), typeid(AssessmentInternalException));
    EXPECT_NE(std::string(cause.what()).find("out of luck"), std::string::npos);
    EXPECT_EQ(cause.getCause(), nullptr);
    EXPECT_THROW(dispatched(signal(1), [] { throw 42; }), int);
}

TEST(EvaluationExceptionDispatcher, BuildsAChainFromTheOutermostFormulaToTheFirstFault) {
    const ExpressionFactory f;
    const Expression inner = f.Plus(signal(1), signal(2));
    const Expression outer = f.Not(inner);
    const TimedTrace left = TimedTrace_T<float>(1);
    const TimedTrace right = TimedTrace_T<bool>(true);
    const auto head = dispatched(outer, [&] {
        try {
            left.Plus(right);
        } catch (...) {
            evaluation_exception_dispatcher(inner);
        }
    });
    ASSERT_NE(head, nullptr);
    EXPECT_EQ(head->GetID(), "quillet:assessments:ExpressionEvaluationError");
    EXPECT_NE(std::string(head->what()).find(to_string(outer)), std::string::npos);
    EXPECT_EQ(to_string(failedFormula(*head)), to_string(outer));
    EXPECT_EQ(to_string(failedFormula(*head->getCause())), to_string(inner));
    const Failure& fault = *head->getCause()->getCause();
    EXPECT_EQ(typeid(fault), typeid(AssessmentBinaryTypeException));
}

}  // namespace
}  // namespace vorm::test

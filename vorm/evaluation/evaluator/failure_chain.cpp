#include "failure_chain.hpp"

#include <vorm/assessments/errors/evaluation_exception.hpp>

#include <new>

namespace vorm::evaluation {

using namespace assessments;

namespace {

std::exception_ptr wrapped(const std::exception_ptr& failure, const Expression& formula) {
    try {
        try {
            std::rethrow_exception(failure);
        } catch (const std::bad_alloc&) {
            throw;
        } catch (...) {
            evaluation_exception_dispatcher(formula);
            throw;
        }
    } catch (...) {
        return std::current_exception();
    }
}

}  // namespace

std::exception_ptr failureChain(std::exception_ptr fault,
                                const std::vector<const Expression*>& formulas) {
    for (const Expression* formula : formulas) {
        fault = wrapped(fault, *formula);
    }
    return fault;
}

}  // namespace vorm::evaluation

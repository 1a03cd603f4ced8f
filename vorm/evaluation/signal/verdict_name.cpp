#include "verdict_name.hpp"

#include <stdexcept>

namespace vorm::evaluation {

using assessments::resultEnum_t;

std::string_view verdictName(resultEnum_t verdict) {
    switch (verdict) {
        case resultEnum_t::PASS:
            return "PASS";
        case resultEnum_t::FAIL:
            return "FAIL";
        case resultEnum_t::NO_RESULT:
            return "NO_RESULT";
    }
    throw std::invalid_argument("there is no such verdict");
}

std::optional<resultEnum_t> verdictOf(std::string_view name) {
    for (const auto verdict : {resultEnum_t::PASS, resultEnum_t::FAIL, resultEnum_t::NO_RESULT}) {
        if (name == verdictName(verdict)) {
            return verdict;
        }
    }
    return std::nullopt;
}

}  // namespace vorm::evaluation

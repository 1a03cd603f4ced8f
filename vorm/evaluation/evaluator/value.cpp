#include "value.hpp"

#include <vorm/assessments/errors/type_exceptions.hpp>

namespace vorm::evaluation {

using namespace assessments;

namespace {

AssessmentTypeException::TypeTag typeOf(const Value& value) {
    return isTruth(value) ? AssessmentTypeException::typeTAG<bool>()
                          : std::get<SharedPieces>(value)->front().errorType();
}

bool hasType(const Value& value) {
    return isTruth(value) || !std::get<SharedPieces>(value)->empty();
}

int typeIndex(const Value& value) {
    return isTruth(value) ? int{valueTypeIndex<bool>}
                          : std::get<SharedPieces>(value)->front().which();
}

}  // namespace

SharedTruth asTruth(const Value& value) {
    return isTruth(value) ? std::get<SharedTruth>(value)
                          : std::make_shared<const Truth>(truthOf(*std::get<SharedPieces>(value)));
}

SharedPieces asPieces(const Value& value) {
    return isTruth(value)
               ? std::make_shared<const TracePieces>(knownPieces(*std::get<SharedTruth>(value)))
               : std::get<SharedPieces>(value);
}

void requireSameType(const Value& left, const Value& right) {
    if (hasType(left) && hasType(right) && typeIndex(left) != typeIndex(right)) {
        throw AssessmentBinaryTypeException(typeOf(left), typeOf(right));
    }
}

}  // namespace vorm::evaluation

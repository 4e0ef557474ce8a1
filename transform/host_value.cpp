#include "transform/host_value.h"

#include <variant>

namespace lintara::transform {

Result<Text> AsText(const hostmodel::Value& value) {
    if (const auto* text = std::get_if<Text>(&value)) {
        return *text;
    }
    return std::holds_alternative<std::monostate>(value)
               ? Result<Text>()
               : Failure(ErrorNumber::TypeMismatch, "the value is not a text");
}

Result<std::int32_t> AsNumber(const hostmodel::Value& value) {
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return *number;
    }
    return std::holds_alternative<std::monostate>(value)
               ? Result<std::int32_t>()
               : Failure(ErrorNumber::TypeMismatch, "the value is not a number");
}

Result<std::shared_ptr<hostmodel::Dispatch>> AsObject(const hostmodel::Value& value) {
    const auto* object = std::get_if<std::shared_ptr<hostmodel::Dispatch>>(&value);
    if (object == nullptr || *object == nullptr) {
        return Failure(ErrorNumber::ObjectNotSet, "the value is not an object");
    }
    return *object;
}

}  // namespace lintara::transform

#include "com/host_dispatch.h"

#include "com/conversion.h"

#include <utility>

namespace lintara::com {

using hostmodel::Value;

namespace {

// The type that a value of the language's has here, whatever variant it came in.
enum class Shape { Nothing, Truth, Number, String, Object, None };

Shape ShapeOf(VARTYPE type) {
    switch (type & ~VT_BYREF) {
        case VT_EMPTY:
            return Shape::Nothing;
        case VT_BOOL:
            return Shape::Truth;
        case VT_I1:
        case VT_UI1:
        case VT_I2:
        case VT_UI2:
        case VT_I4:
        case VT_UI4:
        case VT_I8:
        case VT_UI8:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
        case VT_R8:
        case VT_CY:
        case VT_DECIMAL:
            return Shape::Number;
        case VT_BSTR:
        case VT_DATE:
            return Shape::String;
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return Shape::Object;
        default:
            return Shape::None;
    }
}

template <class T>
Result<Value> Wrapped(Result<T> value) {
    return Then(std::move(value), [](T present) { return Result<Value>(std::move(present)); });
}

}  // namespace

Result<Value> ValueOf(const VARIANT& value, const std::shared_ptr<MemberIds>& ids) {
    if (value.vt == (VT_VARIANT | VT_BYREF)) {
        return ValueOf(*value.pvarVal, ids);
    }
    switch (ShapeOf(value.vt)) {
        case Shape::Nothing:
            return Value();
        case Shape::Truth:
            return Wrapped(ToBoolean(value));
        case Shape::Number:
            return Wrapped(ToLong(value));
        case Shape::String:
            return Wrapped(ToText(value));
        case Shape::Object:
            return Wrapped(DispatchOf(value, ids));
        case Shape::None:
            break;
    }
    return Failure(ErrorNumber::TypeMismatch, "the host gives a value of a type that has no use here");
}

Result<Variant> VariantOf(const Value& value) {
    if (const auto* truth = std::get_if<bool>(&value)) {
        return Variant(*truth);
    }
    if (const auto* number = std::get_if<std::int32_t>(&value)) {
        return Variant(*number);
    }
    if (const auto* text = std::get_if<Text>(&value)) {
        return Variant(TextView(*text));
    }
    if (const auto* object = std::get_if<std::shared_ptr<hostmodel::Dispatch>>(&value)) {
        const auto* const hosts = dynamic_cast<const HostDispatch*>(object->get());
        if (hosts == nullptr && *object != nullptr) {
            return Failure(ErrorNumber::TypeMismatch, "the object is none of the host's");
        }
        return Variant(hosts == nullptr ? nullptr : hosts->object().object().get());
    }
    return Variant();
}

Result<std::shared_ptr<hostmodel::Dispatch>> DispatchOf(const VARIANT& value,
                                                        const std::shared_ptr<MemberIds>& ids) {
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;
    return Then(ToObject(value), [&](const ComPtr<IDispatch>& object) -> Result<DispatchPtr> {
        if (object == nullptr) {
            return nullptr;
        }
        return std::make_shared<HostDispatch>(LateBound(object, ids));
    });
}

Result<Value> HostDispatch::Invoke(TextView name, std::span<const Value> arguments) {
    Arguments passed;
    for (const Value& argument : arguments) {
        Result<Variant> variant = VariantOf(argument);
        if (!variant) {
            return std::unexpected(variant.error());
        }
        passed.Add(*std::move(variant));
    }
    return Then(object_.Get(name, std::move(passed)),
                [&](const Variant& result) { return ValueOf(result.get(), object_.ids()); });
}

Result<void> HostDispatch::Put(TextView name, const Value& value) {
    return Then(VariantOf(value), [&](const Variant& variant) { return object_.Put(name, variant); });
}

}  // namespace lintara::com

#include "com/conversion.h"

#include "com/host_error.h"

#include <utility>

namespace lintara::com {
namespace {

constexpr LCID English = 0x0409;

// The variant that a by-reference variant refers to.
const VARIANT& Referred(const VARIANT& value) {
    return value.vt == (VT_VARIANT | VT_BYREF) && value.pvarVal != nullptr ? *value.pvarVal : value;
}

// The interface pointer that the value holds or refers to; false when it holds none.
bool TakeUnknown(const VARIANT& value, IUnknown*& object) {
    if ((value.vt & VT_BYREF) != 0 && value.byref == nullptr) {
        return false;
    }
    switch (value.vt) {
        case VT_DISPATCH:
            object = value.pdispVal;
            return true;
        case VT_UNKNOWN:
            object = value.punkVal;
            return true;
        case VT_DISPATCH | VT_BYREF:
            object = *value.ppdispVal;
            return true;
        case VT_UNKNOWN | VT_BYREF:
            object = *value.ppunkVal;
            return true;
        case VT_EMPTY:
            object = nullptr;
            return true;
        default:
            return false;
    }
}

// Puts the default property of the object in `value` in its place. Objects whose default property is an
// object are followed a few times: one that leads back to itself has no value.
HRESULT TakeDefaultProperty(Variant& value) {
    constexpr int MostSteps = 4;
    for (int step = 0; value.get().vt == VT_DISPATCH; ++step) {
        const ComPtr<IDispatch> object(value.get().pdispVal);
        if (object == nullptr || step == MostSteps) {
            return DISP_E_TYPEMISMATCH;
        }
        DISPPARAMS none{};
        Variant property;
        const HRESULT code = object->Invoke(DISPID_VALUE, IID_NULL, English, DISPATCH_PROPERTYGET, &none,
                                            property.Place(), nullptr, nullptr);
        if (FAILED(code)) {
            return DISP_E_TYPEMISMATCH;
        }
        value = std::move(property);
    }
    return S_OK;
}

}  // namespace

Result<Variant> ConvertTo(VARTYPE type, const VARIANT& value) {
    Variant followed;
    if (const HRESULT code = VariantCopyInd(&followed.get(), const_cast<VARIANT*>(&value)); FAILED(code)) {
        return FailureOf(code);
    }
    if (const HRESULT code = TakeDefaultProperty(followed); FAILED(code)) {
        return FailureOf(code);
    }
    Variant result;
    // A Boolean becomes "True" or "False", not a number.
    constexpr USHORT Flags = VARIANT_ALPHABOOL | VARIANT_NOUSEROVERRIDE;
    const HRESULT code = VariantChangeTypeEx(&result.get(), &followed.get(), English, Flags, type);
    if (FAILED(code)) {
        return FailureOf(code);
    }
    return result;
}

Result<Text> ToText(const VARIANT& value) {
    if (value.vt == VT_BSTR) {
        return Text(ViewOf(value.bstrVal));
    }
    return Then(ConvertTo(VT_BSTR, value),
                [](const Variant& text) { return Result<Text>(ViewOf(text.get().bstrVal)); });
}

Result<std::int16_t> ToInteger(const VARIANT& value) {
    return Then(ConvertTo(VT_I2, value),
                [](const Variant& number) { return Result<std::int16_t>(number.get().iVal); });
}

Result<std::int32_t> ToLong(const VARIANT& value) {
    if (value.vt == VT_I4) {
        return value.lVal;
    }
    return Then(ConvertTo(VT_I4, value),
                [](const Variant& number) { return Result<std::int32_t>(number.get().lVal); });
}

Result<bool> ToBoolean(const VARIANT& value) {
    return Then(ConvertTo(VT_BOOL, value),
                [](const Variant& truth) { return Result<bool>(truth.get().boolVal != VARIANT_FALSE); });
}

Result<ComPtr<IDispatch>> ToObject(const VARIANT& value) {
    IUnknown* object = nullptr;
    if (!TakeUnknown(Referred(value), object)) {
        return Failure(ErrorNumber::TypeMismatch, "the value is no object");
    }
    ComPtr<IDispatch> result = ComPtr<IUnknown>(object).As<IDispatch>();
    if (object != nullptr && result == nullptr) {
        return Failure(ErrorNumber::TypeMismatch, "the object has no members to call by name");
    }
    return result;
}

bool IsOmitted(const VARIANT& value) {
    const VARIANT& referred = Referred(value);
    return referred.vt == VT_ERROR && referred.scode == DISP_E_PARAMNOTFOUND;
}

}  // namespace lintara::com

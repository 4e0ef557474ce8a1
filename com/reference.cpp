#include "com/reference.h"

#include "com/conversion.h"

#include <cstddef>
#include <cstring>
#include <utility>

namespace lintara::com {
namespace {

// How many bytes a variable of a plain type has; 0 for the other types.
std::size_t SizeOf(VARTYPE type) {
    switch (type) {
        case VT_I1:
        case VT_UI1:
            return 1;
        case VT_I2:
        case VT_UI2:
        case VT_BOOL:
            return 2;
        case VT_I4:
        case VT_UI4:
        case VT_INT:
        case VT_UINT:
        case VT_R4:
            return 4;
        case VT_I8:
        case VT_UI8:
        case VT_R8:
        case VT_CY:
        case VT_DATE:
            return 8;
        default:
            return 0;
    }
}

bool StorePlain(const VARIANT& argument, VARTYPE type, const Variant& value) {
    const std::size_t size = SizeOf(type);
    const Result<Variant> converted =
        size == 0 ? Failure(ErrorNumber::TypeMismatch, "no plain type") : ConvertTo(type, value.get());
    if (!converted) {
        return false;
    }
    std::memcpy(argument.byref, &converted->get().lVal, size);
    return true;
}

bool StoreText(BSTR& variable, const Variant& value) {
    Result<Variant> converted = ConvertTo(VT_BSTR, value.get());
    if (!converted) {
        return false;
    }
    std::swap(variable, converted->get().bstrVal);
    return true;
}

bool StoreDecimal(DECIMAL& variable, const Variant& value) {
    const Result<Variant> converted = ConvertTo(VT_DECIMAL, value.get());
    if (!converted) {
        return false;
    }
    // The type of the variant lies in the decimal's reserved word.
    const WORD reserved = std::exchange(variable.wReserved, WORD{0});
    variable = converted->get().decVal;
    variable.wReserved = reserved;
    return true;
}

bool KeepsItsType(const VARIANT& variable, const Variant& value) {
    if (variable.vt == VT_BOOL) {
        // Every number would do as a Boolean, but none comes out of it again.
        return value.get().vt == VT_BOOL;
    }
    return variable.vt == VT_BSTR || variable.vt == VT_DECIMAL || SizeOf(variable.vt) != 0;
}

void StoreVariant(VARIANT& variable, const Variant& value) {
    if ((variable.vt & VT_BYREF) != 0) {
        if (StoreInto(variable, value)) {
            return;
        }
    } else if (KeepsItsType(variable, value)) {
        if (Result<Variant> converted = ConvertTo(variable.vt, value.get())) {
            std::swap(variable, converted->get());
            return;
        }
    }
    Variant copy = value.Clone();
    std::swap(variable, copy.get());
}

}  // namespace

bool IsReference(const VARIANT& argument) {
    return (argument.vt & VT_BYREF) != 0 && argument.byref != nullptr;
}

bool TakesValuesLike(const VARIANT& argument, const Variant& example) {
    const VARTYPE type = argument.vt & ~VT_BYREF;
    return type == VT_VARIANT || ((type == VT_BSTR || type == VT_DECIMAL || SizeOf(type) != 0) &&
                                  ConvertTo(type, example.get()).has_value());
}

bool StoreInto(const VARIANT& argument, const Variant& value) {
    const VARTYPE type = argument.vt & ~VT_BYREF;
    switch (type) {
        case VT_VARIANT:
            StoreVariant(*argument.pvarVal, value);
            return true;
        case VT_BSTR:
            return StoreText(*argument.pbstrVal, value);
        case VT_DECIMAL:
            return StoreDecimal(*argument.pdecVal, value);
        default:
            return StorePlain(argument, type, value);
    }
}

}  // namespace lintara::com

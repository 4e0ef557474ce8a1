// Calls through IDispatch::Invoke, argument by argument as a test wants them.
#pragma once

#include "com/com_ptr.h"
#include "com/variant.h"

#include <algorithm>
#include <oaidl.h>
#include <string>
#include <vector>

namespace lintara::support {

struct InvokeOutcome {
    HRESULT code = S_OK;
    UINT wrongArgument = 99;  // in the array of the call
    com::Variant result;
};

[[nodiscard]] inline DISPID IdOf(IDispatch& object, const wchar_t* name) {
    auto* wide = const_cast<LPOLESTR>(name);
    DISPID id = DISPID_UNKNOWN;
    (void)object.GetIDsOfNames(IID_NULL, &wide, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

// `arguments` stand in the order in which the language writes them; the last ones are named when `names` has
// identifiers for them.
[[nodiscard]] inline InvokeOutcome InvokeById(IDispatch& object, DISPID id, WORD kind,
                                              std::vector<VARIANTARG> arguments = {},
                                              std::vector<DISPID> names = {}) {
    std::ranges::reverse(arguments);
    std::ranges::reverse(names);
    DISPPARAMS parameters{};
    parameters.rgvarg = arguments.data();
    parameters.cArgs = static_cast<UINT>(arguments.size());
    parameters.rgdispidNamedArgs = names.data();
    parameters.cNamedArgs = static_cast<UINT>(names.size());
    InvokeOutcome outcome;
    EXCEPINFO exception{};
    outcome.code = object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, outcome.result.Place(),
                                 &exception, &outcome.wrongArgument);
    return outcome;
}

[[nodiscard]] inline InvokeOutcome InvokeByName(IDispatch& object, const wchar_t* name, WORD kind,
                                                std::vector<VARIANTARG> arguments = {},
                                                std::vector<DISPID> names = {}) {
    return InvokeById(object, IdOf(object, name), kind, std::move(arguments), std::move(names));
}

// Arguments. What they lend outlives the call.
[[nodiscard]] inline VARIANTARG Lend(const com::Variant& value) {
    return value.get();
}
[[nodiscard]] inline VARIANTARG Refer(VARTYPE type, void* variable) {
    VARIANTARG argument;
    VariantInit(&argument);
    argument.vt = static_cast<VARTYPE>(type | VT_BYREF);
    argument.byref = variable;
    return argument;
}
[[nodiscard]] inline VARIANTARG Refer(com::Variant& variable) {
    return Refer(VT_VARIANT, &variable.get());
}
[[nodiscard]] inline VARIANTARG Omitted() {
    VARIANTARG argument;
    VariantInit(&argument);
    argument.vt = VT_ERROR;
    argument.scode = DISP_E_PARAMNOTFOUND;
    return argument;
}
[[nodiscard]] inline com::Variant Double(double number) {
    com::Variant value;
    value.get().vt = VT_R8;
    value.get().dblVal = number;
    return value;
}

}  // namespace lintara::support

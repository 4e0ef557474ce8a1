#include "com/host_error.h"

#include <oaidl.h>
#include <oleauto.h>

namespace lintara::com {
namespace {

// Errors that the language raises by number travel with this facility.
constexpr int LanguageFacility = FACILITY_CONTROL;

void FillIn(EXCEPINFO& exception) {
    if (exception.pfnDeferredFillIn != nullptr) {
        exception.pfnDeferredFillIn(&exception);
    }
}

void Free(EXCEPINFO& exception) {
    SysFreeString(exception.bstrSource);
    SysFreeString(exception.bstrDescription);
    SysFreeString(exception.bstrHelpFile);
    exception = {};
}

}  // namespace

HostError ErrorOf(HRESULT code) {
    switch (code) {
        case DISP_E_MEMBERNOTFOUND:
        case DISP_E_UNKNOWNNAME:
            return {ErrorNumber::MemberNotSupported, "the host's object has no such member"};
        case DISP_E_TYPEMISMATCH:
        case DISP_E_BADVARTYPE:
            return {ErrorNumber::TypeMismatch, "the value has another type"};
        case DISP_E_OVERFLOW:
            return {ErrorNumber::Overflow, "the number is too large"};
        case DISP_E_BADINDEX:
            return {ErrorNumber::SubscriptOutOfRange, "there is no such element"};
        case DISP_E_DIVBYZERO:
            return {ErrorNumber::DivisionByZero, "division by zero"};
        case E_INVALIDARG:
            return {ErrorNumber::InvalidArgument, "the host refuses an argument"};
        case E_OUTOFMEMORY:
            return {ErrorNumber::OutOfMemory, "memory ran out"};
        default:
            break;
    }
    constexpr std::string_view Reason = "the host's object reports an error";
    if (HRESULT_FACILITY(code) == LanguageFacility) {
        return {static_cast<ErrorNumber>(HRESULT_CODE(code)), Reason};
    }
    return {static_cast<ErrorNumber>(code), Reason};
}

HostError ErrorOf(HRESULT code, EXCEPINFO& exception) {
    HostError error = ErrorOf(code);
    if (code == DISP_E_EXCEPTION) {
        FillIn(exception);
        if (exception.scode != 0) {
            error = ErrorOf(exception.scode);
        } else if (exception.wCode != 0) {
            error.number = static_cast<ErrorNumber>(exception.wCode);
        }
    }
    Free(exception);
    return error;
}

}  // namespace lintara::com

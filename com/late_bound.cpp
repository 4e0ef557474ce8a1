#include "com/late_bound.h"

#include "com/host_error.h"

#include <utility>

namespace lintara::com {
namespace {

constexpr WORD FunctionOrProperty = DISPATCH_METHOD | DISPATCH_PROPERTYGET;

constexpr ByReference Other(ByReference style) {
    return style == ByReference::Typed ? ByReference::Variants : ByReference::Typed;
}

bool IsWrite(WORD kind) {
    return (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
}

Result<void> Done(const Result<Variant>& outcome) {
    return outcome ? Result<void>() : std::unexpected(outcome.error());
}

}  // namespace

LateBound::LateBound(ComPtr<IDispatch> object, std::shared_ptr<MemberIds> ids)
    : object_(std::move(object)), ids_(std::move(ids)) {}

Result<MemberId> LateBound::Find(TextView name, bool withReferences) const {
    if (members_ == nullptr) {
        members_ = ids_->MembersOf(*object_);
    }
    return members_->Find(*object_, name, withReferences);
}

Result<Variant> LateBound::Get(TextView name, Arguments arguments) const {
    return Invoke(name, FunctionOrProperty, arguments, true);
}

Result<void> LateBound::Call(TextView name, Arguments arguments) const {
    return Done(Invoke(name, DISPATCH_METHOD, arguments, false));
}

Result<void> LateBound::Put(TextView name, const Variant& value) const {
    const auto write = [&](WORD kind) {
        Arguments arguments;
        arguments.Add(value.Clone());
        return Done(Invoke(name, kind, arguments, false));
    };
    if (value.get().vt != VT_DISPATCH) {
        return write(DISPATCH_PROPERTYPUT);
    }
    const Result<void> set = write(DISPATCH_PROPERTYPUTREF);
    if (!set && set.error().number == ErrorNumber::MemberNotSupported) {
        return write(DISPATCH_PROPERTYPUT);
    }
    return set;
}

HRESULT LateBound::InvokeOnce(DISPID member, WORD kind, std::vector<VARIANTARG>& arguments, VARIANT* result,
                              EXCEPINFO& exception) const {
    DISPID value = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{};
    parameters.rgvarg = arguments.data();
    parameters.cArgs = static_cast<UINT>(arguments.size());
    if (IsWrite(kind)) {
        parameters.rgdispidNamedArgs = &value;
        parameters.cNamedArgs = 1;
    }
    UINT wrongArgument = 0;
    return object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters, result, &exception,
                           &wrongArgument);
}

// A callee that takes references in another way than expected says so before it does anything; then it gets
// them in the other one.
Result<Variant> LateBound::Invoke(TextView name, WORD kind, Arguments& arguments, bool wantsResult) const {
    const Result<MemberId> member = Find(name, arguments.HasReferences());
    if (!member) {
        return std::unexpected(member.error());
    }
    Variant result;
    EXCEPINFO exception{};
    const auto call = [&](ByReference style) {
        return InvokeOnce(member->id, kind, arguments.Reversed(style), wantsResult ? result.Place() : nullptr,
                          exception);
    };
    HRESULT code = call(member->byReference);
    if (code == DISP_E_TYPEMISMATCH && arguments.HasReferences()) {
        code = call(Other(member->byReference));
        if (SUCCEEDED(code)) {
            members_->Note(name, Other(member->byReference));
        }
    }
    if (FAILED(code)) {
        return std::unexpected(ErrorOf(code, exception));
    }
    return Then(arguments.WriteBack(), [&] { return Result<Variant>(std::move(result)); });
}

}  // namespace lintara::com

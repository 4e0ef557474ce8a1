// A COM object whose dispatch interface is a table (member_table.h): what is asked by name or number is found
// there, arguments are taken and written back as the table's types say, and the class derived from this does
// the member's work. Exceptions end here: the result is empty then.
#pragma once

#include "com/call_arguments.h"
#include "com/com_object.h"
#include "com/member_table.h"
#include "com/variant.h"

#include <span>
#include <utility>

namespace lintara::com {

// The empty value of a member's result: what it is unless the member says otherwise.
[[nodiscard]] Variant EmptyResult(const assistant::DispatchMember& member);

template <class First, class... Others>
class TableObject : public ComObject<First, Others...> {
  public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) noexcept override {
        if (count == nullptr) {
            return E_POINTER;
        }
        *count = DescribedInterface() == IID_NULL ? 0 : 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** info) noexcept override {
        if (info == nullptr) {
            return E_POINTER;
        }
        *info = nullptr;
        if (index != 0 || DescribedInterface() == IID_NULL) {
            return DISP_E_BADINDEX;
        }
        *info = TypeInfoOf(DescribedInterface()).Detach();
        return *info == nullptr ? TYPE_E_CANTLOADLIBRARY : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID /*locale*/,
                                            DISPID* ids) noexcept override {
        if (reserved != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (names == nullptr || ids == nullptr) {
            return E_POINTER;
        }
        return table_.FindIds({names, count}, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID /*locale*/, WORD kind, DISPPARAMS* call,
                                     VARIANT* result, EXCEPINFO* /*exception*/,
                                     UINT* wrongArgument) noexcept override {
        if (reserved != IID_NULL) {
            return DISP_E_UNKNOWNINTERFACE;
        }
        if (result != nullptr) {
            VariantInit(result);
        }
        const assistant::DispatchMember* const member = table_.Find(id, kind);
        if (member == nullptr) {
            return DISP_E_MEMBERNOTFOUND;
        }
        if (call == nullptr) {
            return E_POINTER;
        }
        const ComPtr<IDispatch> stays(static_cast<First*>(this));  // while the host's code runs
        UINT ignored = 0;
        Variant outcome = EmptyResult(*member);
        HRESULT code = S_OK;
        try {
            code = Answer(*member, *call, outcome, wrongArgument == nullptr ? ignored : *wrongArgument);
        } catch (...) {
            // Memory ran out.
        }
        if (SUCCEEDED(code) && result != nullptr) {
            std::swap(*result, outcome.get());
        }
        return code;
    }

  protected:
    explicit TableObject(std::span<const assistant::DispatchMember> members) : table_(members) {}

    // The interface of the type library that describes the object; IID_NULL when none does.
    [[nodiscard]] virtual REFIID DescribedInterface() const noexcept = 0;

    // Does the work of the member with that number in the table. `result` is empty, of the member's type.
    // Parameters that it did not touch are not written back.
    virtual void Perform(int number, CallArguments& arguments, Variant& result) = 0;

  private:
    HRESULT Answer(const assistant::DispatchMember& member, const DISPPARAMS& call, Variant& result,
                   UINT& wrongArgument) {
        CallArguments arguments;
        if (const HRESULT code = arguments.Read(member, call, wrongArgument); FAILED(code)) {
            return code;
        }
        Perform(member.number, arguments, result);
        arguments.WriteBack();
        return S_OK;
    }

    MemberTable table_;
};

}  // namespace lintara::com

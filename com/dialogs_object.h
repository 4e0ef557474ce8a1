// `DialogsLT` as a COM object. The windows are shown by the system's own controls.
#pragma once

#include "com/com_ptr.h"
#include "com/lintara_idl.h"
#include "com/table_object.h"
#include "dialogs/dialog_host.h"
#include "dialogs/dialogs_lt.h"

#include <functional>
#include <ocidl.h>

namespace lintara::com {

// Calls back with what the dialogs need; it lives for that call.
using WithDialogHost = std::function<void(const std::function<void(const dialogs::DialogHost&)>&)>;

class DialogsObject final : public TableObject<IDialogsLT, IProvideClassInfo> {
  public:
    explicit DialogsObject(WithDialogHost withHost);

    HRESULT STDMETHODCALLTYPE GetInsertCCParameters(SHORT* Scope, BSTR* TextToInsert,
                                                    VARIANT_BOOL* NoDelimiters, SHORT* WhereToInsert,
                                                    LONG* LineToInsert, SHORT* ID,
                                                    VARIANT_BOOL* ProcAvailable, LONG* ComponentAvailable,
                                                    BSTR* sCCPBufferX,
                                                    VARIANT_BOOL* accepted) noexcept override;
    HRESULT STDMETHODCALLTYPE GetRemoveCCParameters(SHORT* Scope, SHORT* ID, VARIANT_BOOL* ProcAvailable,
                                                    LONG* ComponentAvailable,
                                                    VARIANT_BOOL* accepted) noexcept override;
    HRESULT STDMETHODCALLTYPE GetInsertEHParameters(SHORT* Scope, VARIANT_BOOL* InsertEH,
                                                    VARIANT_BOOL* InsertLN, BSTR* EHLabel, BSTR* EHCode,
                                                    BSTR* LNBase, BSTR* LNStep, SHORT* iLenGetMemberName,
                                                    LONG* iGetLineNumber, BSTR* sCCPBuffer,
                                                    VARIANT_BOOL* accepted) noexcept override;
    HRESULT STDMETHODCALLTYPE GetRemoveEHParameters(SHORT* Scope, VARIANT_BOOL* RemoveEH,
                                                    VARIANT_BOOL* RemoveLN, SHORT* iLenGetMemberName,
                                                    LONG* iGetLineNumber,
                                                    VARIANT_BOOL* accepted) noexcept override;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;

  private:
    [[nodiscard]] REFIID DescribedInterface() const noexcept override;
    void Perform(int number, CallArguments& arguments, Variant& result) override;
    [[nodiscard]] IUnknown& Self() { return *static_cast<IDialogsLT*>(this); }

    // Asks by the operation; `write` hands the outputs on when the user has confirmed.
    template <class Parameters, class Write>
    [[nodiscard]] bool Ask(bool (DialogsLT::*operation)(Parameters&) const noexcept, Parameters& parameters,
                           Write&& write) const;

    [[nodiscard]] bool AskInsertCC(CallArguments& arguments) const;
    [[nodiscard]] bool AskRemoveCC(CallArguments& arguments) const;
    [[nodiscard]] bool AskInsertEH(CallArguments& arguments) const;
    [[nodiscard]] bool AskRemoveEH(CallArguments& arguments) const;

    WithDialogHost withHost_;
};

}  // namespace lintara::com

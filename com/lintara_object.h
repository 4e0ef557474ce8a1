// `Lintara` as a COM object: the same class behind early bound and late-bound calls. It holds the services
// object of the host, and nothing else of the host's beyond a call.
#pragma once

#include "assistant/lintara.h"
#include "com/com_ptr.h"
#include "com/lintara_idl.h"
#include "com/table_object.h"

#include <ocidl.h>

namespace lintara::com {

class LintaraObject final : public TableObject<ILintara, IProvideClassInfo> {
  public:
    explicit LintaraObject(Platform platform);
    ~LintaraObject() override;

    HRESULT STDMETHODCALLTYPE get_oG(IDispatch** object) noexcept override;
    // DISP_E_TYPEMISMATCH for what is no object.
    HRESULT STDMETHODCALLTYPE put_oG(VARIANT value) noexcept override;
    HRESULT STDMETHODCALLTYPE putref_oG(IDispatch* object) noexcept override;

    HRESULT STDMETHODCALLTYPE get_TarnwickCPBuffer(BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_TarnwickCPBuffer(BSTR value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_AdditionalCPBuffer(LONG Index, BSTR* value) noexcept override;
    HRESULT STDMETHODCALLTYPE put_AdditionalCPBuffer(LONG Index, BSTR value) noexcept override;

    HRESULT STDMETHODCALLTYPE ParsePseudoCode(BSTR* APseudoCodeString, BSTR* code) noexcept override;
    HRESULT STDMETHODCALLTYPE ParsePseudoCodeEx(BSTR* APseudoCodeString, BSTR* AComponentName,
                                                BSTR* AMemberName, BSTR* code) noexcept override;
    HRESULT STDMETHODCALLTYPE GeneratePseudoCode(BSTR* sCode, BSTR* pseudoCode) noexcept override;
    HRESULT STDMETHODCALLTYPE GetMemberName(BSTR* name) noexcept override;
    HRESULT STDMETHODCALLTYPE GetMemberType(BSTR* type) noexcept override;
    HRESULT STDMETHODCALLTYPE GetMemberTypeEx(BSTR sComponentName, BSTR sMemberName,
                                              BSTR* type) noexcept override;
    HRESULT STDMETHODCALLTYPE InitCodeAutomation() noexcept override;
    HRESULT STDMETHODCALLTYPE GetTextSelection(BSTR* sLines, LONG iStartLine, LONG iEndLine, LONG iStartCol,
                                               LONG iEndCol, BSTR* selection) noexcept override;
    HRESULT STDMETHODCALLTYPE InsertTextInLine(BSTR sLine, BSTR sText, LONG iCol,
                                               BSTR* line) noexcept override;
    HRESULT STDMETHODCALLTYPE TranslateCarret(LONG* iLine, LONG* iCol, BSTR sText) noexcept override;
    HRESULT STDMETHODCALLTYPE CloseCodeAutomation() noexcept override;
    HRESULT STDMETHODCALLTYPE LineNumbersInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                                  LONG* iLNBase, LONG* iLNStep) noexcept override;
    HRESULT STDMETHODCALLTYPE LineNumbersRemover(BSTR* sProject, BSTR* sComponent,
                                                 BSTR* sMember) noexcept override;
    HRESULT STDMETHODCALLTYPE ErrorHandlerInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                                   BSTR* sEHLabel, BSTR* sEHCode) noexcept override;
    HRESULT STDMETHODCALLTYPE ErrorHandlerRemover(BSTR* sProject, BSTR* sComponent,
                                                  BSTR* sMember) noexcept override;
    HRESULT STDMETHODCALLTYPE SearchAndReplace(BSTR* AComponentName, BSTR* ASoughtString,
                                               BSTR* AReplacementString, LONG* AStartLine, LONG* AEndLine,
                                               VARIANT_BOOL* WholeWord, VARIANT_BOOL* GoThroughDelete,
                                               VARIANT_BOOL* AFound) noexcept override;
    HRESULT STDMETHODCALLTYPE CustomCodeInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                                 BSTR* sCodeToInsert, VARIANT_BOOL* fNoDelimiters,
                                                 SHORT* iWhere, LONG* iLine, SHORT* ID) noexcept override;
    HRESULT STDMETHODCALLTYPE CustomCodeRemover(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                                SHORT* ID) noexcept override;
    HRESULT STDMETHODCALLTYPE GetLineNumber(LONG* line) noexcept override;
    HRESULT STDMETHODCALLTYPE ShowHistory() noexcept override;

    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) noexcept override;

  private:
    [[nodiscard]] REFIID DescribedInterface() const noexcept override;
    void Perform(int number, CallArguments& arguments, Variant& result) override;

    [[nodiscard]] IUnknown& Self() { return *static_cast<ILintara*>(this); }
    [[nodiscard]] ComPtr<IDispatch> Services() const;
    void SetServices(const ComPtr<IDispatch>& object);

    Lintara lintara_;
};

}  // namespace lintara::com

#include "com/lintara_object.h"

#include "com/answer.h"
#include "com/conversion.h"
#include "com/host_globals.h"
#include "com/services_in_use.h"

#include <memory>
#include <utility>

namespace lintara::com {

LintaraObject::LintaraObject(Platform platform)
    : TableObject(assistant::DispatchTable()), lintara_(std::move(platform)) {}

LintaraObject::~LintaraObject() {
    NoteServices(this, nullptr);
}

REFIID LintaraObject::DescribedInterface() const noexcept {
    return __uuidof(ILintara);
}

ComPtr<IDispatch> LintaraObject::Services() const {
    const auto* const services = static_cast<const HostGlobals*>(lintara_.oG.get());
    return services == nullptr ? nullptr : services->object().object();
}

// The earlier object goes last: its end may call this one.
void LintaraObject::SetServices(const ComPtr<IDispatch>& object) {
    std::shared_ptr<hostmodel::Globals> services;
    if (object != nullptr) {
        services = std::make_shared<HostGlobals>(LateBound(object, std::make_shared<MemberIds>()));
    }
    NoteServices(this, services);
    lintara_.oG.swap(services);
}

HRESULT LintaraObject::get_oG(IDispatch** object) noexcept {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = Services().Detach();
    return S_OK;
}

HRESULT LintaraObject::put_oG(VARIANT value) noexcept {
    bool isObject = false;
    Do(Self(), [&] {
        const Result<ComPtr<IDispatch>> object = ToObject(value);
        isObject = object.has_value();
        if (isObject) {
            SetServices(*object);
        }
    });
    return isObject ? S_OK : DISP_E_TYPEMISMATCH;
}

HRESULT LintaraObject::putref_oG(IDispatch* object) noexcept {
    return Do(Self(), [&] { SetServices(ComPtr<IDispatch>(object)); });
}

HRESULT LintaraObject::get_TarnwickCPBuffer(BSTR* value) noexcept {
    return AnswerText(Self(), value, [&] { return lintara_.TarnwickCPBuffer(); });
}

HRESULT LintaraObject::put_TarnwickCPBuffer(BSTR value) noexcept {
    return Do(Self(), [&] { lintara_.SetTarnwickCPBuffer(In(value)); });
}

HRESULT LintaraObject::get_AdditionalCPBuffer(LONG Index, BSTR* value) noexcept {
    return AnswerText(Self(), value,
                      [&] { return lintara_.AdditionalCPBuffer(static_cast<std::int32_t>(Index)); });
}

HRESULT LintaraObject::put_AdditionalCPBuffer(LONG Index, BSTR value) noexcept {
    return Do(Self(), [&] { lintara_.SetAdditionalCPBuffer(static_cast<std::int32_t>(Index), In(value)); });
}

HRESULT LintaraObject::ParsePseudoCode(BSTR* APseudoCodeString, BSTR* code) noexcept {
    return AnswerText(Self(), code, [&] { return lintara_.ParsePseudoCode(In(APseudoCodeString)); });
}

HRESULT LintaraObject::ParsePseudoCodeEx(BSTR* APseudoCodeString, BSTR* AComponentName, BSTR* AMemberName,
                                         BSTR* code) noexcept {
    return AnswerText(Self(), code, [&] {
        return lintara_.ParsePseudoCodeEx(In(APseudoCodeString), In(AComponentName), In(AMemberName));
    });
}

HRESULT LintaraObject::GeneratePseudoCode(BSTR* sCode, BSTR* pseudoCode) noexcept {
    return AnswerText(Self(), pseudoCode, [&] { return lintara_.GeneratePseudoCode(In(sCode)); });
}

HRESULT LintaraObject::GetMemberName(BSTR* name) noexcept {
    return AnswerText(Self(), name, [&] { return lintara_.GetMemberName(); });
}

HRESULT LintaraObject::GetMemberType(BSTR* type) noexcept {
    return AnswerText(Self(), type, [&] { return lintara_.GetMemberType(); });
}

HRESULT LintaraObject::GetMemberTypeEx(BSTR sComponentName, BSTR sMemberName, BSTR* type) noexcept {
    return AnswerText(Self(), type,
                      [&] { return lintara_.GetMemberTypeEx(In(sComponentName), In(sMemberName)); });
}

HRESULT LintaraObject::InitCodeAutomation() noexcept {
    return Do(Self(), [&] { lintara_.InitCodeAutomation(); });
}

HRESULT LintaraObject::GetTextSelection(BSTR* sLines, LONG iStartLine, LONG iEndLine, LONG iStartCol,
                                        LONG iEndCol, BSTR* selection) noexcept {
    return AnswerText(Self(), selection, [&] {
        Text lines(In(sLines));
        Text selected = lintara_.GetTextSelection(
            lines, static_cast<std::int32_t>(iStartLine), static_cast<std::int32_t>(iEndLine),
            static_cast<std::int32_t>(iStartCol), static_cast<std::int32_t>(iEndCol));
        Out(sLines, lines);
        return selected;
    });
}

HRESULT LintaraObject::InsertTextInLine(BSTR sLine, BSTR sText, LONG iCol, BSTR* line) noexcept {
    return AnswerText(Self(), line, [&] {
        return lintara_.InsertTextInLine(In(sLine), In(sText), static_cast<std::int32_t>(iCol));
    });
}

HRESULT LintaraObject::TranslateCarret(LONG* iLine, LONG* iCol, BSTR sText) noexcept {
    return Do(Self(), [&] {
        std::int32_t line = In(iLine);
        std::int32_t column = In(iCol);
        lintara_.TranslateCarret(line, column, In(sText));
        Out(iLine, line);
        Out(iCol, column);
    });
}

HRESULT LintaraObject::CloseCodeAutomation() noexcept {
    return Do(Self(), [&] { lintara_.CloseCodeAutomation(); });
}

HRESULT LintaraObject::LineNumbersInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember, LONG* iLNBase,
                                           LONG* iLNStep) noexcept {
    return Do(Self(), [&] {
        lintara_.LineNumbersInserter(In(sProject), In(sComponent), In(sMember), In(iLNBase), In(iLNStep));
    });
}

HRESULT LintaraObject::LineNumbersRemover(BSTR* sProject, BSTR* sComponent, BSTR* sMember) noexcept {
    return Do(Self(), [&] { lintara_.LineNumbersRemover(In(sProject), In(sComponent), In(sMember)); });
}

HRESULT LintaraObject::ErrorHandlerInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember, BSTR* sEHLabel,
                                            BSTR* sEHCode) noexcept {
    return Do(Self(), [&] {
        lintara_.ErrorHandlerInserter(In(sProject), In(sComponent), In(sMember), In(sEHLabel), In(sEHCode));
    });
}

HRESULT LintaraObject::ErrorHandlerRemover(BSTR* sProject, BSTR* sComponent, BSTR* sMember) noexcept {
    return Do(Self(), [&] { lintara_.ErrorHandlerRemover(In(sProject), In(sComponent), In(sMember)); });
}

HRESULT LintaraObject::SearchAndReplace(BSTR* AComponentName, BSTR* ASoughtString, BSTR* AReplacementString,
                                        LONG* AStartLine, LONG* AEndLine, VARIANT_BOOL* WholeWord,
                                        VARIANT_BOOL* GoThroughDelete, VARIANT_BOOL* AFound) noexcept {
    return Do(Self(), [&] {
        bool found = false;
        lintara_.SearchAndReplace(In(AComponentName), In(ASoughtString), In(AReplacementString),
                                  In(AStartLine), In(AEndLine), InTruth(WholeWord), InTruth(GoThroughDelete),
                                  found);
        OutTruth(AFound, found);
    });
}

HRESULT LintaraObject::CustomCodeInserter(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                          BSTR* sCodeToInsert, VARIANT_BOOL* fNoDelimiters, SHORT* iWhere,
                                          LONG* iLine, SHORT* ID) noexcept {
    return Do(Self(), [&] {
        lintara_.CustomCodeInserter(In(sProject), In(sComponent), In(sMember), In(sCodeToInsert),
                                    InTruth(fNoDelimiters), In(iWhere), In(iLine), In(ID));
    });
}

HRESULT LintaraObject::CustomCodeRemover(BSTR* sProject, BSTR* sComponent, BSTR* sMember,
                                         SHORT* ID) noexcept {
    return Do(Self(), [&] { lintara_.CustomCodeRemover(In(sProject), In(sComponent), In(sMember), In(ID)); });
}

HRESULT LintaraObject::GetLineNumber(LONG* line) noexcept {
    if (line == nullptr) {
        return E_POINTER;
    }
    *line = 0;
    return Do(Self(), [&] { *line = lintara_.GetLineNumber(); });
}

HRESULT LintaraObject::ShowHistory() noexcept {
    return Do(Self(), [&] { lintara_.ShowHistory(); });
}

HRESULT LintaraObject::GetClassInfo(ITypeInfo** info) noexcept {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = TypeInfoOf(CLSID_Lintara).Detach();
    return *info == nullptr ? TYPE_E_CANTLOADLIBRARY : S_OK;
}

// The members by their numbers in the table.
void LintaraObject::Perform(int number, CallArguments& a, Variant& result) {
    const auto answer = [&](const Text& text) { result = Variant(TextView(text)); };
    switch (number) {
        case 1:
            result = Variant(Services().get());
            break;
        case 2:
        case 3:
            SetServices(a.object(0));
            break;
        case 4:
            answer(lintara_.TarnwickCPBuffer());
            break;
        case 5:
            lintara_.SetTarnwickCPBuffer(a.text(0));
            break;
        case 6:
            answer(lintara_.AdditionalCPBuffer(a.number(0)));
            break;
        case 7:
            lintara_.SetAdditionalCPBuffer(a.number(0), a.text(1));
            break;
        case 8:
            answer(lintara_.ParsePseudoCode(a.text(0)));
            break;
        case 9:
            answer(lintara_.ParsePseudoCodeEx(a.text(0), a.text(1), a.text(2)));
            break;
        case 10:
            answer(lintara_.GeneratePseudoCode(a.text(0)));
            break;
        case 11:
            answer(lintara_.GetMemberName());
            break;
        case 12:
            answer(lintara_.GetMemberType());
            break;
        case 13:
            answer(lintara_.GetMemberTypeEx(a.text(0), a.text(1)));
            break;
        case 14:
            lintara_.InitCodeAutomation();
            break;
        case 15:
            answer(lintara_.GetTextSelection(a.text(0), a.number(1), a.number(2), a.number(3), a.number(4)));
            break;
        case 16:
            answer(lintara_.InsertTextInLine(a.text(0), a.text(1), a.number(2)));
            break;
        case 17:
            lintara_.TranslateCarret(a.number(0), a.number(1), a.text(2));
            break;
        case 18:
            lintara_.CloseCodeAutomation();
            break;
        case 19:
            lintara_.LineNumbersInserter(a.text(0), a.text(1), a.text(2), a.number(3), a.number(4));
            break;
        case 20:
            lintara_.LineNumbersRemover(a.text(0), a.text(1), a.text(2));
            break;
        case 21:
            lintara_.ErrorHandlerInserter(a.text(0), a.text(1), a.text(2), a.text(3), a.text(4));
            break;
        case 22:
            lintara_.ErrorHandlerRemover(a.text(0), a.text(1), a.text(2));
            break;
        case 23:
            lintara_.SearchAndReplace(a.text(0), a.text(1), a.text(2), a.number(3), a.number(4), a.truth(5),
                                      a.truth(6), a.truth(7));
            break;
        case 24:
            lintara_.CustomCodeInserter(a.text(0), a.text(1), a.text(2), a.text(3), a.truth(4), a.integer(5),
                                        a.number(6), a.integer(7));
            break;
        case 25:
            lintara_.CustomCodeRemover(a.text(0), a.text(1), a.text(2), a.integer(3));
            break;
        case 26:
            result = Variant(lintara_.GetLineNumber());
            break;
        case 27:
            lintara_.ShowHistory();
            break;
        default:
            break;
    }
}

}  // namespace lintara::com

#include "com/dialogs_object.h"

#include "com/answer.h"
#include "com/dialogs_members.h"

#include <utility>

namespace lintara::com {

using dialogs::InsertCCParameters;
using dialogs::InsertEHParameters;
using dialogs::RemoveCCParameters;
using dialogs::RemoveEHParameters;

DialogsObject::DialogsObject(WithDialogHost withHost)
    : TableObject(DialogsMembers()), withHost_(std::move(withHost)) {}

REFIID DialogsObject::DescribedInterface() const noexcept {
    return __uuidof(IDialogsLT);
}

template <class Parameters, class Write>
bool DialogsObject::Ask(bool (DialogsLT::*operation)(Parameters&) const noexcept, Parameters& parameters,
                        Write&& write) const {
    bool accepted = false;
    withHost_([&](const dialogs::DialogHost& host) {
        const DialogsLT dialogs(host);
        accepted = (dialogs.*operation)(parameters);
    });
    if (accepted) {
        std::forward<Write>(write)();
    }
    return accepted;
}

HRESULT DialogsObject::GetInsertCCParameters(SHORT* Scope, BSTR* TextToInsert, VARIANT_BOOL* NoDelimiters,
                                             SHORT* WhereToInsert, LONG* LineToInsert, SHORT* ID,
                                             VARIANT_BOOL* ProcAvailable, LONG* ComponentAvailable,
                                             BSTR* sCCPBufferX, VARIANT_BOOL* accepted) noexcept {
    return AnswerTruth(Self(), accepted, [&] {
        InsertCCParameters p{.Scope = In(Scope),
                             .TextToInsert = Text(In(TextToInsert)),
                             .NoDelimiters = InTruth(NoDelimiters),
                             .WhereToInsert = In(WhereToInsert),
                             .LineToInsert = In(LineToInsert),
                             .ID = In(ID),
                             .ProcAvailable = InTruth(ProcAvailable),
                             .ComponentAvailable = In(ComponentAvailable),
                             .sCCPBufferX = Text(In(sCCPBufferX))};
        return Ask(&DialogsLT::GetInsertCCParameters, p, [&] {
            Out(Scope, p.Scope);
            Out(TextToInsert, p.TextToInsert);
            OutTruth(NoDelimiters, p.NoDelimiters);
            Out(WhereToInsert, p.WhereToInsert);
            Out(LineToInsert, p.LineToInsert);
            Out(ID, p.ID);
            Out(sCCPBufferX, p.sCCPBufferX);
        });
    });
}

HRESULT DialogsObject::GetRemoveCCParameters(SHORT* Scope, SHORT* ID, VARIANT_BOOL* ProcAvailable,
                                             LONG* ComponentAvailable, VARIANT_BOOL* accepted) noexcept {
    return AnswerTruth(Self(), accepted, [&] {
        RemoveCCParameters p{.Scope = In(Scope),
                             .ID = In(ID),
                             .ProcAvailable = InTruth(ProcAvailable),
                             .ComponentAvailable = In(ComponentAvailable)};
        return Ask(&DialogsLT::GetRemoveCCParameters, p, [&] {
            Out(Scope, p.Scope);
            Out(ID, p.ID);
        });
    });
}

HRESULT DialogsObject::GetInsertEHParameters(SHORT* Scope, VARIANT_BOOL* InsertEH, VARIANT_BOOL* InsertLN,
                                             BSTR* EHLabel, BSTR* EHCode, BSTR* LNBase, BSTR* LNStep,
                                             SHORT* iLenGetMemberName, LONG* iGetLineNumber, BSTR* sCCPBuffer,
                                             VARIANT_BOOL* accepted) noexcept {
    return AnswerTruth(Self(), accepted, [&] {
        InsertEHParameters p{.Scope = In(Scope),
                             .InsertEH = InTruth(InsertEH),
                             .InsertLN = InTruth(InsertLN),
                             .EHLabel = Text(In(EHLabel)),
                             .EHCode = Text(In(EHCode)),
                             .LNBase = Text(In(LNBase)),
                             .LNStep = Text(In(LNStep)),
                             .iLenGetMemberName = In(iLenGetMemberName),
                             .iGetLineNumber = In(iGetLineNumber),
                             .sCCPBuffer = Text(In(sCCPBuffer))};
        return Ask(&DialogsLT::GetInsertEHParameters, p, [&] {
            Out(Scope, p.Scope);
            OutTruth(InsertEH, p.InsertEH);
            OutTruth(InsertLN, p.InsertLN);
            Out(EHLabel, p.EHLabel);
            Out(EHCode, p.EHCode);
            Out(LNBase, p.LNBase);
            Out(LNStep, p.LNStep);
            Out(sCCPBuffer, p.sCCPBuffer);
        });
    });
}

HRESULT DialogsObject::GetRemoveEHParameters(SHORT* Scope, VARIANT_BOOL* RemoveEH, VARIANT_BOOL* RemoveLN,
                                             SHORT* iLenGetMemberName, LONG* iGetLineNumber,
                                             VARIANT_BOOL* accepted) noexcept {
    return AnswerTruth(Self(), accepted, [&] {
        RemoveEHParameters p{.Scope = In(Scope),
                             .RemoveEH = InTruth(RemoveEH),
                             .RemoveLN = InTruth(RemoveLN),
                             .iLenGetMemberName = In(iLenGetMemberName),
                             .iGetLineNumber = In(iGetLineNumber)};
        return Ask(&DialogsLT::GetRemoveEHParameters, p, [&] {
            Out(Scope, p.Scope);
            OutTruth(RemoveEH, p.RemoveEH);
            OutTruth(RemoveLN, p.RemoveLN);
        });
    });
}

HRESULT DialogsObject::GetClassInfo(ITypeInfo** info) noexcept {
    if (info == nullptr) {
        return E_POINTER;
    }
    *info = TypeInfoOf(CLSID_DialogsLT).Detach();
    return *info == nullptr ? TYPE_E_CANTLOADLIBRARY : S_OK;
}

bool DialogsObject::AskInsertCC(CallArguments& a) const {
    InsertCCParameters p{.Scope = a.integer(0),
                         .TextToInsert = a.text(1),
                         .NoDelimiters = a.truth(2),
                         .WhereToInsert = a.integer(3),
                         .LineToInsert = a.number(4),
                         .ID = a.integer(5),
                         .ProcAvailable = a.truth(6),
                         .ComponentAvailable = a.number(7),
                         .sCCPBufferX = a.text(8)};
    return Ask(&DialogsLT::GetInsertCCParameters, p, [&] {
        a.Write(0, std::int32_t{p.Scope});
        a.Write(1, p.TextToInsert);
        a.Write(2, p.NoDelimiters);
        a.Write(3, std::int32_t{p.WhereToInsert});
        a.Write(4, p.LineToInsert);
        a.Write(5, std::int32_t{p.ID});
        a.Write(8, p.sCCPBufferX);
    });
}

bool DialogsObject::AskRemoveCC(CallArguments& a) const {
    RemoveCCParameters p{.Scope = a.integer(0),
                         .ID = a.integer(1),
                         .ProcAvailable = a.truth(2),
                         .ComponentAvailable = a.number(3)};
    return Ask(&DialogsLT::GetRemoveCCParameters, p, [&] {
        a.Write(0, std::int32_t{p.Scope});
        a.Write(1, std::int32_t{p.ID});
    });
}

bool DialogsObject::AskInsertEH(CallArguments& a) const {
    InsertEHParameters p{.Scope = a.integer(0),
                         .InsertEH = a.truth(1),
                         .InsertLN = a.truth(2),
                         .EHLabel = a.text(3),
                         .EHCode = a.text(4),
                         .LNBase = a.text(5),
                         .LNStep = a.text(6),
                         .iLenGetMemberName = a.integer(7),
                         .iGetLineNumber = a.number(8),
                         .sCCPBuffer = a.text(9)};
    return Ask(&DialogsLT::GetInsertEHParameters, p, [&] {
        a.Write(0, std::int32_t{p.Scope});
        a.Write(1, p.InsertEH);
        a.Write(2, p.InsertLN);
        a.Write(3, p.EHLabel);
        a.Write(4, p.EHCode);
        a.Write(5, p.LNBase);
        a.Write(6, p.LNStep);
        a.Write(9, p.sCCPBuffer);
    });
}

bool DialogsObject::AskRemoveEH(CallArguments& a) const {
    RemoveEHParameters p{.Scope = a.integer(0),
                         .RemoveEH = a.truth(1),
                         .RemoveLN = a.truth(2),
                         .iLenGetMemberName = a.integer(3),
                         .iGetLineNumber = a.number(4)};
    return Ask(&DialogsLT::GetRemoveEHParameters, p, [&] {
        a.Write(0, std::int32_t{p.Scope});
        a.Write(1, p.RemoveEH);
        a.Write(2, p.RemoveLN);
    });
}

void DialogsObject::Perform(int number, CallArguments& arguments, Variant& result) {
    switch (number) {
        case 1:
            result = Variant(AskInsertCC(arguments));
            break;
        case 2:
            result = Variant(AskRemoveCC(arguments));
            break;
        case 3:
            result = Variant(AskInsertEH(arguments));
            break;
        case 4:
            result = Variant(AskRemoveEH(arguments));
            break;
        default:
            break;
    }
}

}  // namespace lintara::com

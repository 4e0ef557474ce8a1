// The type library against the table of members that all late-bound callers share.

#include "assistant/dispatch_table.h"
#include "com/bstr.h"
#include "com/lintara_idl.h"
#include "com/module.h"

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using assistant::Access;
using assistant::DispatchMember;
using assistant::Parameter;
using assistant::ValueType;

struct TypedParameter {
    Text name;
    VARTYPE type = VT_EMPTY;  // without the reference
    bool isReference = false;
    USHORT flags = 0;
};

struct Member {
    Text name;
    INVOKEKIND kind = INVOKE_FUNC;
    DISPID id = 0;
    Text help;
    std::vector<TypedParameter> parameters;  // with the result as the last one
};

Text NameIn(ITypeInfo& info, DISPID id) {
    Bstr name;
    info.GetDocumentation(id, name.Place(), nullptr, nullptr, nullptr);
    return Text(name.view());
}

TypedParameter Described(const ELEMDESC& element, Text name) {
    const bool isReference = element.tdesc.vt == VT_PTR;
    VARTYPE type = isReference ? element.tdesc.lptdesc->vt : element.tdesc.vt;
    const bool isObject = type == VT_PTR || (isReference && type == VT_USERDEFINED);
    if (isObject || type == VT_USERDEFINED) {
        type = VT_DISPATCH;
    }
    return {std::move(name), type, isReference, element.paramdesc.wParamFlags};
}

Member MemberAt(ITypeInfo& info, UINT index) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(info.GetFuncDesc(index, &function), S_OK);
    Member member;
    member.kind = function->invkind;
    member.id = function->memid;
    std::vector<BSTR> names(static_cast<std::size_t>(function->cParams) + 1, nullptr);
    UINT count = 0;
    info.GetNames(function->memid, names.data(), static_cast<UINT>(names.size()), &count);
    member.name = Text(ViewOf(names[0]));
    for (int i = 0; i < function->cParams; ++i) {
        const auto position = static_cast<std::size_t>(i);
        member.parameters.push_back(
            Described(function->lprgelemdescParam[i], Text(ViewOf(names[position + 1]))));
    }
    for (const BSTR name : names) {
        ::SysFreeString(name);
    }
    Bstr help;
    info.GetDocumentation(function->memid, nullptr, help.Place(), nullptr, nullptr);
    member.help = Text(help.view());
    info.ReleaseFuncDesc(function);
    return member;
}

// The members of a dual interface as early-bound callers see them, without those of the system's own.
std::vector<Member> MembersOf(REFIID interfaceId) {
    const ComPtr<ITypeInfo> byName = TypeInfoOf(interfaceId);
    HREFTYPE reference = 0;
    ComPtr<ITypeInfo> info;
    if (!byName || FAILED(byName->GetRefTypeOfImplType(static_cast<UINT>(-1), &reference)) ||
        FAILED(byName->GetRefTypeInfo(reference, info.Place()))) {
        ADD_FAILURE() << "the interface is not in the type library";
        return {};
    }
    TYPEATTR* attributes = nullptr;
    EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
    const UINT count = attributes->cFuncs;
    info->ReleaseTypeAttr(attributes);
    std::vector<Member> members;
    for (UINT i = 0; i < count; ++i) {
        members.push_back(MemberAt(*info.get(), i));
    }
    return members;
}

VARTYPE VariantType(ValueType type) {
    const std::map<ValueType, VARTYPE> types = {{ValueType::Text, VT_BSTR},
                                                {ValueType::Integer, VT_I2},
                                                {ValueType::Long, VT_I4},
                                                {ValueType::Boolean, VT_BOOL},
                                                {ValueType::Object, VT_DISPATCH}};
    return types.at(type);
}

INVOKEKIND InvokeKind(Access access) {
    const std::map<Access, INVOKEKIND> kinds = {{Access::Method, INVOKE_FUNC},
                                                {Access::Get, INVOKE_PROPERTYGET},
                                                {Access::Put, INVOKE_PROPERTYPUT},
                                                {Access::PutReference, INVOKE_PROPERTYPUTREF}};
    return kinds.at(access);
}

TEST(TypeLibrary, IsCalledAsHostsReferToIt) {
    const ComPtr<ITypeLib> library = ModuleTypeLibrary();
    ASSERT_TRUE(library);
    Bstr name;
    Bstr help;
    ASSERT_EQ(library->GetDocumentation(MEMBERID_NIL, name.Place(), help.Place(), nullptr, nullptr), S_OK);
    EXPECT_EQ(name.view(), u"Tarnwick30Lintara");
    EXPECT_NE(help.view(), u"");
    TLIBATTR* attributes = nullptr;
    ASSERT_EQ(library->GetLibAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->wMajorVerNum, 3);
    EXPECT_EQ(attributes->wMinorVerNum, 0);
    EXPECT_EQ(attributes->syskind, sizeof(void*) == 8 ? SYS_WIN64 : SYS_WIN32);
    library->ReleaseTLibAttr(attributes);
}

TEST(TypeLibrary, HasBothClassesWithTheirInterfaces) {
    const ComPtr<ITypeLib> library = ModuleTypeLibrary();
    ASSERT_TRUE(library);
    struct Expected {
        CLSID id;
        TextView name;
        TextView interfaceName;
    };
    for (const Expected& expected : {Expected{CLSID_Lintara, u"Lintara", u"ILintara"},
                                     Expected{CLSID_DialogsLT, u"DialogsLT", u"IDialogsLT"}}) {
        ComPtr<ITypeInfo> info;
        ASSERT_EQ(library->GetTypeInfoOfGuid(expected.id, info.Place()), S_OK);
        TYPEATTR* attributes = nullptr;
        ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
        EXPECT_EQ(attributes->typekind, TKIND_COCLASS);
        EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCANCREATE, 0);
        info->ReleaseTypeAttr(attributes);
        EXPECT_EQ(NameIn(*info.get(), MEMBERID_NIL), expected.name);
        HREFTYPE reference = 0;
        ComPtr<ITypeInfo> itsInterface;
        ASSERT_EQ(info->GetRefTypeOfImplType(0, &reference), S_OK);
        ASSERT_EQ(info->GetRefTypeInfo(reference, itsInterface.Place()), S_OK);
        EXPECT_EQ(NameIn(*itsInterface.get(), MEMBERID_NIL), expected.interfaceName);
    }
}

TEST(TypeLibrary, HasTheMembersOfTheTableInItsOrder) {
    const std::vector<Member> members = MembersOf(IID_ILintara);
    const auto table = assistant::DispatchTable();
    ASSERT_EQ(members.size(), table.size());
    std::map<Text, DISPID> ids;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const DispatchMember& expected = table[i];
        SCOPED_TRACE(expected.number);
        EXPECT_EQ(members[i].name, expected.name);
        EXPECT_EQ(members[i].kind, InvokeKind(expected.access));
        EXPECT_NE(members[i].help, u"");
        const auto [known, isNew] = ids.emplace(members[i].name, expected.number);
        EXPECT_EQ(members[i].id, known->second) << "the number of the first entry of that name";
    }
}

TEST(TypeLibrary, ParametersHaveTheNamesAndTypesOfTheTable) {
    const std::vector<Member> members = MembersOf(IID_ILintara);
    const auto table = assistant::DispatchTable();
    ASSERT_EQ(members.size(), table.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        SCOPED_TRACE(table[i].number);
        std::vector<TypedParameter> parameters = members[i].parameters;
        if (table[i].result) {
            ASSERT_FALSE(parameters.empty());
            EXPECT_EQ(parameters.back().flags, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
            EXPECT_EQ(parameters.back().type, VariantType(*table[i].result));
            parameters.pop_back();
        }
        ASSERT_EQ(parameters.size(), table[i].parameters.size());
        for (std::size_t p = 0; p < parameters.size(); ++p) {
            const Parameter& expected = table[i].parameters[p];
            // The last parameter of a property's write has no name of its own: languages write it behind "=".
            const bool isWritten =
                InvokeKind(table[i].access) >= INVOKE_PROPERTYPUT && p + 1 == parameters.size();
            EXPECT_TRUE(isWritten || parameters[p].name == expected.name) << p;
            const bool takesAnything = parameters[p].type == VT_VARIANT && table[i].number == 2;
            EXPECT_TRUE(takesAnything || parameters[p].type == VariantType(expected.type)) << p;
            if (expected.direction != assistant::Direction::In) {
                EXPECT_TRUE(parameters[p].isReference) << p;
            }
            if (parameters[p].isReference && expected.type != ValueType::Object) {
                EXPECT_EQ(parameters[p].flags, PARAMFLAG_FIN | PARAMFLAG_FOUT) << p;
            }
        }
    }
}

TEST(TypeLibrary, DialogsTakeVariablesAndTellWhetherTheUserBegan) {
    const std::vector<Member> members = MembersOf(IID_IDialogsLT);
    const std::vector<std::pair<TextView, std::vector<std::pair<TextView, VARTYPE>>>> expected = {
        {u"GetInsertCCParameters",
         {{u"Scope", VT_I2},
          {u"TextToInsert", VT_BSTR},
          {u"NoDelimiters", VT_BOOL},
          {u"WhereToInsert", VT_I2},
          {u"LineToInsert", VT_I4},
          {u"ID", VT_I2},
          {u"ProcAvailable", VT_BOOL},
          {u"ComponentAvailable", VT_I4},
          {u"sCCPBufferX", VT_BSTR}}},
        {u"GetRemoveCCParameters",
         {{u"Scope", VT_I2}, {u"ID", VT_I2}, {u"ProcAvailable", VT_BOOL}, {u"ComponentAvailable", VT_I4}}},
        {u"GetInsertEHParameters",
         {{u"Scope", VT_I2},
          {u"InsertEH", VT_BOOL},
          {u"InsertLN", VT_BOOL},
          {u"EHLabel", VT_BSTR},
          {u"EHCode", VT_BSTR},
          {u"LNBase", VT_BSTR},
          {u"LNStep", VT_BSTR},
          {u"iLenGetMemberName", VT_I2},
          {u"iGetLineNumber", VT_I4},
          {u"sCCPBuffer", VT_BSTR}}},
        {u"GetRemoveEHParameters",
         {{u"Scope", VT_I2},
          {u"RemoveEH", VT_BOOL},
          {u"RemoveLN", VT_BOOL},
          {u"iLenGetMemberName", VT_I2},
          {u"iGetLineNumber", VT_I4}}},
    };
    ASSERT_EQ(members.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const auto& [name, parameters] = expected[i];
        EXPECT_EQ(members[i].name, name);
        EXPECT_EQ(members[i].id, static_cast<DISPID>(i + 1));
        EXPECT_NE(members[i].help, u"");
        ASSERT_EQ(members[i].parameters.size(), parameters.size() + 1);
        for (std::size_t p = 0; p < parameters.size(); ++p) {
            EXPECT_EQ(members[i].parameters[p].name, parameters[p].first);
            EXPECT_EQ(members[i].parameters[p].type, parameters[p].second);
            EXPECT_TRUE(members[i].parameters[p].isReference);
        }
        EXPECT_EQ(members[i].parameters.back().type, VT_BOOL);
        EXPECT_EQ(members[i].parameters.back().flags, PARAMFLAG_FOUT | PARAMFLAG_FRETVAL);
    }
}

}  // namespace
}  // namespace lintara::com

// What callers send to IDispatch::Invoke, and what they get: kinds of arguments, by place and by name, wrong
// ones, and the way back into variables of every type.
#include "assistant/dispatch_table.h"
#include "base/utf8.h"
#include "com/conversion.h"
#include "com/lintara_idl.h"
#include "tests/com/component_library.h"
#include "tests/com/late_bound_host.h"
#include "tests/com/named_invoke.h"
#include "tests/com/test_object.h"

#include <ocidl.h>
#include <string>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::Double;
using support::InvokeById;
using support::InvokeByName;
using support::InvokeOutcome;
using support::Lend;
using support::Omitted;
using support::Refer;

constexpr WORD Method = DISPATCH_METHOD;
constexpr WORD Get = DISPATCH_PROPERTYGET;
constexpr WORD Function = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
constexpr WORD Put = DISPATCH_PROPERTYPUT;
constexpr WORD PutReference = DISPATCH_PROPERTYPUTREF;

// The value's type and the value: "8:text", "3:12".
std::string Shown(const VARIANT& value) {
    const Result<Text> text = ToText(value);
    return std::to_string(value.vt) + ":" + (text ? ToUtf8(*text) : "(no text)");
}

class InvokeTest : public testing::Test {
  protected:
    support::ComponentLibrary library_;
    ComPtr<IDispatch> lintara_ = library_.Create<IDispatch>(CLSID_Lintara);

    // Writes a buffer and reads it back.
    InvokeOutcome PutBuffer(VARIANTARG value, WORD kind = Put) {
        return InvokeByName(*lintara_, L"TarnwickCPBuffer", kind, {value}, {DISPID_PROPERTYPUT});
    }
    std::string Buffer() { return Shown(InvokeByName(*lintara_, L"TarnwickCPBuffer", Get).result.get()); }
};

TEST_F(InvokeTest, MembersHaveTheNumbersOfTheTableInAnyLetterCase) {
    for (const assistant::DispatchMember& member : assistant::DispatchTable()) {
        std::wstring name(member.name.begin(), member.name.end());
        const DISPID id = support::IdOf(*lintara_, name.c_str());
        EXPECT_LE(id, member.number);
        EXPECT_GE(id, 1);
        for (wchar_t& c : name) {
            c = static_cast<wchar_t>(towupper(c));
        }
        EXPECT_EQ(support::IdOf(*lintara_, name.c_str()), id);
    }
}

TEST_F(InvokeTest, NamesOfParametersHaveTheirPlaces) {
    wchar_t member[] = L"LineNumbersInserter";
    wchar_t last[] = L"ilnstep";
    wchar_t first[] = L"sProject";
    std::vector<LPOLESTR> names = {member, last, first};
    std::vector<DISPID> ids(3);
    EXPECT_EQ(lintara_->GetIDsOfNames(IID_NULL, names.data(), 3, LOCALE_USER_DEFAULT, ids.data()), S_OK);
    EXPECT_EQ(ids, (std::vector<DISPID>{19, 4, 0}));
}

TEST_F(InvokeTest, UnknownNamesAreTold) {
    wchar_t unknown[] = L"LineNumbersInserterX";
    wchar_t member[] = L"GetMemberName";
    wchar_t parameter[] = L"sProject";
    std::vector<LPOLESTR> names = {unknown};
    std::vector<DISPID> ids(2, 7);
    EXPECT_EQ(lintara_->GetIDsOfNames(IID_NULL, names.data(), 1, LOCALE_USER_DEFAULT, ids.data()),
              DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    names = {member, parameter};
    EXPECT_EQ(lintara_->GetIDsOfNames(IID_NULL, names.data(), 2, LOCALE_USER_DEFAULT, ids.data()),
              DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids, (std::vector<DISPID>{11, DISPID_UNKNOWN}));
}

TEST_F(InvokeTest, UnknownIdentifiersAndKindsAreTold) {
    EXPECT_EQ(InvokeById(*lintara_, 0, Function).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(InvokeById(*lintara_, 2, Put).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(InvokeById(*lintara_, 28, Method).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(InvokeByName(*lintara_, L"GetMemberName", Get).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(InvokeByName(*lintara_, L"GetMemberName", Put).code, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(PutBuffer(Lend(Variant(u"x")), PutReference).code, DISP_E_MEMBERNOTFOUND);
}

TEST_F(InvokeTest, AForeignReservedArgumentIsRefused) {
    DISPPARAMS none{};
    EXPECT_EQ(lintara_->Invoke(11, IID_IUnknown, 0, Method, &none, nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
    DISPID id = 0;
    wchar_t member[] = L"oG";
    LPOLESTR name = member;
    EXPECT_EQ(lintara_->GetIDsOfNames(IID_IUnknown, &name, 1, 0, &id), DISP_E_UNKNOWNINTERFACE);
}

TEST_F(InvokeTest, ACallWithoutPlacesForResultsIsMade) {
    Variant value(u"kept");
    VARIANTARG argument = Lend(value);
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS parameters{&argument, &named, 1, 1};
    EXPECT_EQ(lintara_->Invoke(4, IID_NULL, 0, Put, &parameters, nullptr, nullptr, nullptr), S_OK);
    DISPPARAMS none{};
    EXPECT_EQ(lintara_->Invoke(4, IID_NULL, 0, Get, &none, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(Buffer(), "8:kept");
}

TEST_F(InvokeTest, ATextComesInEveryGuise) {
    BSTR text = NewBstr(u"by reference");
    Variant inVariant(u"in a variant");
    Variant reference;
    reference.get() = Refer(VT_BSTR, &text);
    Variant empty;
    const Variant number(std::int32_t{-12});
    const Variant fraction = Double(1.5);
    const Variant truth(true);
    EXPECT_EQ(PutBuffer(Refer(VT_BSTR, &text)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:by reference");
    EXPECT_EQ(PutBuffer(Refer(inVariant)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:in a variant");
    EXPECT_EQ(PutBuffer(Refer(reference)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:by reference");
    EXPECT_EQ(PutBuffer(Lend(number)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:-12");
    EXPECT_EQ(PutBuffer(Lend(fraction)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:1.5");
    EXPECT_EQ(PutBuffer(Lend(truth)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:True");
    EXPECT_EQ(PutBuffer(Lend(empty)).code, S_OK);
    EXPECT_EQ(Buffer(), "8:");
    reference.get().vt = VT_EMPTY;
    SysFreeString(text);
}

TEST_F(InvokeTest, TextsKeepZerosAndUnpairedSurrogates) {
    const TextView strange(u"a\0b\xD800\xFFFF", 5);
    const Variant value(strange);
    EXPECT_EQ(PutBuffer(Lend(value)).code, S_OK);
    const InvokeOutcome read = InvokeByName(*lintara_, L"TarnwickCPBuffer", Get);
    EXPECT_EQ(ViewOf(read.result.get().bstrVal), strange);
}

TEST_F(InvokeTest, AnAssignmentMayLeaveItsValueUnnamed) {
    const Variant value(u"plain");
    EXPECT_EQ(InvokeByName(*lintara_, L"TarnwickCPBuffer", Put, {Lend(value)}).code, S_OK);
    EXPECT_EQ(Buffer(), "8:plain");
}

TEST_F(InvokeTest, WhatIsNoTextIsAMismatch) {
    Variant null;
    null.get().vt = VT_NULL;
    const Variant nothing(static_cast<IDispatch*>(nullptr));
    VARIANTARG nowhere = Refer(VT_BSTR, nullptr);
    for (const VARIANTARG& wrong : {Lend(null), Refer(null), nowhere}) {
        const InvokeOutcome outcome = PutBuffer(wrong);
        EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
        EXPECT_EQ(outcome.wrongArgument, 0U);
    }
    EXPECT_EQ(Buffer(), "8:");
}

TEST_F(InvokeTest, AnIndexedPropertyIsWrittenAndReadByPlaceAndByName) {
    const Variant three(std::int32_t{3});
    const Variant text(u"third");
    const Variant asText(u"3");
    const Variant fraction = Double(3.4);
    EXPECT_EQ(
        InvokeByName(*lintara_, L"AdditionalCPBuffer", Put, {Lend(three), Lend(text)}, {DISPID_PROPERTYPUT})
            .code,
        S_OK);
    for (const VARIANTARG& index : {Lend(three), Lend(asText), Lend(fraction)}) {
        EXPECT_EQ(Shown(InvokeByName(*lintara_, L"AdditionalCPBuffer", Get, {index}).result.get()),
                  "8:third");
    }
    EXPECT_EQ(
        Shown(InvokeByName(*lintara_, L"AdditionalCPBuffer", Function, {Lend(three)}, {0}).result.get()),
        "8:third");
    const Variant other(std::int32_t{11});
    EXPECT_EQ(Shown(InvokeByName(*lintara_, L"AdditionalCPBuffer", Get, {Lend(other)}).result.get()), "8:");
}

TEST_F(InvokeTest, WrongCountsOfArgumentsAreTold) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    EXPECT_EQ(InvokeByName(*lintara_, L"GetMemberName", Method, {Lend(text)}).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(text), Lend(text)}).code,
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(InvokeByName(*lintara_, L"AdditionalCPBuffer", Get).code, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(InvokeByName(*lintara_, L"TarnwickCPBuffer", Put).code, DISP_E_BADPARAMCOUNT);
    // One place, twice.
    EXPECT_EQ(
        InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(text), Lend(text), Lend(number)}, {0})
            .code,
        DISP_E_BADPARAMCOUNT);
}

TEST_F(InvokeTest, AnUnknownNameOfAnArgumentIsTold) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    const InvokeOutcome outcome =
        InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(text), Lend(text), Lend(number)}, {7});
    EXPECT_EQ(outcome.code, DISP_E_PARAMNOTFOUND);
    EXPECT_EQ(outcome.wrongArgument, 0U);
}

TEST_F(InvokeTest, TheWrongArgumentIsNamedByItsPlaceInTheArray) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    const Variant large = Double(3e9);
    InvokeOutcome outcome =
        InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(text), Lend(text), Lend(text)});
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.wrongArgument, 0U);
    Variant null;
    null.get().vt = VT_NULL;
    outcome = InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(null), Lend(text), Lend(number)});
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.wrongArgument, 2U);
    outcome = InvokeByName(*lintara_, L"InsertTextInLine", Method, {Lend(text), Lend(text), Lend(large)});
    EXPECT_EQ(outcome.code, DISP_E_OVERFLOW);
    EXPECT_EQ(outcome.wrongArgument, 0U);
}

TEST_F(InvokeTest, ArgumentsMayComeByNameInAnyOrder) {
    const Variant line(u"ab");
    const Variant text(u"-");
    const Variant column(std::int32_t{2});
    EXPECT_EQ(Shown(InvokeByName(*lintara_, L"InsertTextInLine", Function,
                                 {Lend(column), Lend(line), Lend(text)}, {2, 0, 1})
                        .result.get()),
              "8:a-b");
    EXPECT_EQ(Shown(InvokeByName(*lintara_, L"InsertTextInLine", Function,
                                 {Lend(line), Lend(column), Lend(text)}, {2, 1})
                        .result.get()),
              "8:a-b");
}

TEST_F(InvokeTest, OnlyWhatIsWrittenMayBeLeftOut) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    const Variant truth(false);
    const std::vector<VARIANTARG> all = {Lend(text),   Lend(text),  Lend(text), Lend(number),
                                         Lend(number), Lend(truth), Lend(truth)};
    std::vector<VARIANTARG> withOmitted = all;
    withOmitted.push_back(Omitted());
    EXPECT_EQ(InvokeByName(*lintara_, L"SearchAndReplace", Method, all).code, S_OK);
    EXPECT_EQ(InvokeByName(*lintara_, L"SearchAndReplace", Method, withOmitted).code, S_OK);
    withOmitted[5] = Omitted();
    const InvokeOutcome outcome = InvokeByName(*lintara_, L"SearchAndReplace", Method, withOmitted);
    EXPECT_EQ(outcome.code, DISP_E_PARAMNOTOPTIONAL);
    EXPECT_EQ(outcome.wrongArgument, 2U);
}

// A caret at (2, 3) goes behind a text of two lines: to (3, 3).
TEST_F(InvokeTest, NumbersGoBackIntoVariablesOfEveryType) {
    const Variant text(u"a\r\nbc");
    SHORT line16 = 2;
    double column64 = 3.0;
    EXPECT_EQ(InvokeByName(*lintara_, L"TranslateCarret", Method,
                           {Refer(VT_I2, &line16), Refer(VT_R8, &column64), Lend(text)})
                  .code,
              S_OK);
    EXPECT_EQ(line16, 3);
    EXPECT_EQ(column64, 3.0);

    LONG line32 = 2;
    BSTR columnText = NewBstr(u"7");
    EXPECT_EQ(InvokeByName(*lintara_, L"TranslateCarret", Method,
                           {Refer(VT_I4, &line32), Refer(VT_BSTR, &columnText), Lend(text)})
                  .code,
              S_OK);
    EXPECT_EQ(line32, 3);
    EXPECT_EQ(ViewOf(columnText), u"3");
    SysFreeString(columnText);

    BYTE line8 = 2;
    CY currency;
    currency.int64 = 70000;  // 7
    EXPECT_EQ(InvokeByName(*lintara_, L"TranslateCarret", Method,
                           {Refer(VT_UI1, &line8), Refer(VT_CY, &currency), Lend(text)})
                  .code,
              S_OK);
    EXPECT_EQ(line8, 3);
    EXPECT_EQ(currency.int64, 30000);

    float line = 2.0F;
    Variant decimal;
    ASSERT_EQ(VarDecFromI4(7, &decimal.get().decVal), S_OK);
    decimal.get().vt = VT_DECIMAL;
    EXPECT_EQ(InvokeByName(*lintara_, L"TranslateCarret", Method,
                           {Refer(VT_R4, &line), Refer(VT_DECIMAL, &decimal.get().decVal), Lend(text)})
                  .code,
              S_OK);
    EXPECT_EQ(line, 3.0F);
    EXPECT_EQ(Shown(decimal.get()), std::to_string(VT_DECIMAL) + ":3");
}

TEST_F(InvokeTest, VariantsKeepTheTypeOfWhatIsInThem) {
    const Variant text(u"a\r\nbc");
    Variant line;
    line.get().vt = VT_I2;
    line.get().iVal = 2;
    Variant column = Double(7.0);
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Refer(line), Refer(column), Lend(text)}).code,
        S_OK);
    EXPECT_EQ(Shown(line.get()), std::to_string(VT_I2) + ":3");
    EXPECT_EQ(Shown(column.get()), std::to_string(VT_R8) + ":3");

    Variant lineText(u"2");
    SHORT referred = 7;
    Variant reference;
    reference.get() = Refer(VT_I2, &referred);
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Refer(lineText), Refer(reference), Lend(text)})
            .code,
        S_OK);
    EXPECT_EQ(Shown(lineText.get()), "8:3");
    EXPECT_EQ(referred, 3);
    reference.get().vt = VT_EMPTY;
}

TEST_F(InvokeTest, AVariantWhoseTypeIsTooSmallTakesTheParameters) {
    const Variant text(u"abcdefgh");
    Variant line(std::int32_t{1});
    Variant column;
    column.get().vt = VT_UI1;
    column.get().bVal = 250;
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Refer(line), Refer(column), Lend(text)}).code,
        S_OK);
    EXPECT_EQ(Shown(line.get()), "3:1");
    EXPECT_EQ(Shown(column.get()), "3:258");
}

TEST_F(InvokeTest, AVariantThatHoldsADecimalKeepsItsType) {
    const Variant text(u"a\r\nbcdef");
    const Variant line(std::int32_t{1});
    Variant column;
    ASSERT_EQ(VarDecFromI4(3, &column.get().decVal), S_OK);
    column.get().vt = VT_DECIMAL;
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Lend(line), Refer(column), Lend(text)}).code,
        S_OK);
    EXPECT_EQ(Shown(column.get()), std::to_string(VT_DECIMAL) + ":6");
}

TEST_F(InvokeTest, AVariantThatHoldsATruthTakesANumberAsItIs) {
    const Variant text(u"a\r\nbcdef");
    const Variant line(std::int32_t{1});
    Variant column(true);
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Lend(line), Refer(column), Lend(text)}).code,
        S_OK);
    EXPECT_EQ(Shown(column.get()), "3:6");
}

TEST_F(InvokeTest, AValueIsNotWrittenBack) {
    const Variant text(u"a\r\nbc");
    const Variant line(std::int32_t{2});
    const Variant column(std::int32_t{7});
    EXPECT_EQ(
        InvokeByName(*lintara_, L"TranslateCarret", Method, {Lend(line), Lend(column), Lend(text)}).code,
        S_OK);
    EXPECT_EQ(Shown(line.get()), "3:2");
}

TEST_F(InvokeTest, AVariableThatCannotTakeTheResultIsRefusedBeforeTheCall) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    const Variant truth(false);
    IDispatch* object = nullptr;
    const InvokeOutcome outcome =
        InvokeByName(*lintara_, L"SearchAndReplace", Method,
                     {Lend(text), Lend(text), Lend(text), Lend(number), Lend(number), Lend(truth),
                      Lend(truth), Refer(VT_DISPATCH, &object)});
    EXPECT_EQ(outcome.code, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(outcome.wrongArgument, 0U);
}

TEST_F(InvokeTest, TruthsGoBackAsTheCallersTypeHasThem) {
    const Variant text(u"x");
    const Variant number(std::int32_t{1});
    const Variant truth(false);
    SHORT found = 5;
    Variant inVariant(u"before");
    const auto call = [&](VARIANTARG place) {
        return InvokeByName(*lintara_, L"SearchAndReplace", Method,
                            {Lend(text), Lend(text), Lend(text), Lend(number), Lend(number), Lend(truth),
                             Lend(truth), place})
            .code;
    };
    EXPECT_EQ(call(Refer(VT_BOOL, &found)), S_OK);
    EXPECT_EQ(found, VARIANT_FALSE);
    LONG number32 = 5;
    EXPECT_EQ(call(Refer(VT_I4, &number32)), S_OK);
    EXPECT_EQ(number32, 0);
    EXPECT_EQ(call(Refer(inVariant)), S_OK);
    EXPECT_EQ(Shown(inVariant.get()), "8:False");
    Variant empty;
    EXPECT_EQ(call(Refer(empty)), S_OK);
    EXPECT_EQ(Shown(empty.get()), std::to_string(VT_BOOL) + ":False");
}

TEST_F(InvokeTest, TheServicesObjectIsAssignedSetAndRead) {
    auto host = std::make_shared<support::LateBoundHost>();
    {
        const ComPtr<IDispatch> services = support::MakeTestObject("Globals", host, {});
        const Variant object(services.get());
        for (const WORD kind : {Put, PutReference, static_cast<WORD>(Put | PutReference)}) {
            EXPECT_EQ(InvokeByName(*lintara_, L"oG", kind, {Lend(object)}, {DISPID_PROPERTYPUT}).code, S_OK);
            const InvokeOutcome read = InvokeByName(*lintara_, L"oG", Get);
            EXPECT_EQ(read.result.get().vt, VT_DISPATCH);
            EXPECT_EQ(read.result.get().pdispVal, services.get());
            const Variant nothing(static_cast<IDispatch*>(nullptr));
            EXPECT_EQ(InvokeByName(*lintara_, L"oG", kind, {Lend(nothing)}, {DISPID_PROPERTYPUT}).code, S_OK);
            EXPECT_EQ(InvokeByName(*lintara_, L"oG", Get).result.get().pdispVal, nullptr);
        }
        const Variant text(u"no object");
        EXPECT_EQ(InvokeByName(*lintara_, L"oG", Put, {Lend(text)}, {DISPID_PROPERTYPUT}).code,
                  DISP_E_TYPEMISMATCH);
        IDispatch* variable = services.get();
        EXPECT_EQ(InvokeByName(*lintara_, L"oG", PutReference, {Refer(VT_DISPATCH, &variable)},
                               {DISPID_PROPERTYPUT})
                      .code,
                  S_OK);
    }
    EXPECT_EQ(host->liveObjects, 1);
    lintara_ = nullptr;
    EXPECT_EQ(host->liveObjects, 0);
}

TEST_F(InvokeTest, EveryServiceWithoutAServicesObjectIsEmpty) {
    for (const wchar_t* member : {L"GetMemberName", L"GetMemberType"}) {
        EXPECT_EQ(Shown(InvokeByName(*lintara_, member, Function).result.get()), "8:");
    }
    EXPECT_EQ(Shown(InvokeByName(*lintara_, L"GetLineNumber", Function).result.get()), "3:0");
    EXPECT_EQ(InvokeByName(*lintara_, L"InitCodeAutomation", Method).code, S_OK);
    EXPECT_EQ(InvokeByName(*lintara_, L"CloseCodeAutomation", Method).code, S_OK);
}

TEST_F(InvokeTest, EarlyBoundCallersMayLeaveOutPlaces) {
    const auto early = lintara_.As<ILintara>();
    ASSERT_NE(early, nullptr);
    EXPECT_EQ(early->LineNumbersInserter(nullptr, nullptr, nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(early->TranslateCarret(nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(early->GetMemberName(nullptr), E_POINTER);
    EXPECT_EQ(early->put_TarnwickCPBuffer(nullptr), S_OK);
    VARIANT number;
    number.vt = VT_I4;
    number.lVal = 5;
    EXPECT_EQ(early->put_oG(number), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(early->put_oG(Refer(VT_DISPATCH, nullptr)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(early->put_oG(Refer(VT_UNKNOWN, nullptr)), DISP_E_TYPEMISMATCH);
}

TEST_F(InvokeTest, TheObjectsKnowTheirTypes) {
    UINT count = 0;
    EXPECT_EQ(lintara_->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 1U);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(lintara_->GetTypeInfo(0, 0, info.Place()), S_OK);
    Bstr name;
    EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, name.Place(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(name.view(), u"ILintara");
    EXPECT_EQ(lintara_->GetTypeInfo(1, 0, info.Place()), DISP_E_BADINDEX);
    const auto described = lintara_.As<IProvideClassInfo>();
    ASSERT_NE(described, nullptr);
    ASSERT_EQ(described->GetClassInfo(info.Place()), S_OK);
    EXPECT_EQ(info->GetDocumentation(MEMBERID_NIL, name.Place(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(name.view(), u"Lintara");
}

TEST_F(InvokeTest, TheDialogsHaveTheirFourOperations) {
    const auto dialogs = library_.Create<IDispatch>(CLSID_DialogsLT);
    ASSERT_NE(dialogs, nullptr);
    DISPID expected = 1;
    for (const wchar_t* name : {L"GetInsertCCParameters", L"GetRemoveCCParameters", L"GetInsertEHParameters",
                                L"GetRemoveEHParameters"}) {
        EXPECT_EQ(support::IdOf(*dialogs, name), expected++);
        EXPECT_EQ(InvokeByName(*dialogs, name, Function).code, DISP_E_BADPARAMCOUNT);
    }
}

}  // namespace
}  // namespace lintara::com

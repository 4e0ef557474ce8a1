// Hosts whose calls fail, each of them in turn and in every way that a call can fail: nothing propagates, no
// object of the host is kept, and the library can be unloaded afterwards. The host's module is a few lines.
#include "com/bstr.h"
#include "com/lintara_idl.h"
#include "tests/com/component_library.h"
#include "tests/com/late_bound_host.h"
#include "tests/com/named_invoke.h"
#include "tests/com/test_object.h"

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::InvokeByName;
using support::LateBoundHost;
using support::LateBoundHostPtr;
using support::Lend;
using support::MakeTestObject;
using support::NamedMember;
using support::Refer;
using support::TestCall;

// An IDE with one project, whose one component shows one procedure, in a code window with the caret in it.
class SmallHost {
  public:
    std::vector<Text> lines = {u"Sub A()", u"    x = 1", u"    y = 2", u"End Sub"};
    LateBoundHostPtr log = std::make_shared<LateBoundHost>();

    [[nodiscard]] ComPtr<IDispatch> Globals() {
        std::vector<NamedMember> members = {
            {u"VBE", Object([this] { return Ide(); })},
            {u"ComputerName", [](const TestCall& c) { return c.Reply(u"BOX"); }},
            {u"UserName", [](const TestCall& c) { return c.Reply(u"ann"); }},
            {u"TokenBefore", [](const TestCall& c) { return c.Reply(u""); }},
            {u"CodeDbPath", [](const TestCall& c) { return c.Reply(u""); }},
            {u"CodeDb", Object([this] { return Database(); })},
            {u"HostForm", Object([this] { return Anything(); })},
            {u"ProjectsData", Object([this] { return Anything(); })},
            {u"AddInHost", Object([this] { return Anything(); })}};
        return MakeTestObject("Globals", log, std::move(members));
    }

  private:
    template <class Make>
    support::TestMember Object(Make make) {
        return [make](const TestCall& call) { return call.Reply(make()); };
    }
    ComPtr<IDispatch> Anything() {
        return MakeTestObject("Anything", log, {}, [this](const Text&, const TestCall& call) {
            return call.IsPut() ? S_OK : call.Reply(Anything());
        });
    }
    ComPtr<IDispatch> Ide() {
        return MakeTestObject(
            "VBE", log,
            {{u"VBProjects", Object([this] { return ItemsOf([this] { return Project(); }); })},
             {u"ActiveVBProject", Object([this] { return Project(); })},
             {u"ActiveCodePane", Object([this] { return Pane(); })}});
    }
    ComPtr<IDispatch> ItemsOf(std::function<ComPtr<IDispatch>()> make) {
        return MakeTestObject("Items", log, {{u"Item", Object(std::move(make))}});
    }
    ComPtr<IDispatch> Project() {
        return MakeTestObject(
            "VBProject", log,
            {{u"Name", [](const TestCall& c) { return c.Reply(u"P"); }},
             {u"VBComponents", Object([this] { return ItemsOf([this] { return Component(); }); })}});
    }
    ComPtr<IDispatch> Component() {
        return MakeTestObject("VBComponent", log,
                              {{u"Name", [](const TestCall& c) { return c.Reply(u"M"); }},
                               {u"Type", [](const TestCall& c) { return c.Reply(1); }},
                               {u"CodeModule", Object([this] { return Module(); })}});
    }
    ComPtr<IDispatch> Pane() {
        const auto selection = [](const TestCall& c) {
            for (std::size_t place = 0; place < 4; ++place) {
                c.Write(place, 2);
            }
            return S_OK;
        };
        return MakeTestObject("CodePane", log,
                              {{u"TopLine", [](const TestCall& c) { return c.Reply(1); }},
                               {u"CountOfVisibleLines", [](const TestCall& c) { return c.Reply(20); }},
                               {u"CodeModule", Object([this] { return Module(); })},
                               {u"GetSelection", selection}});
    }
    ComPtr<IDispatch> Module() {
        const auto member = [this] {
            return MakeTestObject("Member", log,
                                  {{u"CodeLocation", [](const TestCall& c) { return c.Reply(1); }},
                                   {u"Type", [](const TestCall& c) { return c.Reply(1); }}});
        };
        const auto find = [](const TestCall& c) {
            c.Write(1, 4);
            return c.Reply(false);
        };
        return MakeTestObject(
            "CodeModule", log,
            {{u"Parent", Object([this] { return Component(); })},
             {u"Members", Object([this, member] { return ItemsOf(member); })},
             {u"Lines", [this](const TestCall& c) { return Lines(c); }},
             {u"InsertLines", [this](const TestCall& c) { return Insert(c); }},
             {u"DeleteLines", [](const TestCall&) { return S_OK; }},
             {u"ReplaceLine", [this](const TestCall& c) { return Replace(c); }},
             {u"ProcStartLine", [](const TestCall& c) { return c.Reply(1); }},
             {u"ProcBodyLine", [](const TestCall& c) { return c.Reply(1); }},
             {u"ProcCountLines",
              [this](const TestCall& c) { return c.Reply(static_cast<std::int32_t>(lines.size())); }},
             {u"ProcOfLine",
              [](const TestCall& c) {
                  c.Write(1, 0);
                  return c.Reply(u"A");
              }},
             {u"CountOfDeclarationLines", [](const TestCall& c) { return c.Reply(0); }},
             {u"Find", find}});
    }
    [[nodiscard]] std::size_t IndexOf(const TestCall& call) const {
        const auto index = static_cast<std::size_t>(call.number(0) - 1);
        if (index >= lines.size()) {
            throw support::CallFails{E_INVALIDARG};
        }
        return index;
    }
    HRESULT Lines(const TestCall& call) const { return call.Reply(lines[IndexOf(call)]); }
    HRESULT Replace(const TestCall& call) {
        lines[IndexOf(call)] = Text(call.text(1));
        return S_OK;
    }
    HRESULT Insert(const TestCall& call) {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(IndexOf(call)), Text(call.text(1)));
        return S_OK;
    }
    ComPtr<IDispatch> Database() {
        return MakeTestObject("Database", log, {{u"OpenRecordset", Object([this] { return Anything(); })}});
    }
};

// A late-bound call of every service that the host has a part in.
std::vector<HRESULT> CallEverything(IDispatch& lintara) {
    const Variant project(u"P");
    const Variant component(u"M");
    const Variant member(u"A");
    const Variant label(u"Oops");
    const Variant code(
        u"' {ProjectName} {ComponentName} {MemberName} {ControlName} {ComputerName} {UserName} "
        u"{Date} {Time} {MemberType}");
    const Variant ten(std::int32_t{10});
    const Variant one(std::int32_t{1});
    const Variant no(false);
    VARIANT_BOOL found = VARIANT_FALSE;
    constexpr WORD Method = DISPATCH_METHOD;
    constexpr WORD Function = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
    const VARIANTARG p = Lend(project);
    const VARIANTARG c = Lend(component);
    const VARIANTARG m = Lend(member);
    std::vector<HRESULT> codes;
    const auto call = [&](const wchar_t* name, WORD kind, std::vector<VARIANTARG> arguments = {}) {
        codes.push_back(InvokeByName(lintara, name, kind, std::move(arguments)).code);
    };
    call(L"ParsePseudoCode", Function, {Lend(code)});
    call(L"ParsePseudoCodeEx", Function, {Lend(code), c, m});
    call(L"GeneratePseudoCode", Function, {Lend(code)});
    call(L"GetMemberName", Function);
    call(L"GetMemberType", Function);
    call(L"GetMemberTypeEx", Function, {c, m});
    call(L"InitCodeAutomation", Method);
    call(L"CloseCodeAutomation", Method);
    call(L"LineNumbersInserter", Method, {p, c, m, Lend(ten), Lend(one)});
    call(L"LineNumbersRemover", Method, {p, c, m});
    call(L"ErrorHandlerInserter", Method, {p, c, m, Lend(label), Lend(code)});
    call(L"ErrorHandlerRemover", Method, {p, c, m});
    call(L"SearchAndReplace", Method,
         {c, Lend(label), Lend(code), Lend(one), Lend(ten), Lend(no), Lend(no), Refer(VT_BOOL, &found)});
    call(L"CustomCodeInserter", Method, {p, c, m, Lend(code), Lend(no), Lend(one), Lend(one), Lend(one)});
    call(L"CustomCodeRemover", Method, {p, c, m, Lend(one)});
    call(L"GetLineNumber", Function);
    return codes;
}

struct Fault {
    const char* name;
    HRESULT code;
    bool isException = false;
};

class HostFaultsTest : public testing::TestWithParam<Fault> {};

TEST_P(HostFaultsTest, NothingPropagatesAndNothingIsKept) {
    const support::ComponentLibrary library;
    constexpr std::size_t NoCall = static_cast<std::size_t>(-1);
    std::size_t calls = 0;
    for (std::size_t faulty = NoCall; faulty == NoCall || faulty < calls; ++faulty) {
        SmallHost host;
        if (faulty % 2 == 0) {
            host.log->references = LateBoundHost::References::Variants;
        }
        {
            auto lintara = library.Create<ILintara>(CLSID_Lintara);
            ASSERT_NE(lintara, nullptr);
            EXPECT_EQ(lintara->putref_oG(host.Globals().get()), S_OK);
            host.log->fault = [&](std::size_t index, const std::string&, EXCEPINFO* exception) {
                if (index != faulty) {
                    return S_OK;
                }
                if (GetParam().isException && exception != nullptr) {
                    exception->scode = static_cast<SCODE>(0x800A03E9);
                    exception->bstrDescription = NewBstr(u"it fails");
                    exception->bstrSource = NewBstr(u"host");
                    exception->bstrHelpFile = NewBstr(u"help");
                }
                return GetParam().code;
            };
            for (const HRESULT code : CallEverything(*lintara)) {
                EXPECT_EQ(code, S_OK) << "call " << faulty;
            }
            EXPECT_EQ(host.log->liveObjects, 1) << "call " << faulty;
            EXPECT_FALSE(library.CanUnload());
        }
        if (faulty == NoCall) {
            calls = host.log->invokes;
            EXPECT_GT(calls, 200U);
        }
        EXPECT_EQ(host.log->liveObjects, 0) << "call " << faulty;
        EXPECT_TRUE(library.CanUnload());
    }
}

INSTANTIATE_TEST_SUITE_P(Codes, HostFaultsTest,
                         testing::Values(Fault{"Fails", E_FAIL}, Fault{"Raises", DISP_E_EXCEPTION, true},
                                         Fault{"RaisesWithoutDetails", DISP_E_EXCEPTION},
                                         Fault{"Mismatches", DISP_E_TYPEMISMATCH},
                                         Fault{"LacksTheMember", DISP_E_MEMBERNOTFOUND},
                                         Fault{"IsGone", RPC_E_DISCONNECTED}, Fault{"GivesNothing", S_FALSE}),
                         [](const auto& tested) { return tested.param.name; });

TEST(HostReferencesTest, TheServicesObjectIsKeptUntilItIsReplaced) {
    const support::ComponentLibrary library;
    SmallHost host;
    auto lintara = library.Create<ILintara>(CLSID_Lintara);
    EXPECT_EQ(lintara->putref_oG(host.Globals().get()), S_OK);
    EXPECT_EQ(host.log->liveObjects, 1);
    EXPECT_EQ(lintara->putref_oG(host.Globals().get()), S_OK);
    EXPECT_EQ(host.log->liveObjects, 1);
    EXPECT_EQ(lintara->putref_oG(nullptr), S_OK);
    EXPECT_EQ(host.log->liveObjects, 0);
}

TEST(HostReferencesTest, LineNumbersGoInAndOutOverBothKindsOfReferences) {
    const support::ComponentLibrary library;
    for (const auto style : {LateBoundHost::References::Typed, LateBoundHost::References::Variants}) {
        SmallHost host;
        host.log->references = style;
        auto lintara = library.Create<ILintara>(CLSID_Lintara);
        EXPECT_EQ(lintara->putref_oG(host.Globals().get()), S_OK);
        LONG line = 0;
        EXPECT_EQ(lintara->GetLineNumber(&line), S_OK);
        EXPECT_EQ(line, 2);
        const Variant p(u"P");
        const Variant c(u"M");
        const Variant m(u"A");
        const Variant ten(std::int32_t{10});
        EXPECT_EQ(InvokeByName(*lintara, L"LineNumbersInserter", DISPATCH_METHOD,
                               {Lend(p), Lend(c), Lend(m), Lend(ten), Lend(ten)})
                      .code,
                  S_OK);
        EXPECT_EQ(host.lines[2], u"20:     y = 2");
    }
}

}  // namespace
}  // namespace lintara::com

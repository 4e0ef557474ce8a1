// Calls of the host's objects by name: what is asked how often, and what becomes of errors and values.
#include "com/late_bound.h"

#include "com/conversion.h"
#include "com/host_dispatch.h"
#include "com/lintara_idl.h"
#include "tests/com/component_library.h"
#include "tests/com/late_bound_host.h"
#include "tests/com/test_object.h"

#include <memory>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::LateBoundHost;
using support::MakeTestObject;
using support::TestCall;

HRESULT Answer(const TestCall& call) {
    return call.Reply(7);
}

TEST(LateBoundTest, AMemberIsLookedUpOnceForAllObjectsOfItsType) {
    const support::ComponentLibrary library;
    const auto lintara = library.Create<IDispatch>(CLSID_Lintara);
    auto host = std::make_shared<LateBoundHost>();
    ASSERT_EQ(lintara->GetTypeInfo(0, 0, host->typeInfo.Place()), S_OK);
    const auto ids = std::make_shared<MemberIds>();
    for (int i = 0; i < 3; ++i) {
        const LateBound object(MakeTestObject("Typed", host, {{u"Count", Answer}}), ids);
        ASSERT_TRUE(object.Get(u"Count"));
        ASSERT_TRUE(object.Get(u"Count"));
    }
    EXPECT_EQ(host->nameLookups, 1U);
    EXPECT_EQ(host->invokes, 6U);
    host->typeInfo = nullptr;
}

TEST(LateBoundTest, ObjectsWithoutTypesAreAskedOnceEach) {
    auto host = std::make_shared<LateBoundHost>();
    const auto ids = std::make_shared<MemberIds>();
    for (int i = 0; i < 3; ++i) {
        const LateBound object(MakeTestObject("Script", host, {{u"Count", Answer}}), ids);
        ASSERT_TRUE(object.Get(u"Count"));
        ASSERT_TRUE(object.Get(u"Count"));
    }
    EXPECT_EQ(host->nameLookups, 3U);
}

TEST(LateBoundTest, HowAMemberTakesReferencesIsFoundOutOnce) {
    for (const auto style : {LateBoundHost::References::Typed, LateBoundHost::References::Variants}) {
        auto host = std::make_shared<LateBoundHost>();
        host->references = style;
        const auto write = [](const TestCall& call) {
            call.Write(0, call.referred(0) + 1);
            return S_OK;
        };
        const LateBound object(MakeTestObject("Object", host, {{u"Next", write}}),
                               std::make_shared<MemberIds>());
        std::int32_t number = 40;
        for (int i = 0; i < 3; ++i) {
            Arguments arguments;
            arguments.AddReference(number);
            EXPECT_TRUE(object.Call(u"Next", std::move(arguments)));
        }
        EXPECT_EQ(number, 43);
        EXPECT_EQ(host->invokes, style == LateBoundHost::References::Typed ? 4U : 3U);
    }
}

TEST(LateBoundTest, AFailingCallLeavesReferencesAlone) {
    auto host = std::make_shared<LateBoundHost>();
    host->references = LateBoundHost::References::Variants;
    const auto fail = [](const TestCall& call) -> HRESULT {
        call.Write(0, 5);
        throw support::CallFails{E_FAIL};
    };
    const LateBound object(MakeTestObject("Object", host, {{u"Next", fail}}), std::make_shared<MemberIds>());
    std::int32_t number = 1;
    Arguments arguments;
    arguments.AddReference(number);
    EXPECT_FALSE(object.Call(u"Next", std::move(arguments)));
    EXPECT_EQ(number, 1);
}

TEST(LateBoundTest, ErrorsKeepTheirNumbers) {
    struct Case {
        HRESULT code;
        HostError raised;
        int expected;
    };
    const Case cases[] = {{DISP_E_EXCEPTION, {ErrorNumber::SubscriptOutOfRange, ""}, 9},
                          {DISP_E_TYPEMISMATCH, {}, 13},
                          {DISP_E_OVERFLOW, {}, 6},
                          {DISP_E_MEMBERNOTFOUND, {}, 438},
                          {E_FAIL, {}, E_FAIL},
                          {static_cast<HRESULT>(0x800A01A8), {}, 424}};
    for (const Case& tested : cases) {
        const auto fail = [&](const TestCall&) -> HRESULT {
            throw support::CallFails{tested.code, tested.raised};
        };
        const LateBound object(MakeTestObject("Object", std::make_shared<LateBoundHost>(), {{u"X", fail}}),
                               std::make_shared<MemberIds>());
        EXPECT_EQ(static_cast<int>(object.Get(u"X").error().number), tested.expected);
    }
    const LateBound empty(MakeTestObject("Object", std::make_shared<LateBoundHost>(), {}),
                          std::make_shared<MemberIds>());
    EXPECT_EQ(empty.Get(u"X").error().number, ErrorNumber::MemberNotSupported);
}

TEST(LateBoundTest, AnObjectStandsForItsDefaultProperty) {
    auto host = std::make_shared<LateBoundHost>();
    const Variant object(MakeTestObject("Field", host, {{u"", Answer}}).get());
    EXPECT_EQ(ToLong(object.get()), 7);
    EXPECT_EQ(ToText(object.get()), u"7");
}

TEST(LateBoundTest, AnObjectThatIsItsOwnDefaultPropertyHasNoValue) {
    auto host = std::make_shared<LateBoundHost>();
    IDispatch* self = nullptr;
    const auto itself = [&](const TestCall& call) { return call.Reply(ComPtr<IDispatch>(self)); };
    const ComPtr<IDispatch> object = MakeTestObject("Self", host, {{u"", itself}});
    self = object.get();
    const Variant value(self);
    EXPECT_EQ(ToLong(value.get()).error().number, ErrorNumber::TypeMismatch);
    EXPECT_LE(host->invokes, 10U);
}

}  // namespace
}  // namespace lintara::com

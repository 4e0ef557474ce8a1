// A dialog as the services object gets it to restore or save its place.
#include "com/window_object.h"

#include "com/bstr.h"
#include "tests/com/named_invoke.h"

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::InvokeByName;
using support::Lend;

class Window final : public hostmodel::PlacedWindow {
  public:
    std::int32_t place[4] = {1, 2, 3, 4};

    [[nodiscard]] Text Name() const override { return u"FEHInsert"; }
    [[nodiscard]] std::int32_t Left() const override { return place[0]; }
    [[nodiscard]] std::int32_t Top() const override { return place[1]; }
    [[nodiscard]] std::int32_t Width() const override { return place[2]; }
    [[nodiscard]] std::int32_t Height() const override { return place[3]; }
    void Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) override {
        place[0] = left;
        place[1] = top;
        place[2] = width;
        place[3] = height;
    }
};

std::int32_t Read(IDispatch& object, const wchar_t* name) {
    const Variant value = InvokeByName(object, name, DISPATCH_PROPERTYGET).result.Clone();
    return value.get().vt == VT_I4 ? static_cast<std::int32_t>(value.get().lVal) : -1;
}

TEST(WindowObjectTest, TheHostReadsAndMovesTheWindow) {
    Window window;
    const LentWindow lent(window);
    IDispatch& object = *lent.object();
    EXPECT_EQ(ViewOf(InvokeByName(object, L"Name", DISPATCH_PROPERTYGET).result.get().bstrVal), u"FEHInsert");
    const Variant fifty(std::int32_t{50});
    for (const wchar_t* property : {L"Left", L"Top", L"Width", L"Height"}) {
        EXPECT_EQ(
            InvokeByName(object, property, DISPATCH_PROPERTYPUT, {Lend(fifty)}, {DISPID_PROPERTYPUT}).code,
            S_OK);
        EXPECT_EQ(Read(object, property), 50);
    }
    const Variant nine(std::int32_t{9});
    EXPECT_EQ(
        InvokeByName(object, L"Move", DISPATCH_METHOD, {Lend(nine), Lend(fifty), Lend(nine), Lend(nine)})
            .code,
        S_OK);
    EXPECT_EQ(window.Left(), 9);
    EXPECT_EQ(window.Top(), 50);
}

TEST(WindowObjectTest, AWindowToSaveIsOnlyRead) {
    const Window window;
    const LentWindow lent(window);
    const Variant fifty(std::int32_t{50});
    EXPECT_EQ(
        InvokeByName(*lent.object(), L"Left", DISPATCH_PROPERTYPUT, {Lend(fifty)}, {DISPID_PROPERTYPUT}).code,
        S_OK);
    EXPECT_EQ(Read(*lent.object(), L"Left"), 1);
}

TEST(WindowObjectTest, AHostThatKeepsItFindsNoWindow) {
    ComPtr<IDispatch> kept;
    {
        Window window;
        const LentWindow lent(window);
        kept = ComPtr<IDispatch>(lent.object());
    }
    EXPECT_EQ(Read(*kept, L"Left"), 0);
    EXPECT_EQ(InvokeByName(*kept, L"Name", DISPATCH_PROPERTYGET).code, S_OK);
}

}  // namespace
}  // namespace lintara::com

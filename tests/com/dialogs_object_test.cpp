// What the dialogs hand back to late-bound callers. The user is made of code.
#include "com/dialogs_object.h"

#include "dialogs/feh_remove.h"
#include "tests/com/named_invoke.h"
#include "tests/support/recording_settings.h"
#include "tests/support/scripted_toolkit.h"

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::InvokeById;
using support::Lend;
using support::Refer;

class DialogsObjectTest : public testing::Test {
  protected:
    support::ScriptedToolkit toolkit_;
    support::RecordingSettings settings_;
    ComPtr<IDispatch> dialogs_ = ComPtr<IDispatch>::Adopt(
        new DialogsObject([this](const std::function<void(const dialogs::DialogHost&)>& use) {
            use({.toolkit = toolkit_, .settings = settings_});
        }));

    // Whether the removal of handlers and numbers was confirmed. The user wants both, in the whole project.
    bool AskRemoval(bool begins, const VARIANTARG& scope, const VARIANTARG& handlers,
                    const VARIANTARG& numbers) {
        toolkit_.user = [&](forms::Form& form) {
            auto& dialog = dynamic_cast<dialogs::FEHRemove&>(form);
            dialog.optScope[2].Select();
            (begins ? dialog.cmdStart : dialog.cmdCancel).Press();
        };
        const Variant length(std::int32_t{4});
        const Variant line(std::int32_t{5});
        const auto outcome =
            InvokeById(*dialogs_, 4, DISPATCH_METHOD, {scope, handlers, numbers, Lend(length), Lend(line)});
        EXPECT_EQ(outcome.code, S_OK);
        return outcome.result.get().boolVal != VARIANT_FALSE;
    }
};

TEST_F(DialogsObjectTest, ATruthIsWrittenAsOneOverANumberThatStoodForIt) {
    SHORT handlers = 7;
    Variant numbers(std::int32_t{7});
    Variant scope;
    EXPECT_TRUE(AskRemoval(true, Refer(scope), Refer(VT_I2, &handlers), Refer(numbers)));
    EXPECT_EQ(scope.get().vt, VT_I2);
    EXPECT_EQ(scope.get().iVal, 3);
    EXPECT_EQ(handlers, -1);
    EXPECT_EQ(numbers.get().vt, VT_I4);
    EXPECT_EQ(numbers.get().lVal, -1);
}

TEST_F(DialogsObjectTest, ANumberIsWrittenOverATextThatWasReadAsIt) {
    Variant scope(u"2.6");
    Variant handlers(u"1");
    Variant numbers;
    EXPECT_TRUE(AskRemoval(true, Refer(scope), Refer(handlers), Refer(numbers)));
    EXPECT_EQ(ViewOf(scope.get().bstrVal), u"3");
    EXPECT_EQ(ViewOf(handlers.get().bstrVal), u"True");
    EXPECT_EQ(numbers.get().vt, VT_BOOL);
    EXPECT_EQ(numbers.get().boolVal, VARIANT_TRUE);
}

TEST_F(DialogsObjectTest, ACancelledDialogWritesNothing) {
    SHORT handlers = 7;
    Variant scope(u"2.6");
    Variant numbers;
    EXPECT_FALSE(AskRemoval(false, Refer(scope), Refer(VT_I2, &handlers), Refer(numbers)));
    EXPECT_EQ(ViewOf(scope.get().bstrVal), u"2.6");
    EXPECT_EQ(handlers, 7);
    EXPECT_EQ(numbers.get().vt, VT_EMPTY);
}

}  // namespace
}  // namespace lintara::com

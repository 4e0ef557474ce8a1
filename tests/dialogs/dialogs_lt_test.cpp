// What all four operations do alike: a dialog of its own for each call, unloaded before the call returns.

#include "dialogs/dialogs_lt.h"

#include "dialogs/fcc_insert.h"
#include "dialogs/fcc_remove.h"
#include "dialogs/feh_insert.h"
#include "dialogs/feh_remove.h"
#include "forms/keyboard.h"
#include "tests/dialogs/dialog_fixture.h"

#include <stdexcept>

#include <gmock/gmock.h>

namespace lintara::dialogs {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct DialogsLTTest : DialogTest {
    // Each operation with fresh variables: its name, and the call.
    struct Operation {
        const char* form;
        std::function<bool()> call;
    };
    std::vector<Operation> Operations() {
        return {{"FCCInsert",
                 [&] {
                     InsertCCParameters p{.ProcAvailable = true, .ComponentAvailable = 1};
                     return DialogsLT(Host()).GetInsertCCParameters(p);
                 }},
                {"FCCRemove",
                 [&] {
                     RemoveCCParameters p{.ProcAvailable = true, .ComponentAvailable = 1};
                     return DialogsLT(Host()).GetRemoveCCParameters(p);
                 }},
                {"FEHInsert",
                 [&] {
                     InsertEHParameters p{.iLenGetMemberName = 1, .iGetLineNumber = 1};
                     return DialogsLT(Host()).GetInsertEHParameters(p);
                 }},
                {"FEHRemove", [&] {
                     RemoveEHParameters p{.iLenGetMemberName = 1, .iGetLineNumber = 1};
                     return DialogsLT(Host()).GetRemoveEHParameters(p);
                 }}};
    }
};

TEST_F(DialogsLTTest, EachOperationShowsItsFormAndUnloadsIt) {
    for (const Operation& operation : Operations()) {
        globals->log.clear();
        toolkit.user = [&](forms::Form& form) {
            EXPECT_EQ(ToUtf8(form.Name()), operation.form);
            EXPECT_TRUE(form.Visible());
            form.Hide();
        };
        EXPECT_FALSE(operation.call());
        EXPECT_THAT(globals->log, ElementsAre(std::string("load ") + operation.form,
                                              std::string("save ") + operation.form));
    }
    EXPECT_EQ(toolkit.formsShown, 4);
}

TEST_F(DialogsLTTest, EnterConfirmsAndEscCancels) {
    for (const Operation& operation : Operations()) {
        toolkit.user = [](forms::Form& form) { forms::PressEnter(form); };
        EXPECT_TRUE(operation.call()) << operation.form;
        toolkit.user = [](forms::Form& form) { forms::PressEscape(form); };
        EXPECT_FALSE(operation.call()) << operation.form;
    }
}

TEST_F(DialogsLTTest, TheKeyboardBeginsInTheScopes) {
    for (const Operation& operation : Operations()) {
        toolkit.user = [&](forms::Form& form) {
            ASSERT_NE(form.ActiveControl(), nullptr);
            const auto* active = dynamic_cast<forms::OptionButton*>(form.ActiveControl());
            EXPECT_TRUE(active != nullptr && active->Value() && active->Name().starts_with(u"optScope("))
                << operation.form;
        };
        operation.call();
    }
}

TEST_F(DialogsLTTest, AccessKeysReachTheControlsTheyBelongTo) {
    User<FEHInsert>([](FEHInsert& form) {
        forms::PressAccessKey(form, u'a');
        EXPECT_TRUE(form.txtEHBase.HasFocus());
        forms::PressAccessKey(form, u's');
        EXPECT_TRUE(form.txtEHStep.HasFocus());
        forms::PressAccessKey(form, u'd');
        EXPECT_TRUE(form.oEHInsert.txtEHLabel.HasFocus());
        forms::PressAccessKey(form, u'h');
        EXPECT_TRUE(form.oEHInsert.txtEHCode.HasFocus());
        forms::PressAccessKey(form, u'r');
        EXPECT_TRUE(form.optScope[2].Value());
    });
    Operations()[2].call();
    User<FCCInsert>([](FCCInsert& form) {
        forms::PressAccessKey(form, u'd');
        EXPECT_TRUE(form.txtCode.HasFocus());
        forms::PressAccessKey(form, u'm');
        EXPECT_FALSE(form.txtID.Enabled());
    });
    Operations()[0].call();
    User<FCCRemove>([](FCCRemove& form) {
        forms::PressAccessKey(form, u'm');
        EXPECT_TRUE(form.txtID.HasFocus());
    });
    Operations()[1].call();
    EXPECT_EQ(toolkit.formsShown, 3);
}

TEST_F(DialogsLTTest, TheAccessKeyOfTheInsertionPointKeepsTheChoice) {
    User<FCCInsert>([](FCCInsert& form) {
        form.optWhere[2].Select();
        forms::PressAccessKey(form, u'n');
        EXPECT_TRUE(form.optWhere[2].HasFocus());
        EXPECT_TRUE(form.optWhere[2].Value());
    });
    Operations()[0].call();
    EXPECT_EQ(toolkit.formsShown, 1);
}

TEST_F(DialogsLTTest, AToolkitThatGivesUpIsACancel) {
    toolkit.user = [](forms::Form&) { throw std::runtime_error("out of memory"); };
    for (const Operation& operation : Operations()) {
        EXPECT_FALSE(operation.call()) << operation.form;
    }
    EXPECT_THAT(settings.saves, IsEmpty());
}

TEST_F(DialogsLTTest, CancelLeavesTheSettings) {
    for (const Operation& operation : Operations()) {
        toolkit.user = [](forms::Form& form) { forms::PressEscape(form); };
        EXPECT_FALSE(operation.call());
    }
    EXPECT_THAT(settings.saves, IsEmpty());
}

TEST_F(DialogsLTTest, ASecondCallShowsWhatTheFirstOneBeganWith) {
    InsertEHParameters parameters{.iLenGetMemberName = 1};
    const DialogsLT dialogs(Host());
    User<FEHInsert>([](FEHInsert& form) {
        form.txtEHBase.Edit(u"77", 0, 0);
        form.cmdStart.Press();
    });
    EXPECT_TRUE(dialogs.GetInsertEHParameters(parameters));
    User<FEHInsert>([](FEHInsert& form) { EXPECT_EQ(form.txtEHBase.Contents(), u"77"); });
    EXPECT_FALSE(dialogs.GetInsertEHParameters(parameters));
}

TEST_F(DialogsLTTest, ASecondCallKnowsNothingOfAFirstOneThatWasCancelled) {
    InsertEHParameters parameters{.iLenGetMemberName = 0};
    const DialogsLT dialogs(Host());
    User<FEHInsert>([](FEHInsert& form) {
        EXPECT_EQ(StatesOf(form.optScope), "--*");
        form.txtEHBase.Edit(u"77", 0, 0);
        form.cmdCancel.Press();
    });
    EXPECT_FALSE(dialogs.GetInsertEHParameters(parameters));
    parameters.iLenGetMemberName = 1;
    User<FEHInsert>([](FEHInsert& form) {
        EXPECT_EQ(form.txtEHBase.Contents(), u"10000");
        EXPECT_EQ(StatesOf(form.optScope), "*++");
    });
    EXPECT_FALSE(dialogs.GetInsertEHParameters(parameters));
}

}  // namespace
}  // namespace lintara::dialogs

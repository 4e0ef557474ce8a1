#include "tests/ui_qt/sample_form.h"

#include <QAccessible>
#include <QAccessibleActionInterface>
#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace lintara::ui {
namespace {

using ButtonsWindowTest = ShownFormTest;

TEST_F(ButtonsWindowTest, AClickPressesAButtonOnce) {
    Show([&](FormWindow& window) {
        QTest::mouseClick(window.WidgetOf(form.cmdMore), Qt::LeftButton);
        EXPECT_EQ(form.ActiveControl(), &form.cmdMore);
    });
    EXPECT_EQ(form.log, Log{"cmdMore_Click"});
}

TEST_F(ButtonsWindowTest, SpaceAndEnterPressTheButtonWithTheFocus) {
    Show([&](FormWindow& window) {
        form.cmdMore.SetFocus();
        QTest::keyClick(window.WidgetOf(form.cmdMore), Qt::Key_Space);
        QTest::keyClick(window.WidgetOf(form.cmdMore), Qt::Key_Enter);
    });
    EXPECT_EQ(form.log, (Log{"cmdMore_Click", "cmdMore_Click"}));
}

TEST_F(ButtonsWindowTest, EnterAndEscPressTheDefaultAndTheCancelButton) {
    Show([&](FormWindow& window) {
        QTest::keyClick(window.WidgetOf(form.txtCount), Qt::Key_Return);
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_Escape);
        EXPECT_TRUE(form.Visible());
    });
    EXPECT_EQ(form.log, (Log{"cmdOk_Click", "cmdCancel_Click"}));
}

TEST_F(ButtonsWindowTest, ADisabledButtonCannotBePressed) {
    form.cmdOk.SetEnabled(false);
    Show([&](FormWindow& window) {
        EXPECT_FALSE(window.WidgetOf(form.cmdOk)->isEnabled());
        QTest::mouseClick(window.WidgetOf(form.cmdOk), Qt::LeftButton);
        QTest::keyClick(window.WidgetOf(form.txtCount), Qt::Key_Return);
        form.cmdOk.SetEnabled(true);
        EXPECT_TRUE(window.WidgetOf(form.cmdOk)->isEnabled());
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(ButtonsWindowTest, ACheckBoxIsToggledByMouseSpaceAndAssistiveTechnology) {
    Show([&](FormWindow& window) {
        auto& box = WidgetOf<QCheckBox>(window, form.chkOn);
        QTest::mouseClick(&box, Qt::LeftButton, {}, QPoint(6, box.height() / 2));
        EXPECT_EQ(form.chkOn.Value(), 1);
        QTest::keyClick(&box, Qt::Key_Space);
        EXPECT_EQ(form.chkOn.Value(), 0);
        QAccessible::queryAccessibleInterface(&box)->actionInterface()->doAction(
            QAccessibleActionInterface::toggleAction());
        EXPECT_EQ(form.chkOn.Value(), 1);
        EXPECT_TRUE(box.isChecked());
    });
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "chkOn_Click", "chkOn_Click"}));
}

TEST_F(ButtonsWindowTest, AGrayedCheckBoxBecomesUnchecked) {
    ASSERT_TRUE(form.chkOn.SetValue(forms::CheckBox::Grayed));
    Show([&](FormWindow& window) {
        auto& box = WidgetOf<QCheckBox>(window, form.chkOn);
        EXPECT_EQ(box.checkState(), Qt::PartiallyChecked);
        QTest::keyClick(&box, Qt::Key_Space);
        EXPECT_EQ(box.checkState(), Qt::Unchecked);
    });
    EXPECT_EQ(form.chkOn.Value(), 0);
    EXPECT_EQ(form.log, Log{"chkOn_Click"});
}

TEST_F(ButtonsWindowTest, ValuesOfTheFormAreShownWithOneEventEach) {
    Show([&](FormWindow& window) {
        Attempt(form.chkOn.SetValue(1));
        EXPECT_TRUE(WidgetOf<QCheckBox>(window, form.chkOn).isChecked());
        form.optThree.SetValue(true);
        EXPECT_TRUE(WidgetOf<QRadioButton>(window, form.optThree).isChecked());
        EXPECT_FALSE(WidgetOf<QRadioButton>(window, form.optOne).isChecked());
    });
    EXPECT_EQ(form.log, (Log{"chkOn_Click", "optThree_Click"}));
}

TEST_F(ButtonsWindowTest, AFormCanHaveNoOptionSelected) {
    Show([&](FormWindow& window) {
        form.optOne.SetValue(false);
        for (forms::OptionButton* option : {&form.optOne, &form.optTwo, &form.optThree}) {
            EXPECT_FALSE(WidgetOf<QRadioButton>(window, *option).isChecked());
        }
        QTest::mouseClick(window.WidgetOf(form.optOne), Qt::LeftButton, {}, QPoint(6, 6));
        EXPECT_TRUE(form.optOne.Value());
    });
    EXPECT_EQ(form.log, Log{"optOne_Click"});
}

TEST_F(ButtonsWindowTest, SelectingAnOptionIsOneClick) {
    Show([&](FormWindow& window) {
        QTest::mouseClick(window.WidgetOf(form.optTwo), Qt::LeftButton, {}, QPoint(6, 6));
        EXPECT_TRUE(form.optTwo.Value());
        EXPECT_FALSE(form.optOne.Value());
        QTest::mouseClick(window.WidgetOf(form.optTwo), Qt::LeftButton, {}, QPoint(6, 6));
    });
    EXPECT_EQ(form.log, Log{"optTwo_Click"});
}

TEST_F(ButtonsWindowTest, TheArrowKeysSelectTheNeighbouringOption) {
    Show([&](FormWindow& window) {
        form.optOne.SetFocus();
        QTest::keyClick(window.WidgetOf(form.optOne), Qt::Key_Down);
        EXPECT_EQ(form.ActiveControl(), &form.optTwo);
        EXPECT_TRUE(form.optTwo.Value());
        QTest::keyClick(window.WidgetOf(form.optTwo), Qt::Key_Up);
        EXPECT_TRUE(form.optOne.Value());
    });
    EXPECT_EQ(form.log, (Log{"optTwo_Click", "optOne_Click"}));
}

TEST_F(ButtonsWindowTest, AnOptionWhoseSelectionTheFormTakesBackIsShownAsTheFormHasIt) {
    form.optTwo.Click.Handle([&] { form.optThree.SetValue(true); });
    Show([&](FormWindow& window) {
        QTest::mouseClick(window.WidgetOf(form.optTwo), Qt::LeftButton, {}, QPoint(6, 6));
        EXPECT_FALSE(WidgetOf<QRadioButton>(window, form.optTwo).isChecked());
        EXPECT_TRUE(WidgetOf<QRadioButton>(window, form.optThree).isChecked());
    });
}

TEST_F(ButtonsWindowTest, OneButtonLooksLikeTheDefault) {
    Show([&](FormWindow& window) {
        EXPECT_TRUE(WidgetOf<QPushButton>(window, form.cmdOk).isDefault());
        EXPECT_FALSE(WidgetOf<QPushButton>(window, form.cmdMore).isDefault());
    });
}

}  // namespace
}  // namespace lintara::ui

#include "tests/ui_qt/sample_form.h"
#include "ui/qt/key_codes.h"

#include <QKeyEvent>

namespace lintara::ui {
namespace {

struct KeyboardWindowTest : ShownFormTest {
    // Where Tab leads from each control on, `count` times.
    std::vector<forms::Control*> TabStops(FormWindow& window, int count, Qt::Key key) {
        std::vector<forms::Control*> stops;
        for (int i = 0; i < count; ++i) {
            QTest::keyClick(window.focusWidget(), key);
            stops.push_back(form.ActiveControl());
            EXPECT_EQ(window.focusWidget(), window.WidgetOf(*form.ActiveControl()));
        }
        return stops;
    }
};

TEST_F(KeyboardWindowTest, TabGoesRoundAndReachesTheSelectedOptionOnly) {
    const std::vector<forms::Control*> expected{&form.txtCount,  &form.chkOn,   &form.optOne,
                                                &form.txtPage,   &form.tree,    &form.cmdOk,
                                                &form.cmdCancel, &form.cmdMore, &form.txtName};
    Show([&](FormWindow& window) {
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
        EXPECT_EQ(TabStops(window, 9, Qt::Key_Tab), expected);
        const std::vector<forms::Control*> back = TabStops(window, 9, Qt::Key_Backtab);
        EXPECT_EQ(back.front(), &form.cmdMore);
        EXPECT_EQ(back.back(), &form.txtName);
    });
    EXPECT_EQ(form.log, (Log{"txtName_GotFocus", "txtName_GotFocus"}));
}

TEST_F(KeyboardWindowTest, AccessKeysPressToggleSelectAndLeadOn) {
    form.txtName.KeyDown.Handle({});
    Show([&](FormWindow& window) {
        QTest::keyClick(window.focusWidget(), Qt::Key_M, Qt::AltModifier);
        EXPECT_EQ(form.ActiveControl(), &form.cmdMore);
        QTest::keyClick(window.focusWidget(), Qt::Key_O, Qt::AltModifier);
        QTest::keyClick(window.focusWidget(), Qt::Key_T, Qt::AltModifier);
        EXPECT_EQ(form.ActiveControl(), &form.optTwo);
        QTest::keyClick(window.focusWidget(), Qt::Key_P, Qt::AltModifier);
        EXPECT_EQ(form.ActiveControl(), &form.txtPage);
        QTest::keyClick(window.focusWidget(), Qt::Key_B, Qt::AltModifier);
    });
    EXPECT_EQ(form.log, (Log{"cmdMore_Click", "chkOn_Click", "optTwo_Click", "cmdOk_Click"}));
    EXPECT_EQ(form.txtPage.Contents(), u"one\r\ntwo");
}

TEST_F(KeyboardWindowTest, AKeyOfSeveralControlsGoesRoundAmongThem) {
    form.txtName.KeyDown.Handle({});
    Show([&](FormWindow& window) {
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
        QTest::keyClick(window.focusWidget(), Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(form.ActiveControl(), &form.optOne);
        QTest::keyClick(window.focusWidget(), Qt::Key_N, Qt::AltModifier);
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(KeyboardWindowTest, AnAccessKeyOfNobodyWritesNothing) {
    Show([&](FormWindow& window) { QTest::keyClick(window.focusWidget(), Qt::Key_X, Qt::AltModifier); });
    // The box hears of the Alt key alone.
    EXPECT_EQ(form.log, Log{"txtName_KeyDown 18 4"});
    EXPECT_EQ(form.txtName.Contents(), u"abc");
}

TEST_F(KeyboardWindowTest, AClickGivesTheFocus) {
    Show([&](FormWindow& window) {
        QTest::mouseClick(window.WidgetOf(form.txtCount), Qt::LeftButton);
        EXPECT_EQ(form.ActiveControl(), &form.txtCount);
        QTest::mouseClick(window.WidgetOf(form.txtName), Qt::LeftButton);
        EXPECT_EQ(form.ActiveControl(), &form.txtName);
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(KeyboardWindowTest, TheFormMovesTheFocusOfADisabledOrHiddenControl) {
    Show([&](FormWindow& window) {
        form.txtName.SetEnabled(false);
        EXPECT_EQ(form.ActiveControl(), &form.txtCount);
        EXPECT_EQ(window.focusWidget(), window.WidgetOf(form.txtCount));
        form.txtCount.SetVisible(false);
        EXPECT_EQ(form.ActiveControl(), &form.chkOn);
        EXPECT_EQ(window.focusWidget(), window.WidgetOf(form.chkOn));
    });
}

TEST_F(KeyboardWindowTest, TheFocusSurvivesAMessage) {
    form.txtName.KeyDown.Handle([&](std::int16_t, std::int16_t) {
        AnswerNextMessage([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
        toolkit.ShowMessage(u"Hello", forms::MessageStyle::Information, u"");
    });
    Show([&](FormWindow& window) {
        form.txtName.Select(1, 1);
        QTest::keyClick(window.WidgetOf(form.txtName), Qt::Key_F5);
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        EXPECT_TRUE(window.WidgetOf(form.txtName)->hasFocus());
        EXPECT_EQ(form.txtName.SelText(), u"b");
    });
    EXPECT_EQ(form.log, Log{});
}

TEST(KeyCodeTest, KeysOfTheNumberPadAreKeysOfTheirOwn) {
    struct Case {
        Qt::Key key;
        int plain;
        int onThePad;
    };
    const Case cases[] = {
        {Qt::Key_0, 48, 96},        {Qt::Key_9, 57, 105},      {Qt::Key_Minus, 189, 109},
        {Qt::Key_Period, 190, 110}, {Qt::Key_Comma, 188, 110}, {Qt::Key_Slash, 191, 111},
        {Qt::Key_Home, 36, 36},     {Qt::Key_Enter, 13, 13},
    };
    const auto codeOf = [](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        return KeyCodeOf(QKeyEvent(QEvent::KeyPress, key, modifiers));
    };
    for (const auto& [key, plain, onThePad] : cases) {
        EXPECT_EQ(codeOf(key, Qt::NoModifier), plain) << key;
        EXPECT_EQ(codeOf(key, Qt::KeypadModifier), onThePad) << key;
    }
    EXPECT_EQ(codeOf(Qt::Key_Asterisk, Qt::KeypadModifier), 106);
    EXPECT_EQ(codeOf(Qt::Key_Plus, Qt::KeypadModifier), 107);
    EXPECT_EQ(codeOf(Qt::Key_unknown, Qt::KeypadModifier), 0);
}

}  // namespace
}  // namespace lintara::ui

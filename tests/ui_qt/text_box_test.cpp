#include "tests/ui_qt/sample_form.h"
#include "ui/qt/text_conversion.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace lintara::ui {
namespace {

struct TextBoxWindowTest : ShownFormTest {
    static void Commit(QWidget& widget, const QString& preedit, const QString& word) {
        QInputMethodEvent event(preedit, {});
        event.setCommitString(word);
        QCoreApplication::sendEvent(&widget, &event);
    }
};

TEST_F(TextBoxWindowTest, EachTypedCharacterIsOneChange) {
    Show([&](FormWindow& window) {
        QTest::keyClicks(window.WidgetOf(form.txtCount), QStringLiteral("12"));
        EXPECT_EQ(form.txtCount.Contents(), u"125");
        EXPECT_EQ(form.txtCount.SelStart(), 2);
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtCount_Change"}));
}

TEST_F(TextBoxWindowTest, TypingOverASelectionIsOneChange) {
    Show([&](FormWindow& window) {
        form.txtCount.SelectAll();
        QTest::keyClicks(window.WidgetOf(form.txtCount), QStringLiteral("7"));
        EXPECT_EQ(form.txtCount.Contents(), u"7");
        form.txtPage.Select(1, 5);
        QTest::keyClicks(window.WidgetOf(form.txtPage), QStringLiteral("X"));
        EXPECT_EQ(form.txtPage.Contents(), u"oXwo");
        EXPECT_EQ(form.txtPage.SelStart(), 2);
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, PastingIsOneChange) {
    QGuiApplication::clipboard()->setText(QStringLiteral("x\ny"));
    Show([&](FormWindow& window) {
        form.txtPage.Select(0, 3);
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(form.txtPage.Contents(), u"x\r\ny\r\ntwo");
        EXPECT_EQ(form.txtPage.SelStart(), 4);
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, ABoxOfOneLineTakesTheFirstLineThatIsPasted) {
    QGuiApplication::clipboard()->setText(QStringLiteral("9\n8\n"));
    Show([&](FormWindow& window) {
        auto& box = WidgetOf<QLineEdit>(window, form.txtCount);
        QTest::keyClick(&box, Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(form.txtCount.Contents(), u"95");
        EXPECT_EQ(box.text(), QStringLiteral("95"));
    });
    EXPECT_EQ(form.log, Log{"txtCount_Change"});
}

TEST_F(TextBoxWindowTest, UndoIsOneChangeAlsoOfWhatTheFormWrote) {
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtCount, &form.txtPage}) {
            const Text before = box->Contents();
            box->SetSelText(u"1\r\n2");
            form.log.clear();
            QTest::keyClick(window.WidgetOf(*box), Qt::Key_Z, Qt::ControlModifier);
            EXPECT_EQ(box->Contents(), before);
            EXPECT_EQ(form.log.size(), 1U);
        }
    });
}

TEST_F(TextBoxWindowTest, WhatAnInputMethodCommitsIsOneChangeAndItsDraftIsNone) {
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtCount, &form.txtPage}) {
            QWidget& widget = *window.WidgetOf(*box);
            box->SelectAll();
            form.log.clear();
            Commit(widget, QStringLiteral("kana"), {});
            Commit(widget, QStringLiteral("kanaji"), {});
            const std::size_t draftChanges = form.log.size();
            Commit(widget, {}, QStringLiteral("\u4eee\u540d"));
            EXPECT_EQ(box->Contents(), u"\u4eee\u540d");
            // The draft takes the place of what was selected, which is the user's change already.
            EXPECT_LE(draftChanges, 1U);
            EXPECT_EQ(form.log.size(), draftChanges + 1);
        }
    });
}

TEST_F(TextBoxWindowTest, SelectionsOfTheUserReachTheFormAndKeepTheirDirection) {
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtName, &form.txtPage}) {
            QWidget* widget = window.WidgetOf(*box);
            box->Select(3, 0);
            QTest::keyClick(widget, Qt::Key_Left, Qt::ShiftModifier);
            QTest::keyClick(widget, Qt::Key_Left, Qt::ShiftModifier);
            EXPECT_EQ(box->SelStart(), 1);
            EXPECT_EQ(box->SelLength(), 2);
            QTest::keyClick(widget, Qt::Key_Right, Qt::ShiftModifier);
            EXPECT_EQ(box->SelStart(), 2);
            EXPECT_EQ(box->SelLength(), 1);
        }
    });
}

TEST_F(TextBoxWindowTest, SelectionsAcrossLinesCountABreakAsTwo) {
    Show([&](FormWindow& window) {
        auto& page = WidgetOf<QPlainTextEdit>(window, form.txtPage);
        form.txtPage.Select(2, 4);
        EXPECT_EQ(page.textCursor().selectedText(), QStringLiteral("e\u2029t"));
        QTest::keyClick(&page, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(form.txtPage.SelLength(), 8);
        EXPECT_EQ(form.txtPage.SelText(), u"one\r\ntwo");
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(TextBoxWindowTest, EnterInABoxOfManyLinesIsABreak) {
    Show([&](FormWindow& window) {
        form.txtPage.SetFocus();
        form.txtPage.Select(3, 0);
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_Return);
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_Return, Qt::ShiftModifier);
        EXPECT_EQ(form.txtPage.Contents(), u"one\r\n\r\n\r\ntwo");
        EXPECT_EQ(form.txtPage.SelStart(), 7);
    });
    EXPECT_EQ(form.log, (Log{"txtPage_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, CtrlTabInABoxOfManyLinesIsATab) {
    Show([&](FormWindow& window) {
        form.txtPage.SetFocus();
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(form.txtPage.Contents(), u"\tone\r\ntwo");
        EXPECT_EQ(form.ActiveControl(), &form.txtPage);
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, BreaksThatStandAloneSurviveEditsElsewhere) {
    form.txtPage.SetContents(u"a\rb\nc\u2028d\ufdd0e\ufdd1f");
    Show([&](FormWindow& window) {
        form.txtPage.Select(11, 0);
        QTest::keyClicks(window.WidgetOf(form.txtPage), QStringLiteral("!"));
        EXPECT_EQ(form.txtPage.Contents(), u"a\rb\nc\u2028d\ufdd0e\ufdd1f!");
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClicks(window.WidgetOf(form.txtPage), QStringLiteral("?"));
        EXPECT_EQ(form.txtPage.Contents(), u"?a\rb\nc\u2028d\ufdd0e\ufdd1f!");
    });
}

TEST_F(TextBoxWindowTest, ABlankThatDoesNotBreakStaysOne) {
    Show([&](FormWindow& window) {
        form.txtPage.SelectAll();
        QGuiApplication::clipboard()->setText(QStringLiteral("a\u00a0b"));
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(form.txtPage.Contents(), u"a\u00a0b");
    });
}

TEST_F(TextBoxWindowTest, CharactersOfTwoUnitsAreSteppedOverAndDeletedWhole) {
    form.txtName.SetContents(u"a\U0001F600b");
    form.txtPage.SetContents(u"a\U0001F600b");
    Show([&](FormWindow& window) {
        for (forms::TextBox* box : {&form.txtName, &form.txtPage}) {
            QWidget* widget = window.WidgetOf(*box);
            box->Select(1, 0);
            QTest::keyClick(widget, Qt::Key_Right);
            EXPECT_EQ(box->SelStart(), 3);
            QTest::keyClick(widget, Qt::Key_Backspace);
            EXPECT_EQ(box->Contents(), u"ab");
        }
    });
}

TEST_F(TextBoxWindowTest, WhatTheFormWritesIsShownAndIsOneChange) {
    Show([&](FormWindow& window) {
        form.txtCount.SetContents(u"77");
        form.txtPage.SetContents(u"x\r\ny");
        EXPECT_EQ(WidgetOf<QLineEdit>(window, form.txtCount).text(), QStringLiteral("77"));
        EXPECT_EQ(WidgetOf<QPlainTextEdit>(window, form.txtPage).toPlainText(), QStringLiteral("x\ny"));
        EXPECT_EQ(form.txtPage.SelStart(), 0);
    });
    EXPECT_EQ(form.log, (Log{"txtCount_Change", "txtPage_Change"}));
}

TEST_F(TextBoxWindowTest, AFormThatRefusesAChangeIsShown) {
    form.txtCount.Change.Handle([&] { form.txtCount.SetContents(u"5"); });
    Show([&](FormWindow& window) {
        auto& box = WidgetOf<QLineEdit>(window, form.txtCount);
        QTest::keyClicks(&box, QStringLiteral("1"));
        EXPECT_EQ(box.text(), QStringLiteral("5"));
        EXPECT_EQ(form.txtCount.Contents(), u"5");
    });
}

TEST_F(TextBoxWindowTest, KeyDownComesBeforeTheKey) {
    Show([&](FormWindow& window) {
        QWidget* box = window.WidgetOf(form.txtName);
        form.txtName.Select(0, 0);
        QTest::keyClicks(box, QStringLiteral("x"));
        QTest::keyClick(box, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::keyClick(box, Qt::Key_Delete, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_F5);
    });
    EXPECT_EQ(form.log, (Log{"txtName_KeyDown 88 0", "txtName_Change", "txtName_KeyDown 16 1",
                             "txtName_KeyDown 17 3", "txtName_KeyDown 67 3", "txtName_KeyDown 17 2",
                             "txtName_KeyDown 46 2", "txtName_Change", "txtName_KeyDown 116 0"}));
}

TEST_F(TextBoxWindowTest, AKeyThatTheFormUsesCanReplaceTheSelection) {
    form.txtPage.KeyDown.Handle([&](std::int16_t key, std::int16_t held) {
        if (key == 86 && held == 3) {
            form.txtPage.SetSelText(u"[\r\n]");
        }
    });
    Show([&](FormWindow& window) {
        form.txtPage.Select(0, 3);
        QTest::keyClick(window.WidgetOf(form.txtPage), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(form.txtPage.Contents(), u"[\r\n]\r\ntwo");
        EXPECT_EQ(WidgetOf<QPlainTextEdit>(window, form.txtPage).toPlainText(), QStringLiteral("[\n]\ntwo"));
    });
    EXPECT_EQ(form.log, Log{"txtPage_Change"});
}

TEST_F(TextBoxWindowTest, GettingTheFocusSelectsWhatTheFormSelects) {
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        form.log.clear();
        QTest::keyClick(window.WidgetOf(form.txtCount), Qt::Key_Backtab);
        EXPECT_EQ(WidgetOf<QLineEdit>(window, form.txtName).selectedText(), QStringLiteral("abc"));
        EXPECT_TRUE(window.WidgetOf(form.txtName)->hasFocus());
    });
    EXPECT_EQ(form.log, Log{"txtName_GotFocus"});
}

TEST_F(TextBoxWindowTest, TheSelectionOfABoxWithoutTheFocusIsKept) {
    Show([&](FormWindow& window) {
        form.txtCount.SetFocus();
        form.txtCount.SelectAll();
        QTest::mouseClick(window.WidgetOf(form.txtPage), Qt::LeftButton);
        EXPECT_EQ(form.ActiveControl(), &form.txtPage);
        EXPECT_EQ(form.txtCount.SelText(), u"5");
        form.txtCount.SetFocus();
        EXPECT_EQ(WidgetOf<QLineEdit>(window, form.txtCount).selectedText(), QStringLiteral("5"));
    });
}

TEST_F(TextBoxWindowTest, ALongTextIsNotCutOff) {
    const Text text(100000, u'x');
    form.txtName.SetContents(text);
    Show([&](FormWindow& window) {
        EXPECT_EQ(WidgetOf<QLineEdit>(window, form.txtName).text().size(), 100000);
    });
    EXPECT_EQ(form.txtName.Contents(), text);
}

}  // namespace
}  // namespace lintara::ui

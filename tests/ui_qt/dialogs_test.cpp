// The windows of the program, as Qt shows them: nothing cut off, nothing over something else, all of it
// inside.
#include "base/settings_store.h"
#include "dialogs/fcc_insert.h"
#include "dialogs/fcc_remove.h"
#include "dialogs/feh_insert.h"
#include "dialogs/feh_remove.h"
#include "tests/ui_qt/sample_form.h"
#include "tests/ui_qt/shows_all.h"
#include "ui/qt/text_conversion.h"

#include <QAccessible>
#include <memory>

namespace lintara::ui {
namespace {

class NoSettings final : public SettingsStore {
  public:
    Result<std::optional<Text>> Find(SettingName /*name*/) override { return std::optional<Text>(); }
    Result<void> Save(SettingName /*name*/, TextView /*value*/) override { return {}; }
};

struct DialogWindowsTest : ShownFormTest {
    NoSettings settings;
    dialogs::DialogHost host{.toolkit = toolkit, .settings = settings};

    std::vector<std::unique_ptr<forms::Form>> AllDialogs() {
        std::vector<std::unique_ptr<forms::Form>> all;
        all.push_back(std::make_unique<dialogs::FEHInsert>(host));
        all.push_back(std::make_unique<dialogs::FEHRemove>(host));
        all.push_back(std::make_unique<dialogs::FCCInsert>(host));
        all.push_back(std::make_unique<dialogs::FCCRemove>(host));
        return all;
    }

    static void CheckPixels(forms::Form& dialog, FormWindow& window, const std::string& where) {
        for (forms::Control* control : dialog.ControlsInOrder()) {
            const QWidget* widget = window.WidgetOf(*control);
            if (widget == nullptr || !widget->isVisible()) {
                continue;
            }
            const std::string name = ToQString(control->Name()).toStdString() + " " + where;
            EXPECT_TRUE(ShowsAllOf(*widget)) << name;
            EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << name;
            for (forms::Control* neighbour : control->Parent()->Controls()) {
                const QWidget* other = window.WidgetOf(*neighbour);
                EXPECT_FALSE(other != nullptr && other != widget && other->isVisible() &&
                             other->geometry().intersects(widget->geometry()))
                    << name << " and " << ToQString(neighbour->Name()).toStdString();
            }
        }
    }
};

TEST_F(DialogWindowsTest, EverythingHasItsRoomAtEverySizeOfLetters) {
    const FontRestorer restorer;
    for (const int points : {8, 9, 10, 11, 13}) {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), points));
        for (const auto& dialog : AllDialogs()) {
            Show(*dialog, [&](FormWindow& window) {
                const std::string where =
                    window.objectName().toStdString() + " with letters of " + std::to_string(points);
                CheckPixels(*dialog, window, where);
                window.resize(window.minimumSize());
                QTest::qWait(0);
                CheckPixels(*dialog, window, where + ", as small as can be");
                window.resize(window.size() + QSize(133, 77));
                QTest::qWait(0);
                CheckPixels(*dialog, window, where + ", larger");
            });
        }
    }
}

TEST_F(DialogWindowsTest, EverythingThatTakesTheFocusHasANameForAssistiveTechnology) {
    for (const auto& dialog : AllDialogs()) {
        Show(*dialog, [&](FormWindow& window) {
            for (forms::Control* control : dialog->ControlsInOrder()) {
                if (control->TakesFocus() && control->Visible()) {
                    const auto* interface = QAccessible::queryAccessibleInterface(window.WidgetOf(*control));
                    EXPECT_NE(interface->text(QAccessible::Name), QString())
                        << ToQString(control->Name()).toStdString();
                }
            }
        });
    }
}

TEST_F(DialogWindowsTest, TheInsertDialogIsWorkedByKeys) {
    dialogs::FEHInsert dialog(host);
    dialogs::InsertEHParameters parameters;
    parameters.iLenGetMemberName = 3;
    QTimer::singleShot(0, [&] {
        FormWindow& window = *toolkit.ActiveWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(window.focusWidget(), Qt::Key_A, Qt::AltModifier);
        EXPECT_EQ(dialog.txtEHBase.SelText(), u"10000");
        QTest::keyClicks(window.focusWidget(), QStringLiteral("x"));
        EXPECT_FALSE(window.WidgetOf(dialog.cmdStart)->isEnabled());
        QTest::keyClick(window.focusWidget(), Qt::Key_Backspace);
        QTest::keyClicks(window.focusWidget(), QStringLiteral("500"));
        EXPECT_TRUE(window.WidgetOf(dialog.cmdStart)->isEnabled());
        QTest::keyClick(window.focusWidget(), Qt::Key_E, Qt::AltModifier);
        EXPECT_FALSE(window.WidgetOf(dialog.oEHInsert.txtEHCode)->isEnabled());
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        dialog.Hide();
    });
    EXPECT_TRUE(dialog.GetInsertEHParameters(parameters));
    EXPECT_EQ(parameters.LNBase, u"500");
    EXPECT_FALSE(parameters.InsertEH);
}

TEST_F(DialogWindowsTest, TheBufferKeysWorkAndTheMessageComesFirst) {
    dialogs::FCCInsert dialog(host);
    dialogs::InsertCCParameters parameters;
    parameters.TextToInsert = u"Beep";
    QTimer::singleShot(0, [&] {
        FormWindow& window = *toolkit.ActiveWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        dialog.txtCode.SetFocus();
        QString message;
        AnswerNextMessage([&](QMessageBox& box) {
            message = box.text();
            box.accept();
        });
        QTest::keyClick(window.WidgetOf(dialog.txtCode), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(message,
                  QStringLiteral("The selected text was placed into the Tarnwick copy-and-paste buffer."));
        EXPECT_EQ(dialog.txtCode.Contents(), u"Beep");
        QTest::keyClick(window.WidgetOf(dialog.txtCode), Qt::Key_End);
        QTest::keyClick(window.WidgetOf(dialog.txtCode), Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
        QTest::mouseClick(window.WidgetOf(dialog.cmdStart), Qt::LeftButton);
        dialog.Hide();
    });
    EXPECT_TRUE(dialog.GetInsertCCParameters(parameters));
    EXPECT_EQ(parameters.TextToInsert, u"BeepBeep");
    EXPECT_EQ(parameters.sCCPBufferX, u"Beep");
}

}  // namespace
}  // namespace lintara::ui

#include "base/statement.h"
#include "tests/ui_qt/sample_form.h"
#include "tests/ui_qt/shows_all.h"
#include "ui/qt/drawings.h"
#include "ui/qt/text_conversion.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStatusBar>
#include <QTextBrowser>
#include <set>

namespace lintara::ui {
namespace {

using WindowTest = ShownFormTest;

// --- sizes and places ---

TEST_F(WindowTest, ResizingRaisesResizeOnceAndMovesControls) {
    form.Resize.Handle([&] {
        form.log.emplace_back("Resize");
        Attempt(form.frame.SetTop(form.ScaleHeight() - 870));
        Attempt(form.panel.SetWidth(form.ScaleWidth() / 2));
    });
    Show([&](FormWindow& window) {
        const int before = window.WidgetOf(form.frame)->y();
        window.resize(window.width() + 150, window.height() + 60);
        QTest::qWait(0);
        EXPECT_EQ(window.WidgetOf(form.frame)->y(), before + 60);
        EXPECT_EQ(window.scale().X(form.Width()), window.width());
        EXPECT_EQ(window.scale().Y(form.Height()), window.height());
    });
    EXPECT_EQ(form.log, Log{"Resize"});
}

TEST_F(WindowTest, TheFormCanResizeItsWindow) {
    Show([&](FormWindow& window) {
        ASSERT_TRUE(form.Move({form.Left(), form.Top(), 7500, 6000}));
        QTest::qWait(0);
        EXPECT_EQ(window.size(), window.scale().ToPixels(forms::Size{7500, 6000}));
        EXPECT_EQ(form.Width(), 7500);
    });
    EXPECT_EQ(form.log, Log{"Resize"});
}

TEST_F(WindowTest, ShowingAndClosingKeepsTheFormsSizeToTheTwip) {
    Attempt(form.Move({0, 0, 6487, 4931}));
    Show([](FormWindow&) {});
    EXPECT_EQ(form.Width(), 6487);
    EXPECT_EQ(form.Height(), 4931);
}

TEST_F(WindowTest, CannotBecomeSmallerThanTheMinimum) {
    form.minimum = {3000, 2000};
    Show([&](FormWindow& window) {
        window.resize(10, 10);
        QTest::qWait(0);
        EXPECT_EQ(window.size(), window.scale().ToPixels(form.minimum));
    });
}

TEST_F(WindowTest, OneThatIsNotResizableHasOneSize) {
    form.resizable = false;
    Show([&](FormWindow& window) {
        EXPECT_EQ(window.minimumSize(), window.maximumSize());
        EXPECT_EQ(window.size(), window.scale().ToPixels(forms::Size{form.Width(), form.Height()}));
    });
}

TEST_F(WindowTest, StandsInTheMiddleUnlessItHasAPlace) {
    Show([&](FormWindow& window) {
        const QPoint apart = window.geometry().center() - window.screen()->availableGeometry().center();
        // The frame around it stands in the middle, roughly.
        EXPECT_LE(std::abs(apart.x()), 5);
        EXPECT_LE(std::abs(apart.y()), 25);
    });
}

TEST_F(WindowTest, StandsWhereItWasAndTellsWhereItIs) {
    form.placed = true;
    Attempt(form.Move({900, 600, form.Width(), form.Height()}));
    Show([&](FormWindow& window) {
        EXPECT_EQ(window.pos(), QPoint(window.scale().X(900), window.scale().Y(600)));
        window.move(50, 40);
        QTest::qWait(0);
        EXPECT_EQ(window.scale().X(form.Left()), 50);
        EXPECT_EQ(window.scale().Y(form.Top()), 40);
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(WindowTest, OneThatWasShownHasAPlace) {
    EXPECT_FALSE(form.placed);
    Show([&](FormWindow& window) {
        EXPECT_TRUE(form.placed);
        EXPECT_EQ(window.pos(), QPoint(window.scale().X(form.Left()), window.scale().Y(form.Top())));
        EXPECT_NE(window.pos(), QPoint());
    });
    EXPECT_EQ(form.log, Log{});
}

TEST_F(WindowTest, NeverStandsOffTheScreen) {
    form.placed = true;
    for (const forms::Twips place : {-900000, 900000}) {
        Attempt(form.Move({place, place, form.Width(), form.Height()}));
        Show([&](FormWindow& window) {
            EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry())) << place;
        });
    }
}

TEST_F(WindowTest, OneThatIsLargerThanTheScreenIsMadeSmaller) {
    Attempt(form.Move({0, 0, 90000, 90000}));
    Show([&](FormWindow& window) {
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
        EXPECT_EQ(window.scale().X(form.Width()), window.width());
    });
}

// What fills its container is not cut off by it, wherever that stands.
TEST_F(WindowTest, WhatIsInsideItsContainerInTwipsIsInPixels) {
    Show([&](FormWindow& window) {
        for (forms::Twips top = 4000; top < 4060; ++top) {
            Attempt(form.frame.SetTop(top));
            Attempt(form.cmdOk.Move({0, 0, 1200, form.frame.Height()}));
            const QWidget& frame = *window.WidgetOf(form.frame);
            ASSERT_TRUE(frame.rect().contains(window.WidgetOf(form.cmdOk)->geometry())) << top;
        }
    });
}

// --- texts that need room ---

TEST_F(WindowTest, NothingIsCutOffWithLargeLetters) {
    const FontRestorer restorer;
    for (const int points : {7, 9, 13, 16}) {
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), points));
        Show([&](FormWindow& window) {
            for (forms::Control* control : form.ControlsInOrder()) {
                const QWidget* widget = window.WidgetOf(*control);
                EXPECT_TRUE(widget == nullptr || ShowsAllOf(*widget))
                    << ToQString(control->Name()).toStdString() << " at " << points;
            }
        });
    }
}

TEST_F(WindowTest, LettersThatGrowMeanwhileMakeTheWindowGrow) {
    const FontRestorer restorer;
    Show([&](FormWindow& window) {
        const int before = window.width();
        QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 13));
        QTest::qWait(0);
        EXPECT_GT(window.width(), before * 5 / 4);
        EXPECT_TRUE(ShowsAllOf(*window.WidgetOf(form.chkOn)));
    });
    EXPECT_EQ(form.Width(), 6480);
}

TEST_F(WindowTest, ALongCaptionIsShownWhole) {
    forms::CheckBox translated(form, u"chkLong", {2640, 840, 1200, 270}, u"Eine l\u00e4ngere &Zeile");
    Show([&](FormWindow& window) {
        EXPECT_TRUE(ShowsAllOf(*window.WidgetOf(translated)));
        EXPECT_EQ(window.WidgetOf(translated)->toolTip(), QString());
        const QWidget& above = *window.WidgetOf(form.txtCount);
        const QWidget& arrows = *window.WidgetOf(form.udCount);
        EXPECT_LE(above.geometry().right(), arrows.geometry().left());
    });
}

TEST_F(WindowTest, ACaptionTooLongForTheScreenIsShownWholeWhereTheMouseRests) {
    const Text caption(200, u'w');
    forms::Label label(form, u"lblLong", {2640, 840, 1200, 270}, caption);
    Show([&](FormWindow& window) {
        EXPECT_EQ(window.WidgetOf(label)->toolTip(), ToQString(caption));
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
    });
}

TEST_F(WindowTest, ACaptionThatBecomesLongMakesTheWindowGrow) {
    Show([&](FormWindow& window) {
        const int before = window.width();
        form.lblName.SetCaption(u"A &name in words:");
        EXPECT_TRUE(ShowsAllOf(*window.WidgetOf(form.lblName)));
        EXPECT_GT(window.width(), before);
        EXPECT_EQ(form.Width(), 6480);
    });
}

TEST_F(WindowTest, TheStatusBarTellsAllOfALongTextWhereTheMouseRests) {
    Show([&](FormWindow& window) {
        auto& bar = WidgetOf<QStatusBar>(window, form.status);
        form.status.SetSimpleText(u"Short.");
        EXPECT_EQ(bar.findChild<QLabel*>()->text(), QStringLiteral("Short."));
        EXPECT_EQ(bar.toolTip(), QString());
        const Text text(500, u'w');
        form.status.SetSimpleText(text);
        EXPECT_TRUE(bar.findChild<QLabel*>()->text().endsWith(u'\u2026'));
        EXPECT_EQ(bar.toolTip(), ToQString(text));
        EXPECT_EQ(bar.accessibleName(), ToQString(text));
    });
}

// --- what the form shows ---

TEST_F(WindowTest, EnablingAndShowingReachTheWidgets) {
    Show([&](FormWindow& window) {
        form.panel.SetEnabled(false);
        EXPECT_FALSE(window.WidgetOf(form.optTwo)->isEnabled());
        form.panel.SetEnabled(true);
        EXPECT_TRUE(window.WidgetOf(form.optTwo)->isEnabled());
        form.lblName.SetVisible(false);
        EXPECT_FALSE(window.WidgetOf(form.lblName)->isVisible());
    });
}

TEST_F(WindowTest, WidgetsHaveNamesAndRolesForAssistiveTechnology) {
    struct Case {
        forms::Control& control;
        const char* name;
        QAccessible::Role role;
    };
    const Case cases[] = {
        {form.txtName, "Name", QAccessible::EditableText},
        {form.txtCount, "Count", QAccessible::EditableText},
        {form.udCount, "Count", QAccessible::SpinBox},
        {form.chkOn, "Switched on", QAccessible::CheckBox},
        {form.optTwo, "Two", QAccessible::RadioButton},
        {form.txtPage, "Page", QAccessible::EditableText},
        {form.tree, "Places", QAccessible::Tree},
        {form.cmdOk, "Begin", QAccessible::PushButton},
        {form.lblName, "Name:", QAccessible::StaticText},
    };
    Show([&](FormWindow& window) {
        for (const Case& c : cases) {
            const auto* interface = QAccessible::queryAccessibleInterface(window.WidgetOf(c.control));
            EXPECT_EQ(interface->text(QAccessible::Name), QString::fromLatin1(c.name));
            EXPECT_EQ(interface->role(), c.role) << c.name;
        }
        const auto* interface = QAccessible::queryAccessibleInterface(&window);
        EXPECT_EQ(interface->role(), QAccessible::Dialog);
        EXPECT_EQ(interface->text(QAccessible::Name), QStringLiteral("Sample"));
    });
}

TEST_F(WindowTest, AUserControlHasAHandleWhileItIsShown) {
    EXPECT_EQ(form.panel.hWnd(), 0U);
    Show([&](FormWindow&) { EXPECT_NE(form.panel.hWnd(), 0U); });
    EXPECT_EQ(form.panel.hWnd(), 0U);
}

std::set<QRgb> ColorsOf(const QImage& image) {
    std::set<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            colors.insert(image.pixel(x, y));
        }
    }
    return colors;
}

// At a fractional density, too, a line is made of whole dots, and all lines of a frame of equally many.
TEST_F(WindowTest, LinesAreCrispAtEveryDensity) {
    for (const double density : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        Show([&](FormWindow& window) {
            form.panel.SetBorderType(3);
            QWidget& panel = *window.WidgetOf(form.panel);
            for (forms::OptionButton* option : {&form.optOne, &form.optTwo, &form.optThree}) {
                option->SetVisible(false);
            }
            QImage image((QSizeF(panel.size()) * density).toSize(), QImage::Format_RGB32);
            image.setDevicePixelRatio(density);
            const QPalette palette = window.palette();
            image.fill(palette.color(QPalette::Window));
            panel.render(&image, {}, {}, {});
            const std::set<QRgb> expected{palette.color(QPalette::Window).rgb(),
                                          palette.color(QPalette::Dark).rgb(),
                                          palette.color(QPalette::Light).rgb()};
            EXPECT_EQ(ColorsOf(image), expected) << density;
            EXPECT_EQ(image.pixel(0, image.height() / 2), palette.color(QPalette::Dark).rgb());
            EXPECT_EQ(image.pixel(image.width() - 1, image.height() / 2),
                      palette.color(QPalette::Light).rgb());
            EXPECT_EQ(image.pixel(image.width() / 2, 0), palette.color(QPalette::Dark).rgb());
            EXPECT_EQ(image.pixel(image.width() / 2, image.height() - 1),
                      palette.color(QPalette::Light).rgb());
        });
    }
}

TEST_F(WindowTest, LinesAreRepaintedWhenTheyChange) {
    Show([&](FormWindow& window) {
        const auto pixel = [&] {
            return window.grab().toImage().pixel(window.scale().X(400),
                                                 window.scale().Y(form.line.Ends().y1));
        };
        EXPECT_EQ(pixel(), window.palette().color(QPalette::Dark).rgb());
        form.line.SetBorderColor(static_cast<forms::Color>(0x0000FF));
        EXPECT_EQ(pixel(), qRgb(255, 0, 0));
        form.line.SetVisible(false);
        EXPECT_EQ(pixel(), window.palette().color(QPalette::Window).rgb());
    });
}

TEST_F(WindowTest, AnOpaqueUserControlHasItsColor) {
    Show([&](FormWindow& window) {
        form.panel.SetBackColor(static_cast<forms::Color>(0x00FF00));
        form.panel.SetBackStyle(1);
        const QWidget& panel = *window.WidgetOf(form.panel);
        const QPoint inside = panel.mapTo(&window, QPoint(panel.width() - 5, panel.height() / 2));
        EXPECT_EQ(window.grab().toImage().pixel(inside), qRgb(0, 255, 0));
    });
}

// --- the life of the window ---

TEST_F(WindowTest, TheCloseBoxUnloadsTheForm) {
    Show([&](FormWindow& window) {
        window.close();
        EXPECT_TRUE(form.IsUnloaded());
        EXPECT_FALSE(window.isVisible());
    });
    EXPECT_EQ(form.log, Log{"Unload"});
}

TEST_F(WindowTest, AFormHiddenByItsOwnButtonIsShownAgainAsItWas) {
    form.cmdOk.Click.Handle([&] { form.Hide(); });
    for (int time = 0; time < 2; ++time) {
        Show([&](FormWindow& window) {
            QTest::keyClicks(window.WidgetOf(form.txtCount), QStringLiteral("1"));
            QTest::mouseClick(window.WidgetOf(form.cmdOk), Qt::LeftButton);
            EXPECT_FALSE(form.Visible());
            EXPECT_FALSE(window.isVisible());
        });
    }
    EXPECT_EQ(form.txtCount.Contents(), u"115");
}

TEST_F(WindowTest, AFormThatIsHiddenWhileItIsShownReturnsAtOnce) {
    int shown = 0;
    form.txtName.GotFocus.Handle([&] { ++shown; });
    QTimer::singleShot(0, [&] { form.Hide(); });
    form.ShowModal(toolkit);
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(toolkit.ActiveWindow(), nullptr);
}

TEST_F(WindowTest, AFormCanBeShownOverAnother) {
    SampleForm other;
    form.cmdMore.Click.Handle([&] {
        QTimer::singleShot(0, [&] {
            EXPECT_EQ(toolkit.ActiveWindow()->parentWidget()->objectName(), QStringLiteral("FSample"));
            other.Hide();
        });
        other.ShowModal(toolkit);
    });
    Show([&](FormWindow& window) {
        QTest::mouseClick(window.WidgetOf(form.cmdMore), Qt::LeftButton);
        EXPECT_EQ(toolkit.ActiveWindow(), &window);
        EXPECT_TRUE(form.Visible());
    });
}

TEST_F(WindowTest, AMessageHasItsTextIconAndTitle) {
    Show([&](FormWindow& window) {
        AnswerNextMessage([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), QStringLiteral("<b>one\ntwo"));
            EXPECT_EQ(box.textFormat(), Qt::PlainText);
            EXPECT_EQ(box.icon(), QMessageBox::Information);
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Sample"));
            EXPECT_EQ(box.parentWidget(), &window);
            box.accept();
        });
        toolkit.ShowMessage(u"<b>one\r\ntwo", forms::MessageStyle::Information, u"");
        AnswerNextMessage([&](QMessageBox& box) {
            EXPECT_EQ(box.icon(), QMessageBox::Critical);
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
            box.accept();
        });
        toolkit.ShowMessage(u"x", forms::MessageStyle::Critical, u"Title");
    });
}

TEST_F(WindowTest, TheHourglassIsShownUntilTheDefaultPointerIs) {
    toolkit.SetMousePointer(forms::MousePointer::Hourglass);
    toolkit.SetMousePointer(forms::MousePointer::Hourglass);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    toolkit.SetMousePointer(forms::MousePointer::Default);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WindowTest, DoEventsServesWhatIsWaiting) {
    bool served = false;
    QTimer::singleShot(0, [&] { served = true; });
    toolkit.DoEvents();
    EXPECT_TRUE(served);
}

TEST_F(WindowTest, ColorsAreResolvedByTheDesktopsPalette) {
    const QColor highlight = QGuiApplication::palette().color(QPalette::Highlight);
    const auto resolved = static_cast<std::uint32_t>(toolkit.Resolve(forms::Color::Highlight));
    EXPECT_EQ(resolved,
              static_cast<std::uint32_t>(highlight.red() | highlight.green() << 8 | highlight.blue() << 16));
    EXPECT_EQ(toolkit.Resolve(static_cast<forms::Color>(0x123456)), static_cast<forms::Color>(0x123456));
}

}  // namespace
}  // namespace lintara::ui

// A test that shows the sample form and plays the user.
#pragma once

#include "base/statement.h"
#include "forms/form.h"
#include "tests/support/sample_form.h"
#include "ui/qt/form_window.h"
#include "ui/qt/qt_toolkit.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::ui {

using support::Log;
using support::SampleForm;

// `user` plays the user while the form is shown; the form is hidden afterwards. Events from before are
// forgotten.
class ShownFormTest : public testing::Test {
  protected:
    void Show(forms::Form& shown, const std::function<void(FormWindow&)>& user) {
        QTimer::singleShot(0, [&] {
            FormWindow& window = *toolkit.ActiveWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
            form.log.clear();
            user(window);
            shown.Hide();
        });
        shown.ShowModal(toolkit);
    }
    void Show(const std::function<void(FormWindow&)>& user) { Show(form, user); }

    // `answer` ends the next message box as soon as it can be used.
    static void AnswerNextMessage(const std::function<void(QMessageBox&)>& answer) {
        QTimer::singleShot(5, [answer] {
            auto* box = dynamic_cast<QMessageBox*>(QApplication::activeWindow());
            if (box == nullptr) {
                AnswerNextMessage(answer);
            } else {
                answer(*box);
            }
        });
    }

    template <class Widget>
    static Widget& WidgetOf(FormWindow& window, forms::Control& control) {
        return dynamic_cast<Widget&>(*window.WidgetOf(control));
    }

    SampleForm form;
    QtToolkit toolkit{QDir(QStringLiteral(":/help"))};
};

}  // namespace lintara::ui

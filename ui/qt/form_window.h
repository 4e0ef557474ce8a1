// The window of a form while it is shown: the widgets of its controls, kept like the controls, and the user's
// work handed to them.
//
// Which control has the keyboard, and what Tab, Enter, Esc and the access keys do, is decided by the form
// (forms/keyboard.h); Qt's own rules for these keys are not used.
#pragma once

#include "forms/form.h"
#include "forms/mirror.h"
#include "ui/qt/control_view.h"
#include "ui/qt/scale.h"
#include "ui/qt/view_maker.h"

#include <QDialog>
#include <QEventLoop>

class QKeyEvent;

namespace lintara::ui {

class FormWindow final : public QDialog, public forms::Mirror {
  public:
    // The form outlives the window. `owner` is the window that the user cannot use meanwhile; null for none.
    FormWindow(forms::Form& form, QWidget* owner);
    ~FormWindow() override;

    // Serves the user until the form is not visible any more.
    void Run();

    void Changed(forms::Control& control, forms::Property property) override;

    // The widget of a control; null for those without.
    [[nodiscard]] QWidget* WidgetOf(forms::Control& control) const;
    [[nodiscard]] const Scale& scale() const { return scale_; }

    // QDialog has its own ideas of how to show, close and end a dialog; here the form decides.
    // NOLINTBEGIN(bugprone-parent-virtual-call)
    void setVisible(bool visible) override { QWidget::setVisible(visible); }
    void keyPressEvent(QKeyEvent* event) override { QWidget::keyPressEvent(event); }
    // NOLINTEND(bugprone-parent-virtual-call)
    void reject() override { form_.Unload(); }

  protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakeWidgets();

    void ChooseFonts();
    void ChooseScale();
    void PlaceAll();
    void PlaceWidget(forms::Control& control);
    void PlaceWithContents(forms::Control& control);
    void PlaceWindow();
    void ShowOnScreen();
    void ShowFocus();
    void SetHandles(bool shown);

    void UpdateForm(forms::Property property);
    void UpdateControl(forms::Control& control, QWidget& widget, forms::Property property);
    void UpdateCaption();
    void RepaintDrawing(const forms::Control& control);

    void TakeFocus(QObject* widget);
    void TakeSize();
    [[nodiscard]] bool TakeKey(const QKeyEvent& event);
    [[nodiscard]] bool TakeAccessKey(const QKeyEvent& event);

    forms::Form& form_;
    MirrorGate gate_;
    Scale scale_;
    Views views_;
    QEventLoop loop_;
};

}  // namespace lintara::ui

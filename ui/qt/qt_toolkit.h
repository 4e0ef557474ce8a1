// Forms shown by Qt. Make it after the QApplication, and use it from that thread only.
#pragma once

#include "forms/geometry.h"
#include "forms/toolkit.h"

#include <QDir>
#include <memory>
#include <vector>

namespace lintara::ui {

class FormWindow;
class HelpWindow;

class QtToolkit final : public forms::Toolkit {
  public:
    // `helpFolder` holds the pages of help: each in a file whose name begins with the number of its topic and
    // a hyphen, and ends in ".md".
    explicit QtToolkit(const QDir& helpFolder);
    ~QtToolkit() override;
    QtToolkit(const QtToolkit&) = delete;
    QtToolkit& operator=(const QtToolkit&) = delete;

    // The user can go on using help while the form is shown, but not a form that is shown already.
    void RunModal(forms::Form& form) override;
    void ShowMessage(TextView text, forms::MessageStyle style, TextView title) override;
    // Help files of one program only: `file` makes no difference. A topic without a page is told in a
    // message.
    void ShowHelp(TextView file, std::int32_t context) override;
    void DoEvents() override;
    void SetMousePointer(forms::MousePointer pointer) override;
    [[nodiscard]] forms::Color Resolve(forms::Color color) const override;

    // The part of the screen where windows can be, in twips.
    [[nodiscard]] forms::Rect ScreenArea() const;

    // The window of the form that the user is working with; null when none is shown.
    [[nodiscard]] FormWindow* ActiveWindow() const;

  private:
    void GiveBackTheScreen() const;

    QDir helpFolder_;
    std::vector<FormWindow*> windows_;
    std::unique_ptr<HelpWindow> help_;
    bool isBusy_ = false;
};

}  // namespace lintara::ui

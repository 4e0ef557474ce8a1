// The shape of the mouse pointer: that of what it points to, or an hourglass everywhere.
#pragma once

#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

class Pointer {
  public:
    [[nodiscard]] bool IsBusy() const { return isBusy_; }

    void SetBusy(bool isBusy) {
        if (isBusy == isBusy_) {
            return;
        }
        isBusy_ = isBusy;
        if (isBusy) {
            before_ = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
        } else {
            ::SetCursor(before_);
        }
    }

  private:
    bool isBusy_ = false;
    HCURSOR before_ = nullptr;
};

}  // namespace lintara::ui::win32

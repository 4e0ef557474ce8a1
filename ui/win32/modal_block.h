// Keeps the user from the other windows of this thread while one is shown: the IDE's and, when a form is
// shown over another, that form's.
#pragma once

#include "ui/win32/windows_headers.h"

#include <vector>

namespace lintara::ui::win32 {

class ModalBlock {
  public:
    // Disables every visible top-level window of the thread that the user could use, but `window`.
    explicit ModalBlock(HWND window);
    ~ModalBlock() { Release(); }
    ModalBlock(const ModalBlock&) = delete;
    ModalBlock& operator=(const ModalBlock&) = delete;

    // Enables them again, and no others. To be called before the window disappears: the system gives the
    // screen to another program when none here can take it.
    void Release();

  private:
    std::vector<HWND> windows_;
};

}  // namespace lintara::ui::win32

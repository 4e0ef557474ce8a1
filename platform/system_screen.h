// The mouse pointer of Windows.
#pragma once

#ifdef _WIN32

#include "hostmodel/screen.h"

namespace lintara::platform {

// The pointer stays until the system asks a window which one it wants, that is, until this thread goes back
// to its messages. The default pointer is the one that the window below it wants.
class SystemScreen final : public hostmodel::Screen {
  public:
    [[nodiscard]] Result<void> SetMousePointer(hostmodel::MousePointer pointer) override;
};

}  // namespace lintara::platform

#endif

// The system's controls come in two versions. A process without a manifest of its own gets the old one unless
// windows are made while an activation context asks for the new one, which is the library's: its resources
// hold it (common_controls.manifest). Without it the old ones serve.
#pragma once

#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

class ControlsContext {
  public:
    explicit ControlsContext(HINSTANCE module);
    ~ControlsContext();
    ControlsContext(const ControlsContext&) = delete;
    ControlsContext& operator=(const ControlsContext&) = delete;

    // Whether there is a manifest.
    [[nodiscard]] bool IsPresent() const { return context_ != INVALID_HANDLE_VALUE; }

    // In force from here to the end of the block.
    class Activation {
      public:
        explicit Activation(const ControlsContext& context);
        ~Activation();
        Activation(const Activation&) = delete;
        Activation& operator=(const Activation&) = delete;

      private:
        ULONG_PTR cookie_ = 0;
        bool isActive_ = false;
    };

  private:
    HANDLE context_ = INVALID_HANDLE_VALUE;
};

}  // namespace lintara::ui::win32

// A dialog as the services object gets it for `LoadWindowState` and `SaveWindowState`: an object with the
// properties `Name` (to read), `Left`, `Top`, `Width` and `Height` in twips (to read and write), and the
// method `Move(Left, Top, Width, Height)`.
//
// It is lent for the call. A host that keeps it finds an object without name, place or size afterwards.
#pragma once

#include "com/com_ptr.h"
#include "hostmodel/globals.h"

#include <oaidl.h>

namespace lintara::com {

class WindowObject;

class LentWindow {
  public:
    // The window outlives it. One to save can only be read.
    explicit LentWindow(hostmodel::PlacedWindow& window);
    explicit LentWindow(const hostmodel::PlacedWindow& window);
    ~LentWindow();
    LentWindow(const LentWindow&) = delete;
    LentWindow& operator=(const LentWindow&) = delete;

    [[nodiscard]] IDispatch* object() const;

  private:
    ComPtr<WindowObject> object_;
};

}  // namespace lintara::com

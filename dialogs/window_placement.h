// Remembers in the settings where windows stood: for hosts without a suite that would do it.
//
// Each window is a value of the section "Windows", under its name: "left,top,width,height" in twips.
#pragma once

#include "base/settings_store.h"
#include "base/text.h"
#include "forms/geometry.h"
#include "hostmodel/globals.h"

namespace lintara::dialogs {

class WindowPlacement {
  public:
    // `settings` outlives it. `screen` is where windows may stand: the desktop without its bars, and without
    // the room that the frame around a window takes.
    WindowPlacement(SettingsStore& settings, const forms::Rect& screen)
        : settings_(settings), screen_(screen) {}

    // Moves the window to its remembered place, or to the nearest one that lies on the screen; a window
    // larger than the screen is made smaller. Returns false, and leaves the window alone, when nothing is
    // remembered or what is there is no placement.
    bool Load(hostmodel::PlacedWindow& window) const;

    // Remembers the window's place. A store that fails keeps the earlier one.
    void Save(const hostmodel::PlacedWindow& window) const;

  private:
    SettingsStore& settings_;
    forms::Rect screen_;
};

}  // namespace lintara::dialogs

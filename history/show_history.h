// Shows the window of the navigation history: what `Lintara::ShowHistory` shows through
// `Platform::showHistoryWindow`.
#pragma once

#include "forms/toolkit.h"
#include "hostmodel/globals.h"

namespace lintara::history {

// Returns when the user has closed the window. The key and the tag of the chosen entry are in the services
// object's HistSelKey and HistSelObject then; without a choice they are as they were.
void ShowHistoryWindow(hostmodel::Globals& globals, forms::Toolkit& toolkit);

}  // namespace lintara::history

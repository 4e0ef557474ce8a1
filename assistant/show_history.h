// The showing of the navigation history, around the window itself: the host's timer stands still, the lists
// are cleaned up before, and a chosen place is opened after.
#pragma once

#include "assistant/platform.h"
#include "hostmodel/globals.h"

namespace lintara::assistant {

// Every step that fails is left out, and the next one is done. The timer runs again in any case.
void ShowHistory(hostmodel::Globals& globals, const Platform& platform);

}  // namespace lintara::assistant

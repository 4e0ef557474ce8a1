// What the objects of the component server need of the machine that they run on.
#pragma once

#include "assistant/platform.h"
#include "dialogs/dialog_host.h"

#include <functional>

namespace lintara::com {

// For a new `Lintara`. Nothing is opened or asked for before it is needed.
[[nodiscard]] Platform ThisMachine();

// Calls back with what the dialogs need: the system's own windows, the user's settings, the services object
// that is in use on this thread. It lives for that call.
void WithWindowsOfThisMachine(const std::function<void(const dialogs::DialogHost&)>& use);

}  // namespace lintara::com

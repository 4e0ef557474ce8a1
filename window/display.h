// Ending with a clear message where no window can be shown, instead of the abort that Qt has in mind.
#pragma once

namespace lintara::window {

// For the beginning of `main`, before the QApplication is made: ends the process with exit status 3 and a
// message on standard error when there is no display, now or when Qt finds that it cannot be reached.
void RequireDisplay();

// From here on, Qt's own failures are Qt's own again.
void DisplayIsReached();

}  // namespace lintara::window

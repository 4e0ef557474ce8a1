#include "history/show_history.h"

#include "history/fhistory.h"

namespace lintara::history {

void ShowHistoryWindow(hostmodel::Globals& globals, forms::Toolkit& toolkit) {
    FHistory window(globals, toolkit);
    window.ShowModal(toolkit);
    window.Unload();
}

}  // namespace lintara::history

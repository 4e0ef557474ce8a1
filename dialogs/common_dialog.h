// The part of the platform's common dialogs that the dialogs use: it stands on a form, is never seen, and
// shows help.
#pragma once

#include "base/text.h"
#include "forms/toolkit.h"

#include <cstdint>

namespace lintara::dialogs {

struct CommonDialog {
    // The only command: show the topic that HelpContext says.
    static constexpr std::int16_t ShowContext = 1;

    Text HelpFile;
    std::int32_t HelpContext = 0;
    std::int16_t HelpCommand = 0;

    void ShowHelp(forms::Toolkit& toolkit) const {
        if (HelpCommand == ShowContext) {
            toolkit.ShowHelp(HelpFile, HelpContext);
        }
    }
};

}  // namespace lintara::dialogs

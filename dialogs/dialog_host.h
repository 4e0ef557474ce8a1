// What the windows need of the machine that shows them and of the host that calls them.
#pragma once

#include "base/settings_store.h"
#include "base/text.h"
#include "dialogs/window_placement.h"
#include "forms/toolkit.h"
#include "hostmodel/globals.h"

#include <memory>

namespace lintara::dialogs {

// The toolkit and the settings outlive the dialogs.
struct DialogHost {
    forms::Toolkit& toolkit;
    SettingsStore& settings;
    // The suite's services object, which remembers where the windows stood. Null where there is no suite:
    // then `placement` does it and, where that is null too, nobody.
    std::shared_ptr<hostmodel::Globals> globals = nullptr;
    std::shared_ptr<WindowPlacement> placement = nullptr;
    // The folder from which this library was loaded, without a separator at its end. The help file lies
    // there.
    Text libraryFolder = {};
};

}  // namespace lintara::dialogs

// What `Lintara` needs of the machine that it runs on, apart from the IDE. Each may be absent: nothing is
// shown without a screen, every setting has its default without a store, the date and time have no text
// without a clock and the regional texts, and no code database is opened without an engine.
#pragma once

#include "base/clock.h"
#include "base/settings_store.h"
#include "base/text.h"
#include "hostmodel/database.h"
#include "hostmodel/globals.h"
#include "hostmodel/screen.h"

#include <functional>
#include <memory>

namespace lintara {

// Makes the object that asks where the code database lies; it is made only when somebody has to be asked.
using MakeDatabaseLocator = std::function<std::shared_ptr<hostmodel::DatabaseLocator>()>;

// Shows the window of the navigation history until the user has closed it; the entry that was chosen, if any,
// is in the services object's HistSelKey and HistSelObject then.
using ShowHistoryWindow = std::function<void(hostmodel::Globals&)>;

struct Platform {
    std::shared_ptr<hostmodel::Screen> screen = nullptr;  // shows the hourglass during the longer operations
    std::shared_ptr<SettingsStore> settings = nullptr;
    std::shared_ptr<Clock> clock = nullptr;
    std::shared_ptr<RegionalTexts> regional = nullptr;
    std::shared_ptr<hostmodel::DatabaseEngine> databaseEngine = nullptr;
    MakeDatabaseLocator makeDatabaseLocator = nullptr;  // nobody is asked without it
    // The folder from which this library was loaded, where a code database may lie; "" when it is not known.
    Text libraryFolder = {};
    ShowHistoryWindow showHistoryWindow = nullptr;  // nothing is shown without it
};

}  // namespace lintara

// What `Lintara` needs of the machine that it runs on, apart from the IDE. Each may be absent: nothing is
// shown without a screen, every setting has its default without a store, and the date and time have no text
// without a clock and the regional texts.
#pragma once

#include "base/clock.h"
#include "base/settings_store.h"
#include "hostmodel/screen.h"

#include <memory>

namespace lintara {

struct Platform {
    std::shared_ptr<hostmodel::Screen> screen = nullptr;  // shows the hourglass during the longer operations
    std::shared_ptr<SettingsStore> settings = nullptr;
    std::shared_ptr<Clock> clock = nullptr;
    std::shared_ptr<RegionalTexts> regional = nullptr;
};

}  // namespace lintara

#include "com/machine.h"

#include "com/module.h"
#include "com/services_in_use.h"
#include "com/system_database.h"
#include "dialogs/window_placement.h"
#include "history/show_history.h"
#include "platform/regional_texts.h"
#include "platform/registry_settings.h"
#include "platform/system_clock.h"
#include "platform/system_files.h"
#include "platform/system_screen.h"
#include "ui/win32/win32_toolkit.h"

#include <memory>

namespace lintara::com {

using ui::win32::Win32Toolkit;

Platform ThisMachine() {
    return {.screen = std::make_shared<platform::SystemScreen>(),
            .settings = std::make_shared<platform::RegistrySettings>(),
            .clock = std::make_shared<platform::SystemClock>(),
            .regional = std::make_shared<platform::SystemRegionalTexts>(),
            .databaseEngine = std::make_shared<SystemDatabaseEngine>(),
            .makeDatabaseLocator = MakeSystemDatabaseLocator,
            .libraryFolder = platform::LibraryFolder(),
            .showHistoryWindow = [](hostmodel::Globals& globals) {
                Win32Toolkit toolkit(ModuleHandle());
                history::ShowHistoryWindow(globals, toolkit);
            }};
}

void WithWindowsOfThisMachine(const std::function<void(const dialogs::DialogHost&)>& use) {
    Win32Toolkit toolkit(ModuleHandle());
    platform::RegistrySettings settings;
    use({.toolkit = toolkit,
         .settings = settings,
         .globals = ServicesInUse(),
         .placement = std::make_shared<dialogs::WindowPlacement>(settings, toolkit.ScreenArea()),
         .libraryFolder = platform::LibraryFolder()});
}

}  // namespace lintara::com

// lintara settings: the user's settings, listed, read, changed and put back.
#pragma once

#include "base/settings_store.h"
#include "cli/exit_status.h"
#include "cli/streams.h"

#include <string>

namespace lintara::cli {

struct SettingsRequest {
    enum class Action { List, Get, Set, Reset };

    Action action = Action::List;
    // Of Get, Set and Reset: the setting's key, or section and key with a dot between, without regard to
    // case.
    std::string key = {};
    // Of Set: the value in UTF-8.
    std::string value = {};
    bool json = false;  // of List and Get
};

// List writes every setting with its value, defaults marked as such; Get writes the value alone and one line
// break, whatever the value ends with; Set stores the value exactly, when it is one that the setting can make
// use of; Reset gives the setting its default again. Usage for a key that there is not and for a value that
// is of no use, Failed when the store fails.
[[nodiscard]] ExitStatus RunSettingsCommand(const SettingsRequest& request, SettingsStore& store,
                                            Streams& streams);

}  // namespace lintara::cli

// The user's settings for insertions, as the dialog of the IDE stores them when it begins one.
#pragma once

#include "base/result.h"
#include "base/settings_store.h"
#include "cli/edits/insertion.h"

namespace lintara::cli {

// Stores what the insertion did, and the values that it was done with. The first failure ends it.
[[nodiscard]] Result<void> SaveUsedSettings(SettingsStore& store, const InsertionOptions& used);

}  // namespace lintara::cli

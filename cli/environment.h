// What a run gets from the machine: its streams, and what stands behind the library's platform interfaces.
// Tests hand in their own.
#pragma once

#include "assistant/platform.h"
#include "base/identity.h"
#include "cli/streams.h"

#include <filesystem>
#include <memory>

namespace lintara::cli {

struct Environment {
    Streams streams;
    // No screen: a terminal has no mouse pointer to change.
    Platform platform = {};
    std::shared_ptr<Identity> identity = nullptr;
    // Where programs keep what the user would not miss for long; empty: nowhere.
    std::filesystem::path stateFolder = {};
};

}  // namespace lintara::cli

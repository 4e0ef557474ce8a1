// What a run gets from the machine: its streams, and what stands behind the library's platform interfaces.
// Tests hand in their own.
#pragma once

#include "assistant/platform.h"
#include "base/identity.h"
#include "cli/streams.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

// Shows the question to the person at the terminal and gives the answer, a line; none when there is no more.
using AskUser = std::function<std::optional<std::string>(std::string_view question)>;

struct Environment {
    Streams streams;
    // No screen: a terminal has no mouse pointer to change.
    Platform platform = {};
    std::shared_ptr<Identity> identity = nullptr;
    // Where programs keep what the user would not miss for long; empty: nowhere.
    std::filesystem::path stateFolder = {};
    // Null when nobody sits at a terminal.
    AskUser ask = nullptr;
    // The words that the run was started with, without the program's name.
    std::vector<std::string> commandLine = {};
};

}  // namespace lintara::cli

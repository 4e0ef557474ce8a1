// The course of "lintara where".
#pragma once

#include "cli/edits/insertion.h"
#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/numbers/number_lookup.h"
#include "cli/options.h"

#include <filesystem>
#include <optional>

namespace lintara::cli {

struct WhereOptions {
    NumberQuery query;
    ReadOptions read;
    std::optional<std::filesystem::path> map;
    // Without a map: what the build inserted; none to take the numbers that stand in the sources.
    std::optional<InsertionOptions> build;
    ScopeOptions everything;  // but what the build left out
    bool json = false;
};

// Writes nothing but the answer.
ExitStatus RunWhere(const WhereOptions& options, Environment& environment);

}  // namespace lintara::cli

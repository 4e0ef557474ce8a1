// The mark of a copy that is not complete. It lies in every folder that the copy gets files in, from before
// the first of them is written until the last is in place, so that a copy which was interrupted tells it.
#pragma once

#include "workspace/diagnostic.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace lintara::workspace {

inline constexpr const char* copyMarkName = ".lintara-copy";
inline constexpr const char* copyMarkUse = "the mark of a copy that is being made";

// What to tell people when one of the folders holds an incomplete copy, or something else in the mark's
// place.
[[nodiscard]] std::optional<Diagnostic> FindIncompleteCopy(const std::vector<std::filesystem::path>& folders);

}  // namespace lintara::workspace

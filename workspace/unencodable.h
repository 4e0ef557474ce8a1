// The message for a character that an edit put where the file cannot hold it.
#pragma once

#include "workspace/diagnostic.h"
#include "workspace/workspace.h"

#include <optional>

namespace lintara::workspace {

// The first character of the component that cannot be saved, as an error with its place in the file as it is
// on the disk: of a line that would be inserted, the line that it would stand ahead of.
[[nodiscard]] std::optional<Diagnostic> UnencodableIn(const Component& component);

}  // namespace lintara::workspace

// The host's part of numbering, as the benchmarks play it: one call of the library for each procedure name.
#pragma once

#include "assistant/lintara.h"
#include "workspace/workspace.h"

#include <cstddef>

namespace lintara::bench {

// A library that works on `workspace`.
[[nodiscard]] Lintara LibraryOver(workspace::Workspace& workspace);

// Numbers every procedure of the component with base 10000 and step 1, and returns how many names it called
// for.
std::size_t NumberComponent(Lintara& library, const workspace::Project& project,
                            const workspace::Component& component);
std::size_t NumberProject(Lintara& library, const workspace::Project& project);

}  // namespace lintara::bench

// How large an edit may make what it edits: no more than can be opened again, and no more than the memory of
// the machine that a project of that size should cost; see workspace/limits.h.
#pragma once

#include "workspace/workspace.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace lintara::cli {

// Throws Refusal when the component, with `more` bytes that it is about to get, is too large to be opened.
// Cheap.
void RequireReadable(const workspace::Component& component, std::size_t more = 0);

// What all components of a run may grow to together. From any thread.
class TotalSize {
  public:
    // For edits of the workspace, none of which has been made.
    explicit TotalSize(const workspace::Workspace& workspace);

    // The edits of a component are made, and `bytes` are what a save would write. Throws Refusal when that is
    // too much.
    void ComponentEdited(const workspace::Component& component, std::string_view bytes);

  private:
    std::int64_t most_ = 0;
    std::atomic<std::int64_t> size_ = 0;
};

}  // namespace lintara::cli

// Which error handlers of a project are alike but for the names in them: those come from one template. A
// handler without its like was written or changed by hand.
#pragma once

#include "base/text.h"
#include "cli/edits/edit_target.h"

#include <cstddef>
#include <map>
#include <mutex>
#include <span>
#include <unordered_map>

namespace lintara::cli {

class HandlerPeers {
  public:
    // Handlers of one project that are alike.
    struct Shape {
        std::size_t count = 0;
    };

    // The shape of a handler, whose lines from its marker on are `block`, in a procedure called `name`. The
    // project's handlers are counted as they were loaded, whatever was edited since. May be called from
    // several threads.
    [[nodiscard]] const Shape& ShapeOf(const EditTarget& target, std::span<const Text> block, TextView name);

  private:
    using Shapes = std::unordered_map<Text, Shape>;

    [[nodiscard]] static Shapes Survey(const workspace::Project& project);

    std::mutex mutex_;
    std::map<const workspace::Project*, Shapes> projects_;  // those that were surveyed
};

}  // namespace lintara::cli

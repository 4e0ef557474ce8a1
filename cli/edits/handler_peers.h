// Which error handlers of a project are alike but for the names in them: those come from one template. A
// handler without its like was written or changed by hand.
#pragma once

#include "cli/edits/edit_target.h"

#include <cstddef>
#include <span>
#include <unordered_map>

namespace lintara::cli {

class HandlerPeers {
  public:
    struct Peers {
        std::size_t count = 0;  // of handlers that are alike, the one that was asked for among them
        bool isNew = false;     // they were not asked for before
    };

    // `block` are the lines of a handler, from its marker on, in a procedure called `name`. The project is
    // looked at as it is when it is first asked for.
    [[nodiscard]] Peers PeersOf(const EditTarget& target, std::span<const Text> block, TextView name);

  private:
    struct Entry {
        std::size_t count = 0;
        bool asked = false;
    };

    void Survey(const workspace::Project& project);

    const workspace::Project* project_ = nullptr;
    std::unordered_map<Text, Entry> shapes_;
};

}  // namespace lintara::cli

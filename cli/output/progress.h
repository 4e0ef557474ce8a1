// A progress bar on standard error, for people who wait: only on a terminal, and only when the work takes
// longer than half a second. It is wiped away at its end.
#pragma once

#include "cli/streams.h"

#include <chrono>
#include <cstddef>
#include <string_view>

namespace lintara::cli {

class Progress {
  public:
    // The waiting begins now.
    Progress(Streams& streams, bool enabled);
    ~Progress() { Clear(); }

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    // `done` of `total` parts of a stage ("reading") are done. Cheap enough to be called for every part.
    void Update(std::string_view stage, std::size_t done, std::size_t total);

    // Wipes the bar away, so that messages can be written; the next update draws it again.
    void Clear();

  private:
    using Time = std::chrono::steady_clock::time_point;

    void Draw(std::string_view stage, std::size_t done, std::size_t total);

    Streams& streams_;
    bool enabled_;
    bool visible_ = false;
    Time start_;
    Time lastDrawn_;
};

}  // namespace lintara::cli

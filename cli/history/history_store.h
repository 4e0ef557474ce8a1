// The history of each project, a small JSON file in a folder of the user's. Several commands may write it at
// once. It is a convenience: no command fails for its sake.
#pragma once

#include "cli/environment.h"
#include "cli/history/places.h"
#include "cli/output/json_text.h"
#include "cli/project/project_records.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <functional>
#include <string>

namespace lintara::cli {

// When a project gets its first place, the histories of those that were visited least recently go.
inline constexpr std::size_t mostHistories = 100;

// Errors are sentences for people that name the file.
class HistoryStore {
  public:
    // `stateFolder` is that of the environment. The folder of the histories in it is made when it is needed.
    explicit HistoryStore(const std::filesystem::path& stateFolder);

    // An empty history when none is recorded, or when its file is damaged. `project` is a path as the command
    // line names it.
    [[nodiscard]] std::expected<History, std::string> Read(const std::filesystem::path& project) const;

    // Replaces the history by what `change` makes of it, while nobody else does. A damaged file is copied
    // aside, and the history begins anew.
    [[nodiscard]] std::expected<void, std::string> Update(
        const std::filesystem::path& project, const std::function<void(History& history)>& change) const;

  private:
    ProjectRecords records_;
};

// Notes that a command was pointed at that place. Whatever goes wrong is passed over in silence.
void RememberPlace(const Environment& environment, const std::filesystem::path& path, RecordedPlace place);
// The same for a line of a component that nobody has edited yet.
void RememberPlace(const Environment& environment, const std::filesystem::path& path,
                   const workspace::Project& project, const workspace::Component& component, Line line);

// The members of a place in the file.
[[nodiscard]] Json PlaceObject(const RecordedPlace& place);

}  // namespace lintara::cli

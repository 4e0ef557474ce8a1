// Where the files of a project may be written: below the folder that was opened, and below folders that the
// user names besides. What a project file names elsewhere is read, and not written.
#pragma once

#include "workspace/diagnostic.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lintara::workspace {

struct WritableArea {
    std::filesystem::path tree;                  // as TreeOf tells it; empty: nothing may be written
    std::vector<std::filesystem::path> allowed;  // folders, each with all that lies below it

    // `file` from the root and without links, as std::filesystem::canonical makes it.
    [[nodiscard]] bool Holds(const std::filesystem::path& file) const;
};

// The folder below which the projects that `path` names may be written: the folder itself, else the one that
// holds the file, of a link the file that it leads to. From the root and without links; empty when there is
// no such file.
[[nodiscard]] std::filesystem::path TreeOf(const std::filesystem::path& path);

// Who names a component.
struct ComponentOrigin {
    std::filesystem::path projectFile;  // empty: nobody
    std::int64_t line = 0;
    std::string component;
};

// That the file `path`, which really is `file`, lies outside of `area`, and what can be done.
[[nodiscard]] Diagnostic OutsideOf(const WritableArea& area, const std::filesystem::path& path,
                                   const std::filesystem::path& file, const ComponentOrigin& origin);

}  // namespace lintara::workspace

#include "workspace/writable_area.h"

#include <algorithm>
#include <system_error>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

bool LiesBelow(const fs::path& file, const fs::path& folder) {
    return !folder.empty() && std::ranges::mismatch(folder, file).in1 == folder.end();
}

}  // namespace

bool WritableArea::Holds(const fs::path& file) const {
    if (LiesBelow(file, tree)) {
        return true;
    }
    return std::ranges::any_of(allowed, [&](const fs::path& folder) {
        std::error_code error;
        const fs::path real = fs::canonical(folder, error);
        return !error && LiesBelow(file, real);
    });
}

fs::path TreeOf(const fs::path& path) {
    std::error_code error;
    fs::path real = fs::canonical(path, error);
    if (error) {
        return {};
    }
    return fs::is_directory(real, error) ? real : real.parent_path();
}

Diagnostic OutsideOf(const WritableArea& area, const fs::path& path, const fs::path& file,
                     const ComponentOrigin& origin) {
    const std::string place = "outside of " + area.tree.string();
    const std::string option =
        "; only --allow-outside " + file.parent_path().string() + " lets it be written";
    if (origin.component.empty()) {
        return {path, 0, (path == file ? "lies " : "is the file " + file.string() + ", ") + place + option};
    }
    return {origin.projectFile.empty() ? path : origin.projectFile, origin.line,
            "the component " + origin.component + " is the file " + file.string() + ", " + place + option +
                ", and --exclude " + origin.component + " leaves it as it is"};
}

}  // namespace lintara::workspace

#include "workspace/copy_mark.h"

#include "workspace/read_file.h"

#include <unistd.h>

namespace lintara::workspace {

namespace fs = std::filesystem;

std::optional<Diagnostic> FindIncompleteCopy(const std::vector<fs::path>& folders) {
    for (const fs::path& folder : folders) {
        const fs::path mark = folder / copyMarkName;
        if (auto squatter = SquatterMessage(mark, copyMarkUse)) {
            return Diagnostic{mark, 0, *std::move(squatter)};
        }
        if (::access(mark.c_str(), F_OK) == 0) {
            return Diagnostic{
                folder, 0,
                "holds a copy that is not complete: it is still being made, or was interrupted. "
                "Make the copy again, or delete " +
                    mark.string() + " if you know better"};
        }
    }
    return std::nullopt;
}

}  // namespace lintara::workspace

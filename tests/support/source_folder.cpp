#include "tests/support/source_folder.h"

namespace lintara::support {

std::filesystem::path SourceFolder() {
    return LINTARA_SOURCE_DIR;
}

}  // namespace lintara::support

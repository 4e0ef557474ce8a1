// Where the source tree is, for tests that read its samples or its own sources.
#pragma once

#include <filesystem>

namespace lintara::support {

[[nodiscard]] std::filesystem::path SourceFolder();

}  // namespace lintara::support

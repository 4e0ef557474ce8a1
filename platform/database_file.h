// Making code databases.
#pragma once

#include "base/result.h"

#include <filesystem>

namespace lintara::platform {

// The code database's file in that folder.
[[nodiscard]] std::filesystem::path CodeDatabaseFileIn(const std::filesystem::path& folder);

enum class Creation { Made, WasThere };

// Makes a code database without buffers in the folder, which is made when there is none. A code database that
// is there stays as it is; one without its table or the table's index gets it; a file of another kind is left
// alone and fails. The reason of a failure continues a sentence about the file.
[[nodiscard]] Result<Creation> CreateCodeDatabase(const std::filesystem::path& folder);

}  // namespace lintara::platform

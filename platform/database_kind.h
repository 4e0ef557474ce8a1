// What kind of database a file holds, told from its first bytes.
#pragma once

#include "base/result.h"

#include <filesystem>

namespace lintara::platform {

enum class DatabaseKind {
    Sqlite,  // an empty file, too: one without tables
    Jet,     // the old format, whose files bear the same name
    Other,
};

// Reads a few bytes and changes nothing. Fails when there is no file, or what is there is none, or cannot be
// read; the reason continues a sentence about the file.
[[nodiscard]] Result<DatabaseKind> KindOfDatabase(const std::filesystem::path& file);

}  // namespace lintara::platform

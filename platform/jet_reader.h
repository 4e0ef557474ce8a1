// Reads the table `CPBuffers` of a code database of the old format, with a library that trusts the files that
// it reads: a damaged one can crash it, or keep it busy for ever. So nobody calls this but jet_import.cpp, in
// a process of its own.
#pragma once

#include "base/text.h"

#include <expected>
#include <filesystem>
#include <map>
#include <string>

namespace lintara::platform {

// Whether this program was built with the library.
[[nodiscard]] bool HasJetReader();

// The texts by their keys; of several rows of one key the first. The error continues a sentence about the
// file.
[[nodiscard]] std::expected<std::map<int, Text>, std::string> ReadJetRows(const std::filesystem::path& file);

}  // namespace lintara::platform

// What people are told about a file: an error that stopped the work, or a warning.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lintara::workspace {

struct Diagnostic {
    std::filesystem::path path;  // empty when it is about no file
    std::int64_t line = 0;       // the file's physical line from 1; 0 when it is about the whole file
    std::string message;         // what is wrong and what to do, UTF-8, without path and line

    // "path:line: message", the form that editors and people know.
    [[nodiscard]] std::string ToString() const;
};

using Diagnostics = std::vector<Diagnostic>;

}  // namespace lintara::workspace

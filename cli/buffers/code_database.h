// The user's code database, found as every session of the library finds it: in the folder that the settings
// remember, else beside the program, else where the user says.
#pragma once

#include "base/text.h"
#include "cli/environment.h"
#include "hostmodel/database.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace lintara::cli {

// What --database says, if anything.
using DatabaseFolder = std::optional<std::filesystem::path>;

class CodeDatabase {
  public:
    // Opens it. Without `folder` the person at the terminal is asked where nothing else tells. A folder that
    // is given is remembered as the user's when none is known, else it counts this once. Throws
    // std::runtime_error with a sentence that says what to do.
    [[nodiscard]] static CodeDatabase Find(const DatabaseFolder& folder, Environment& environment);

    [[nodiscard]] const std::filesystem::path& file() const { return file_; }

    using Buffers = std::array<Text, 10>;

    // These throw std::runtime_error with a sentence that names the file. What fails has stored nothing.
    [[nodiscard]] Buffers ReadAll() const;
    [[nodiscard]] Text Read(std::int32_t buffer) const;
    void Store(std::int32_t buffer, TextView code) const;
    void StoreAll(const Buffers& buffers) const;

  private:
    CodeDatabase(std::filesystem::path file, std::shared_ptr<hostmodel::Database> database);

    std::filesystem::path file_;
    std::shared_ptr<hostmodel::Database> database_;
};

// Makes an empty code database in the folder, and remembers it as the user's. The result is a sentence that
// says what was done; throws std::runtime_error.
[[nodiscard]] std::string InitCodeDatabase(const std::filesystem::path& folder, Environment& environment);

}  // namespace lintara::cli

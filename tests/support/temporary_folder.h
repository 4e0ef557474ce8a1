// A folder of files that lives as long as a test.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace lintara::support {

class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    // Writes a file below the folder, and the folders above it; the result is its path.
    std::filesystem::path Write(std::string_view name, std::string_view bytes) const;
    [[nodiscard]] std::string Read(std::string_view name) const;

    // Every file below the folder, hidden ones too, by its relative path.
    [[nodiscard]] std::map<std::string, std::string> Files() const;

  private:
    std::filesystem::path path_;
};

[[nodiscard]] std::string ReadBytes(const std::filesystem::path& path);

}  // namespace lintara::support

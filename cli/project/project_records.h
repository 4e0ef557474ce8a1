// A folder of the user's with one file for each project, so that what is kept of a project is found again by
// the project's path.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>

namespace lintara::cli {

class ProjectRecords {
  public:
    // `extension`, such as ".json" or nothing, ends the name of every record. Of more records than `most`,
    // those written first are forgotten.
    ProjectRecords(std::filesystem::path folder, std::string extension, std::size_t most);

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }

    // The record of a project, there or not. `project` is a path as the command line names it; all paths that
    // lead to one place have one record.
    [[nodiscard]] std::filesystem::path FileOf(const std::filesystem::path& project) const;

    // Removes the records written first until no more than the most are left; `latest` stays in any case.
    // Other files of the folder are left alone, and so is what cannot be removed.
    void ForgetOldest(const std::filesystem::path& latest) const;

  private:
    [[nodiscard]] bool IsRecord(const std::filesystem::path& path) const;

    std::filesystem::path folder_;
    std::string extension_;
    std::size_t most_;
};

}  // namespace lintara::cli

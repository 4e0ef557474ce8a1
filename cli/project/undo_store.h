// What the last editing command on each project replaced, kept in a folder of the user's so that the command
// can be undone. One file a project; a later command takes its place. Records hold whole files, so only those
// of the projects that were edited last are kept.
#pragma once

#include "cli/project/project_records.h"
#include "workspace/save_options.h"

#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct UndoFile {
    std::filesystem::path path;    // absolute
    std::string content;           // what the file held before the command
    workspace::ContentMark after;  // of what the command left in it
};

struct UndoRecord {
    std::string command;
    std::vector<UndoFile> files;
};

inline constexpr std::size_t mostUndoRecords = 20;

// Errors are sentences for people that name the record's file.
class UndoStore {
  public:
    // `stateFolder` is that of the environment. The folder of the records in it is made when one is written.
    explicit UndoStore(const std::filesystem::path& stateFolder);

    // `project` is a path as the command line names it. When there are more records than `mostUndoRecords`
    // then, the oldest ones go. What the files held is read now. When it fails, no earlier command on the
    // project is remembered, either.
    [[nodiscard]] std::expected<void, std::string> Write(
        const std::filesystem::path& project, std::string_view command,
        std::span<const workspace::ReplacedFile> files) const;
    // None when no command is remembered.
    [[nodiscard]] std::expected<std::optional<UndoRecord>, std::string> Read(
        const std::filesystem::path& project) const;
    void Forget(const std::filesystem::path& project) const;

  private:
    ProjectRecords records_;
};

}  // namespace lintara::cli

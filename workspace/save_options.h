// How files are saved.
#pragma once

#include "workspace/content_mark.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace lintara::workspace {

// A file that is no project's.
struct AddedFile {
    std::string name;
    std::string bytes;
};

// A file with a new content, while what it held is still there.
struct ReplacedFile {
    std::filesystem::path path;  // as the workspace names it
    std::filesystem::path old;   // the file that holds what it held
    ContentMark before;
    ContentMark after;
};

struct SaveOptions {
    // Not empty: the original of every changed file is kept beside it under its name and this suffix.
    std::string backupSuffix;
    // Folders in which files may be written though they lie outside of the folder that was opened.
    std::vector<std::filesystem::path> allowedOutside;
    // What a copy holds on top, in its own folder. None of them may take the place of a project's file. An
    // older one goes ahead of the first change to the copy, and the new one comes last: beside a copy that
    // was left half done there is none.
    std::vector<AddedFile> added;
    // Called now and then from the saving thread with the files written so far and all of them.
    std::function<void(std::size_t done, std::size_t total)> progress;
    // Called once by a save in place that cannot fail any more, ahead of the removal of the old contents.
    std::function<void(const std::vector<ReplacedFile>& files)> replaced;
    // Called before each step that changes the disk, from any thread: for tests that interrupt a save.
    std::function<void()> beforeStep;
};

}  // namespace lintara::workspace

// How files are saved.
#pragma once

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
    // Called before each step that changes the disk, from any thread: for tests that interrupt a save.
    std::function<void()> beforeStep;
};

}  // namespace lintara::workspace

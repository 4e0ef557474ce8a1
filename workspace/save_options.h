// How files are saved.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace lintara::workspace {

struct SaveOptions {
    // Not empty: the original of every changed file is kept beside it under its name and this suffix.
    std::string backupSuffix;
    // Called now and then from the saving thread with the files written so far and all of them.
    std::function<void(std::size_t done, std::size_t total)> progress;
    // Called before each step that changes the disk, from any thread: for tests that interrupt a save.
    std::function<void()> beforeStep;
};

}  // namespace lintara::workspace

// What is kept of an edit that went wrong, so that those who mend this program can repeat it: a folder of its
// own below the user's state folder, for nobody else to read.
#pragma once

#include <cstddef>
#include <expected>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct FaultyFile {
    std::string name;                 // of the file, without its folder
    std::string_view before;          // its bytes
    std::string after;                // those that would have been written
    std::vector<std::string> faults;  // what does not hold, a sentence each
};

struct FaultReport {
    std::string_view command;              // "custom insert"
    std::vector<std::string> commandLine;  // its words
    std::vector<FaultyFile> files;
};

inline constexpr std::size_t mostFaults = 20;  // older ones are removed

// Makes a new folder with all of that in it below the folder "faults" in `stateFolder`; the value is its
// path. On an error, a sentence for people, nothing is left of it.
[[nodiscard]] std::expected<std::filesystem::path, std::string> KeepFault(
    const std::filesystem::path& stateFolder, const FaultReport& report);

}  // namespace lintara::cli

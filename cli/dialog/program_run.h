// Another program run to its end, with texts for its standard streams.
#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>

namespace lintara::cli {

struct ProgramEnd {
    int status = 0;  // what it ended with; when a signal ended it, 0
    int signal = 0;  // that signal; 0 when it ended by itself
    std::string out;
    std::string err;
};

// Waits for the end of the program, however long that takes. When this process ends before, the program's
// standard output is a pipe that nobody reads. The error is a sentence: why it was not started, or that it
// wrote more than anybody wants to read.
[[nodiscard]] std::expected<ProgramEnd, std::string> RunProgram(const std::filesystem::path& program,
                                                                std::string_view input);

}  // namespace lintara::cli

// Writes completions and the manual page into a folder, as they are installed. Run by the build.
#include "cli/reference/reference.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

bool Write(const std::filesystem::path& path, const std::string& text) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (file.fail()) {
        std::cerr << path.string() << ": cannot be written\n";
    }
    return !file.fail();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return EXIT_FAILURE;
    }
    namespace reference = lintara::cli::reference;
    const std::filesystem::path folder = argv[1];
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    const reference::Program program = reference::ThisProgram();
    const bool written = Write(folder / "lintara", reference::BashCompletion(program)) &&
                         Write(folder / "_lintara", reference::ZshCompletion(program)) &&
                         Write(folder / "lintara.fish", reference::FishCompletion(program)) &&
                         Write(folder / "lintara.1", reference::ManualPage(program));
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}

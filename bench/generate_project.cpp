// generate_project FOLDER [FILES [LINES [SEED]]]: writes a generated project and prints its project file's
// path.

#include "tests/support/project_generator.h"

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

namespace {

bool ReadNumber(std::string_view text, std::uint64_t& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

constexpr const char* usage =
    "usage: generate_project FOLDER [FILES [LINES [SEED]]]\n"
    "Writes a generated project into the folder and prints the path of its project file. Usual are 600 "
    "files\n"
    "and 450000 lines; at least 60 lines for each file are needed.\n";

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    if (!arguments.empty() && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::fputs(usage, stdout);
        return 0;
    }
    std::vector<std::uint64_t> numbers{600, 450'000, 1};
    bool understood =
        !arguments.empty() && !arguments[0].starts_with('-') && arguments.size() <= 1 + numbers.size();
    for (std::size_t i = 1; understood && i < arguments.size(); ++i) {
        understood = ReadNumber(arguments[i], numbers[i - 1]);
    }
    if (!understood || numbers[0] == 0 || numbers[1] < 60 * numbers[0]) {
        std::fputs(usage, stderr);
        return 2;
    }
    try {
        const auto project =
            lintara::support::GenerateProject({.files = numbers[0], .lines = numbers[1], .seed = numbers[2]});
        std::puts(lintara::support::WriteProject(project, arguments[0]).c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "generate_project: %s\n", error.what());
        return 3;
    }
    return 0;
}

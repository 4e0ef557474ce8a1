// Any bytes as the file of options that comes with a project: they are options of the commands with values of
// their kinds, or a complaint that names the file.
#include "cli/commands/commands.h"
#include "cli/options/project_file.h"
#include "cli/options/usage_error.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "tests/support/temporary_folder.h"

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>

namespace lintara::fuzz {
namespace {

void CheckFile(const std::filesystem::path& path) {
    try {
        const cli::ProjectFile file = cli::ReadProjectFile(path, cli::Commands());
        for (const cli::CommandInfo& command : cli::Commands()) {
            (void)file.For(command);
        }
        for (const auto& [name, options] : file.ofCommands) {
            Require(
                std::ranges::find(cli::Commands(), name, &cli::CommandInfo::name) != cli::Commands().end(),
                "options belong to a command", name);
        }
    } catch (const cli::UsageError& error) {
        Require(std::string_view(error.what()).starts_with(path.string()), "a complaint names the file",
                error.what());
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace lintara;
    static const support::TemporaryFolder folder;
    fuzz::Input input(data, size);
    fuzz::CheckFile(folder.Write(".lintara.toml", input.Rest()));
    return 0;
}

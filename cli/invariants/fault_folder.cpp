#include "cli/invariants/fault_folder.h"

#include "base/uninterrupted.h"
#include "cli/dialog/shell_words.h"
#include "workspace/read_file.h"
#include "workspace/write_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <functional>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <utility>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

using Kept = std::expected<void, std::string>;

constexpr std::string_view ReadMe =
    "This folder holds source code of yours, as it was and as lintara would have left it by mistake: look at "
    "report.txt first.\n"
    "It is for the maintainers of Tarnwick Lintara, who can mend the fault with it; give it to them in "
    "private, "
    "and to nobody else.\n";

Kept MakeFolder(const fs::path& folder) {
    if (Uninterrupted([&] { return ::mkdir(folder.c_str(), 0700); }) != 0 && errno != EEXIST) {
        return std::unexpected("no folder can be made: " + workspace::SystemMessage(errno));
    }
    return {};
}

Kept WriteNew(const fs::path& path, std::string_view bytes) {
    const auto file = workspace::CreateNew(path);
    if (!file) {
        return std::unexpected(workspace::NotCreatedMessage(file.error()));
    }
    return workspace::WriteAll(file->get(), bytes);
}

std::string Describe(const FaultReport& report) {
    std::string text = "version: " LINTARA_VERSION "\n";
    text += "command: " + std::string(report.command) + "\n";
    text += "command line: lintara " + ShellLine(report.commandLine) + "\n";
    for (std::size_t i = 0; i < report.files.size(); ++i) {
        text += "\nfile " + std::to_string(i + 1) + ": " + report.files[i].name + "\n";
        for (const std::string& fault : report.files[i].faults) {
            text += "  " + fault + "\n";
        }
    }
    return text;
}

// Removes the oldest faults, so that with a new one there are no more than are kept. What cannot be removed
// is left.
void MakeRoom(const fs::path& faults) {
    std::error_code error;
    std::vector<std::pair<fs::file_time_type, fs::path>> kept;
    for (fs::directory_iterator entry(faults, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        if (entry->path().filename().native().starts_with("fault-") &&
            fs::is_directory(entry->symlink_status(ignored))) {
            kept.emplace_back(entry->last_write_time(ignored), entry->path());
        }
    }
    std::ranges::sort(kept, std::greater());
    for (std::size_t i = mostFaults - 1; i < kept.size(); ++i) {
        fs::remove_all(kept[i].second, error);
    }
}

Kept WriteAll(const fs::path& folder, const FaultReport& report) {
    Kept kept = WriteNew(folder / "README.txt", ReadMe);
    if (kept) {
        kept = WriteNew(folder / "report.txt", Describe(report));
    }
    for (const char* const state : {"before", "after"}) {
        if (kept) {
            kept = MakeFolder(folder / state);
        }
    }
    for (std::size_t i = 0; kept && i < report.files.size(); ++i) {
        const FaultyFile& file = report.files[i];
        // Files of several folders may have one name.
        const std::string name = std::to_string(i + 1) + "-" + file.name;
        kept = WriteNew(folder / "before" / name, file.before);
        if (kept) {
            kept = WriteNew(folder / "after" / name, file.after);
        }
    }
    return kept;
}

}  // namespace

std::expected<fs::path, std::string> KeepFault(const fs::path& stateFolder, const FaultReport& report) {
    if (stateFolder.empty()) {
        return std::unexpected("the user has no folder for such things");
    }
    std::error_code error;
    fs::create_directories(stateFolder, error);
    const fs::path faults = stateFolder / "faults";
    if (const Kept made = error ? Kept() : MakeFolder(faults); error || !made) {
        return std::unexpected(error ? "no folder can be made: " + workspace::SystemMessage(error.value())
                                     : made.error());
    }
    MakeRoom(faults);
    std::string folder = faults / "fault-XXXXXX";
    if (::mkdtemp(folder.data()) == nullptr) {
        return std::unexpected("no folder can be made: " + workspace::SystemMessage(errno));
    }
    if (const Kept kept = WriteAll(folder, report); !kept) {
        fs::remove_all(folder, error);
        return std::unexpected(kept.error());
    }
    return folder;
}

}  // namespace lintara::cli

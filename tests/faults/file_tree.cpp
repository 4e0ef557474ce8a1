#include "tests/faults/file_tree.h"

#include "tests/support/temporary_folder.h"

#include <fstream>

namespace lintara::faults {

namespace fs = std::filesystem;

FileTree ReadTree(const fs::path& folder) {
    FileTree tree;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_directory()) {
            tree[entry.path().lexically_relative(folder).string()] = {
                static_cast<unsigned>(entry.symlink_status().permissions()),
                support::ReadBytes(entry.path())};
        }
    }
    return tree;
}

void RestoreTree(const fs::path& folder, const FileTree& tree) {
    const FileTree present = ReadTree(folder);
    for (const auto& [name, state] : present) {
        if (!tree.contains(name)) {
            fs::remove(folder / name);
        }
    }
    for (const auto& [name, state] : tree) {
        if (const auto found = present.find(name); found != present.end() && found->second == state) {
            continue;
        }
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name, std::ios::binary | std::ios::trunc) << state.bytes;
        fs::permissions(folder / name, static_cast<fs::perms>(state.mode));
    }
}

std::string Differences(const FileTree& expected, const FileTree& actual) {
    std::string text;
    for (const auto& [name, state] : expected) {
        const auto found = actual.find(name);
        if (found == actual.end()) {
            text += name + " is missing\n";
        } else if (found->second.bytes != state.bytes) {
            text += name + " has another content\n";
        } else if (found->second.mode != state.mode) {
            text += name + " has another mode\n";
        }
    }
    for (const auto& [name, state] : actual) {
        text += expected.contains(name) ? "" : name + " is there\n";
    }
    return text;
}

std::string Leftovers(const FileTree& tree) {
    std::string text;
    for (const auto& [name, state] : tree) {
        if (name.contains(".lintara-") || name.ends_with(".tmp")) {
            text += name + "\n";
        }
    }
    return text;
}

}  // namespace lintara::faults

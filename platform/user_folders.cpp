#ifndef _WIN32

#include "platform/user_folders.h"

#include "platform/settings_text.h"

#include <array>
#include <cstdlib>
#include <pwd.h>
#include <string>
#include <string_view>
#include <unistd.h>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

// An absolute path from the environment, else empty: a relative one would mean another folder in every place
// where the program is started.
fs::path FolderFromEnvironment(const char* name) {
    const char* value = std::getenv(name);
    const fs::path folder = value == nullptr ? "" : value;
    return folder.is_absolute() ? folder : fs::path();
}

fs::path HomeOfAccount() {
    passwd entry{};
    passwd* found = nullptr;
    std::array<char, 16384> buffer{};
    if (::getpwuid_r(::geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return {};
    }
    const fs::path home = found->pw_dir;
    return home.is_absolute() ? home : fs::path();
}

// The folder that `variable` names, else the one `below` the home folder.
fs::path UserFolder(const char* variable, const char* below) {
    if (fs::path folder = FolderFromEnvironment(variable); !folder.empty()) {
        return folder;
    }
    fs::path home = FolderFromEnvironment("HOME");
    if (home.empty()) {
        home = HomeOfAccount();
    }
    return home.empty() ? home : home / below;
}

bool IsHarmless(char c) {
    constexpr std::string_view harmful = "/\\:*?\"<>|%";
    return static_cast<unsigned char>(c) >= 0x20 && c != 0x7F && !harmful.contains(c);
}

}  // namespace

fs::path UserConfigFolder() {
    return UserFolder("XDG_CONFIG_HOME", ".config");
}

fs::path UserStateFolder() {
    return UserFolder("XDG_STATE_HOME", ".local/state");
}

std::string ApplicationFolderName(TextView application) {
    const std::string name = ToSettingsText(application);
    std::string folder;
    for (const char c : name) {
        const bool isFirstDot = c == '.' && folder.empty();
        if (IsHarmless(c) && !isFirstDot) {
            folder += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            folder += {'%', "0123456789ABCDEF"[byte >> 4], "0123456789ABCDEF"[byte & 0xF]};
        }
    }
    return folder.empty() ? "%" : folder;
}

}  // namespace lintara::platform

#endif

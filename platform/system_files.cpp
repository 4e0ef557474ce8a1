#ifdef _WIN32

#include "platform/system_files.h"

#include "platform/wide_text.h"

#include <string>
#include <windows.h>

namespace lintara::platform {

namespace {

HMODULE ModuleOfThisCode() {
    static constexpr char somewhere = 0;
    HMODULE module = nullptr;
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&somewhere), &module);
    return module;
}

}  // namespace

Text LibraryFile() {
    constexpr std::size_t longestPath = 32768;
    std::wstring path(MAX_PATH, L'\0');
    while (path.size() <= longestPath) {
        const DWORD length =
            ::GetModuleFileNameW(ModuleOfThisCode(), path.data(), static_cast<DWORD>(path.size()));
        // A path that does not fit is cut, and fills the whole of the room.
        if (length < path.size()) {
            path.resize(length);
            return FromWide(path);
        }
        path.resize(path.size() * 2);
    }
    return {};
}

Text LibraryFolder() {
    const Text file = LibraryFile();
    const std::size_t separator = file.rfind(u'\\');
    return separator == Text::npos ? Text() : file.substr(0, separator);
}

bool FileExists(TextView path) {
    if (path.contains(u'\0')) {
        return false;
    }
    const DWORD attributes = ::GetFileAttributesW(ToWide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

}  // namespace lintara::platform

#endif

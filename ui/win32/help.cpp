#include "ui/win32/help.h"

#include "platform/wide_text.h"
#include "ui/win32/system_function.h"

#include <array>
#include <string>

namespace lintara::ui::win32 {
namespace {

bool IsThere(const std::wstring& file) {
    const DWORD attributes = ::GetFileAttributesW(file.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool EndsWith(const std::wstring& file, const wchar_t* extension) {
    const std::size_t dot = file.rfind(L'.');
    return dot != std::wstring::npos && ::lstrcmpiW(file.c_str() + dot, extension) == 0;
}

std::wstring InSystemFolder(const wchar_t* name) {
    std::array<wchar_t, MAX_PATH> folder{};
    ::GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return std::wstring(folder.data()) + L"\\" + name;
}

// The library that shows these files is never unloaded: its windows run code of it.
bool OpenPresentKind(const std::wstring& file, std::int32_t context) {
    using HtmlHelp = HWND(WINAPI*)(HWND, const wchar_t*, UINT, DWORD_PTR);
    constexpr UINT showContext = 0x000F;
    if (::LoadLibraryW(InSystemFolder(L"hhctrl.ocx").c_str()) == nullptr) {
        return false;
    }
    const auto show = FindSystemFunction<HtmlHelp>(L"hhctrl.ocx", "HtmlHelpW");
    return show != nullptr &&
           show(nullptr, file.c_str(), showContext, static_cast<DWORD_PTR>(context)) != nullptr;
}

}  // namespace

bool OpenHelp(TextView file, std::int32_t context) {
    const std::wstring path = platform::ToWide(file);
    if (!IsThere(path)) {
        return false;
    }
    if (EndsWith(path, L".chm")) {
        return OpenPresentKind(path, context);
    }
    return ::WinHelpW(nullptr, path.c_str(), HELP_CONTEXT, static_cast<ULONG_PTR>(context)) != FALSE;
}

}  // namespace lintara::ui::win32

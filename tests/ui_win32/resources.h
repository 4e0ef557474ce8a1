// What of the system's resources this process holds.
#pragma once

#include "tests/ui_win32/each_window.h"
#include "ui/win32/windows_headers.h"

#include <cstddef>
#include <cstdint>

namespace lintara::ui::win32 {

// The entries of the table of drawing objects that the system keeps beside each process. For systems that do
// not count them when they are asked.
inline int EntriesOfGdiTable() {
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type;
        std::uint8_t flags;
        std::uint64_t user;
    };
    constexpr std::size_t entries = 0x4000;
#ifdef _WIN64
    constexpr std::size_t placeOfTable = 0xF8;
    const auto* process = reinterpret_cast<const std::byte*>(__readgsqword(0x60));
#else
    constexpr std::size_t placeOfTable = 0x94;
    const auto* process = reinterpret_cast<const std::byte*>(__readfsdword(0x30));
#endif
    const auto* table = *reinterpret_cast<const Entry* const*>(process + placeOfTable);
    int count = 0;
    for (std::size_t i = 0; table != nullptr && i < entries; ++i) {
        count += table[i].type != 0 ? 1 : 0;
    }
    return count;
}

// Fonts, brushes, pens, device contexts ...
inline int GdiObjects() {
    const DWORD counted = ::GetGuiResources(::GetCurrentProcess(), GR_GDIOBJECTS);
    return counted != 0 ? static_cast<int>(counted) : EntriesOfGdiTable();
}

// The windows of this thread, those inside others too.
inline int Windows() {
    int count = 0;
    EachWindow([&count](HWND window) {
        ++count;
        EachWindowIn(window, [&count](HWND) { ++count; });
    });
    return count;
}

}  // namespace lintara::ui::win32

// Functions that not every version of the system has.
#pragma once

#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

// The function of that name and type in a library of the system that is loaded already; null when there is
// none.
template <class Function>
[[nodiscard]] Function FindSystemFunction(const wchar_t* library, const char* name) {
    const HMODULE module = ::GetModuleHandleW(library);
    if (module == nullptr) {
        return nullptr;
    }
    // By way of a pointer to a function without a type, as the system's interface has it.
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(::GetProcAddress(module, name)));
}

}  // namespace lintara::ui::win32

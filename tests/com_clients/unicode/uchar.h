// The character classes that the workspace asks for, from Windows: its tests run there without the library
// that the command is built with.
#pragma once

#include <windows.h>

namespace lintara::support {

inline constexpr unsigned LetterMask = 1;
inline constexpr unsigned DigitMask = 2;

[[nodiscard]] inline unsigned ClassOf(char16_t c) {
    const auto wide = static_cast<wchar_t>(c);
    WORD classes = 0;
    if (GetStringTypeW(CT_CTYPE1, &wide, 1, &classes) == 0) {
        return 0;
    }
    return ((classes & C1_ALPHA) != 0 ? LetterMask : 0U) | ((classes & C1_DIGIT) != 0 ? DigitMask : 0U);
}

[[nodiscard]] inline char16_t FoldOf(char16_t c) {
    const auto wide = static_cast<wchar_t>(c);
    wchar_t lower = wide;
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &wide, 1, &lower, 1, nullptr, nullptr, 0);
    return static_cast<char16_t>(lower);
}

}  // namespace lintara::support

#define U_GC_L_MASK lintara::support::LetterMask
#define U_GC_ND_MASK lintara::support::DigitMask
#define U_GET_GC_MASK(c) lintara::support::ClassOf(c)
#define U_FOLD_CASE_DEFAULT 0
#define u_foldCase(c, options) lintara::support::FoldOf(c)

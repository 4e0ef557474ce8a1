// Character classes of the language, one UTF-16 code unit at a time: half of a surrogate pair is neither a
// letter nor a digit.
#pragma once

#include "base/text.h"

#include <array>
#include <cstddef>

namespace lintara::workspace {

namespace detail {
[[nodiscard]] bool IsLetterBeyondAscii(char16_t c);
[[nodiscard]] bool IsDigitBeyondAscii(char16_t c);
[[nodiscard]] char16_t FoldBeyondAscii(char16_t c);
}  // namespace detail

namespace detail {

// For every ASCII character that words consist of its fold, and 0 for the others.
inline constexpr auto asciiWordFolds = [] {
    std::array<char16_t, 128> folds{};
    for (char16_t c = u'a'; c <= u'z'; ++c) {
        folds[c] = c;
        folds[c - u'a' + u'A'] = c;
    }
    for (char16_t c = u'0'; c <= u'9'; ++c) {
        folds[c] = c;
    }
    folds[u'_'] = u'_';
    return folds;
}();

}  // namespace detail

// A space or a tab.
[[nodiscard]] constexpr bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}

// Of the Unicode categories L.
[[nodiscard]] inline bool IsLetter(char16_t c) {
    return c < 0x80 ? static_cast<unsigned>((c | 0x20) - u'a') < 26U : detail::IsLetterBeyondAscii(c);
}

// Of the Unicode category Nd.
[[nodiscard]] inline bool IsDigit(char16_t c) {
    return c < 0x80 ? static_cast<unsigned>(c - u'0') < 10U : detail::IsDigitBeyondAscii(c);
}

// A word is a run of these.
[[nodiscard]] inline bool IsWordCharacter(char16_t c) {
    return c < 0x80 ? detail::asciiWordFolds[c] != 0 : IsLetter(c) || IsDigit(c);
}

// Simple case folding: two characters are the same without regard to case when their folds are.
[[nodiscard]] inline char16_t Fold(char16_t c) {
    if (c < 0x80) {
        return static_cast<unsigned>(c - u'A') < 26U ? static_cast<char16_t>(c | 0x20) : c;
    }
    return detail::FoldBeyondAscii(c);
}

// Where `sought` first occurs in `text` without regard to case, at `from` or behind it; npos when it does
// not. An empty text stands everywhere.
[[nodiscard]] std::size_t FindWithoutCase(TextView text, TextView sought, std::size_t from = 0);

// Names are looked up under their folds.
[[nodiscard]] Text FoldCase(TextView name);
[[nodiscard]] bool SameName(TextView a, TextView b);
// A hash of a name that is the same for all names that SameName holds to be one.
[[nodiscard]] std::size_t HashName(TextView name);

}  // namespace lintara::workspace

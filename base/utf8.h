// UTF-8, the form that texts have outside: paths, terminals, JSON, settings. Whoever must not lose a byte or
// a code unit that is no text builds a rule of its own from the pieces below.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace lintara {

// Invalid bytes become U+FFFD, one each.
[[nodiscard]] Text FromUtf8(std::string_view bytes);
// Unpaired surrogates become U+FFFD.
[[nodiscard]] std::string ToUtf8(TextView text);

// The length of the UTF-8 sequence that `bytes` begin with, 1 to 4; 0 when they begin with none. Forms that
// are longer than need be, surrogates and what lies past U+10FFFF are none.
[[nodiscard]] std::size_t Utf8SequenceLength(std::string_view bytes);

// Writes the character of a valid sequence of that length to `out`; the result is its code units, 1 or 2.
std::size_t DecodeUtf8Sequence(const char* bytes, std::size_t length, char16_t* out);

// Appends the sequence of `character`, which is no surrogate.
void AppendUtf8(char32_t character, std::string& bytes);

// The character at `at`, whose code units are skipped; an unpaired surrogate is a character of its own.
[[nodiscard]] char32_t TakeCharacter(TextView text, std::size_t& at);

[[nodiscard]] constexpr bool IsSurrogate(char32_t character) {
    return character >= 0xD800 && character <= 0xDFFF;
}

}  // namespace lintara

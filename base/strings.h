// The BASIC runtime's string functions. Positions count from 1, in UTF-16 code units; a blank is U+0020 and
// nothing else. An argument that the runtime would refuse is a failed Result.
//
// The transformers call these for every line of a project, so whatever is a part of its argument is returned
// as a view of it: it is valid as long as the argument's characters are.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <cstdint>

namespace lintara {

// How two texts are compared. Textual pays no regard to the case of the letters A to Z: the words that are
// sought that way are keywords, so other scripts do not matter here.
enum class Compare { Binary, Textual };

[[nodiscard]] std::int32_t Len(TextView text);

// The first or last `length` characters, the whole text when it is shorter. A negative length fails.
[[nodiscard]] Result<TextView> Left(TextView text, std::int32_t length);
[[nodiscard]] Result<TextView> Right(TextView text, std::int32_t length);

// The characters from `start` on, at most `length` of them; "" when `start` lies behind the text. A start
// below 1 or a negative length fails.
[[nodiscard]] Result<TextView> Mid(TextView text, std::int32_t start);
[[nodiscard]] Result<TextView> Mid(TextView text, std::int32_t start, std::int32_t length);

// Where `sought` first occurs in `text` at or after `start`; 0 when it does not. An empty `sought` is found
// at `start`, except behind the end of the text. A start below 1 fails.
[[nodiscard]] Result<std::int32_t> InStr(std::int32_t start, TextView text, TextView sought,
                                         Compare compare = Compare::Binary);
// The same from position 1, which cannot fail.
[[nodiscard]] std::int32_t InStr(TextView text, TextView sought, Compare compare = Compare::Binary);

// The text without its leading blanks, its trailing blanks, or both.
[[nodiscard]] TextView LTrim(TextView text);
[[nodiscard]] TextView RTrim(TextView text);
[[nodiscard]] TextView Trim(TextView text);

// `count` blanks. A negative count fails.
[[nodiscard]] Result<Text> Space(std::int32_t count);

}  // namespace lintara

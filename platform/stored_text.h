// How a text of UTF-16 is held in a field of an SQLite database, and back.
//
// A text that UTF-8 can spell, without a NUL, is of the type TEXT: other programs show it as it is, line
// breaks of all kinds included. Any other, with a NUL or an unpaired surrogate, is of the type BLOB: its code
// units, the byte of lower value first. Every text comes back exactly.
#pragma once

#include "base/text.h"

#include <optional>
#include <string>
#include <string_view>

namespace lintara::platform {

struct StoredText {
    std::string bytes;
    bool isBlob = false;
};

[[nodiscard]] StoredText ToStoredText(TextView text);

// The text in the bytes of a BLOB; none when they are no whole code units.
[[nodiscard]] std::optional<Text> FromBlob(std::string_view bytes);

}  // namespace lintara::platform

// Captions: the character behind "&" is the access key, which is shown underlined; "&&" is an ampersand.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>

namespace lintara::forms {

struct Caption {
    Text shown;  // without the marks
    // Where the access key stands in `shown`, counted from 0. The first mark counts.
    std::optional<std::size_t> accessKey;
};

// An "&" at the end of `marked` is shown as it is.
[[nodiscard]] Caption ReadCaption(TextView marked);

// Whether `key` is the access key of the caption `marked`, in any letter case.
[[nodiscard]] bool HasAccessKey(TextView marked, char16_t key);

}  // namespace lintara::forms

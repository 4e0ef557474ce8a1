// How two texts differ: the one piece that is another one.
#pragma once

#include "base/text.h"

#include <cstddef>

namespace lintara::forms {

struct TextDifference {
    std::size_t at = 0;
    std::size_t removed = 0;
    TextView inserted;  // a part of the later text

    [[nodiscard]] bool IsNone() const { return removed == 0 && inserted.empty(); }
};

// How `after` comes of `before`. Neither line breaks of two code units nor halves of a surrogate pair are
// torn apart.
[[nodiscard]] TextDifference DifferenceOf(TextView before, TextView after);

}  // namespace lintara::forms

// The line breaks inside one text.
#pragma once

#include "base/text.h"

#include <cstdint>

namespace lintara::transform {

struct LineBreaks {
    std::int32_t count = 0;
    std::int32_t last = 0;  // the position of the last one, from 1; 0 when there is none
};

[[nodiscard]] LineBreaks LineBreaksIn(TextView text);

}  // namespace lintara::transform

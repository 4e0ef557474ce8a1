// Where the shown lines of a file stand among all of its lines.
#pragma once

#include "base/position.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace lintara::workspace {

struct ShownLines {
    std::int64_t headLines = 0;              // ahead of the first shown one
    std::vector<std::int32_t> hiddenBehind;  // for each hidden line, the shown one above it

    // The physical line of the file, from 1, of a shown one.
    [[nodiscard]] std::int64_t FileLine(Line line) const {
        const auto hidden = std::ranges::lower_bound(hiddenBehind, line.value()) - hiddenBehind.begin();
        return headLines + line.value() + hidden;
    }
};

}  // namespace lintara::workspace

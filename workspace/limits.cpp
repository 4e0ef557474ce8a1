#include "workspace/limits.h"

#include <algorithm>
#include <utility>

namespace lintara::workspace {

bool HasTooManyLines(std::string_view bytes) {
    return bytes.size() > mostLines &&
           std::cmp_greater(std::max(std::ranges::count(bytes, '\n'), std::ranges::count(bytes, '\r')),
                            mostLines);
}

}  // namespace lintara::workspace

// The words for kinds of components and members in lists and reports.
#pragma once

#include "hostmodel/member_kind.h"

#include <string_view>

namespace lintara::cli {

// "module", "class", "form" ...
[[nodiscard]] std::string_view KindWord(hostmodel::ComponentType type);

}  // namespace lintara::cli

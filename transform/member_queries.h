// What the host and the templates ask about the member under the caret, and about a member by its name. The
// kind of a member is one of the words "Sub", "Function", "Property" and "?"; templates insert it as it
// stands. Nothing here changes code. A failing host call leaves its part of the answer empty.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"

#include <cstdint>

namespace lintara::transform {

// The line where the selection of the active code window ends; 0 when no code window is active.
[[nodiscard]] std::int32_t GetLineNumber(hostmodel::Globals& globals);

// The member that holds that line; "" in the declarations and without a code window.
[[nodiscard]] Text GetMemberName(hostmodel::Globals& globals);

// The kind of that member, read off the first line of its block: a comment above its header counts as that
// line, and gives "?" unless it names the member. "Property" where there is no member.
[[nodiscard]] TextView GetMemberType(hostmodel::Globals& globals);

// The kind of a member of the active project, read off its header. "" when a name is empty; "Property" for a
// name that no Sub or Function bears, and for an unknown component.
[[nodiscard]] TextView GetMemberTypeEx(hostmodel::Globals& globals, TextView componentName,
                                       TextView memberName);

}  // namespace lintara::transform

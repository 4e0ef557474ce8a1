// The dispatch interface of `DialogsLT` as data, like that of `Lintara`.
#pragma once

#include "assistant/dispatch_table.h"

#include <span>

namespace lintara::com {

// The members by their numbers, from 1.
[[nodiscard]] std::span<const assistant::DispatchMember> DialogsMembers();

}  // namespace lintara::com

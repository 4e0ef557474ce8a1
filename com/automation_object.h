// Objects of other components of the machine, made by their program identifiers.
#pragma once

#include "base/result.h"
#include "com/late_bound.h"

namespace lintara::com {

// A new object of the class that is registered under `programId`. Fails when there is none.
[[nodiscard]] Result<LateBound> CreateAutomationObject(const wchar_t* programId);

}  // namespace lintara::com

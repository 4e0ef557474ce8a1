// Whose machine this is.
#pragma once

#include "base/result.h"
#include "base/text.h"

namespace lintara {

class Identity {
  public:
    virtual ~Identity() = default;

    // Fail when the name cannot be found out.
    [[nodiscard]] virtual Result<Text> ComputerName() = 0;
    [[nodiscard]] virtual Result<Text> UserName() = 0;
};

}  // namespace lintara

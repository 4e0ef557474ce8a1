// The names of this machine and of the user whose rights the program has.
#pragma once

#include "base/identity.h"

namespace lintara::platform {

class MachineIdentity final : public Identity {
  public:
    [[nodiscard]] Result<Text> ComputerName() override;
    [[nodiscard]] Result<Text> UserName() override;
};

}  // namespace lintara::platform

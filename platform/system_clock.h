// The machine's clock, in the user's time zone.
#pragma once

#include "base/clock.h"

namespace lintara::platform {

class SystemClock final : public Clock {
  public:
    // Fails when the system cannot tell the time.
    [[nodiscard]] Result<LocalTime> Now() override;
};

}  // namespace lintara::platform

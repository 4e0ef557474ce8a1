// The screen's mouse pointer.
#pragma once

#include "base/result.h"

#include <cstdint>

namespace lintara::hostmodel {

enum class MousePointer : std::int16_t { Default = 0, Hourglass = 11 };

class Screen {
  public:
    virtual ~Screen() = default;

    [[nodiscard]] virtual Result<void> SetMousePointer(MousePointer pointer) = 0;
};

}  // namespace lintara::hostmodel

// A code window of the IDE.
#pragma once

#include "base/position.h"
#include "base/result.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

class CodeModule;

// From its first character to just after its last one; empty (the caret alone) when both are the same.
struct Selection {
    Position start;
    Position end;

    friend bool operator==(const Selection&, const Selection&) = default;
};

class CodePane {
  public:
    virtual ~CodePane() = default;

    // The source shown in the window.
    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() = 0;
    [[nodiscard]] virtual Result<Selection> GetSelection() = 0;
    // The first visible line.
    [[nodiscard]] virtual Result<Line> TopLine() = 0;
    [[nodiscard]] virtual Result<std::int32_t> CountOfVisibleLines() = 0;
};

}  // namespace lintara::hostmodel

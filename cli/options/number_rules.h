// What numbers can be inserted and removed again.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace lintara::cli {

// What is wrong with a base or a step, as a sentence; none when nothing is.
[[nodiscard]] std::optional<std::string> BaseProblem(std::int32_t base);
[[nodiscard]] std::optional<std::string> StepProblem(std::int32_t step);

}  // namespace lintara::cli

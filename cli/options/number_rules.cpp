#include "cli/options/number_rules.h"

namespace lintara::cli {
namespace {

constexpr std::int32_t SmallestBase = 10000;
constexpr std::int32_t LargestBase = 99999;

}  // namespace

std::optional<std::string> BaseProblem(std::int32_t base) {
    if (base < SmallestBase || base > LargestBase) {
        return "numbers must have five digits, or they cannot be removed again; "
               "give a base from 10000 to 99999";
    }
    return std::nullopt;
}

std::optional<std::string> StepProblem(std::int32_t step) {
    if (step == 0) {
        return "a step of 0 gives every line the same number";
    }
    return step < 1 ? std::optional<std::string>("the step must be 1 or more") : std::nullopt;
}

}  // namespace lintara::cli

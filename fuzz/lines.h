// The lines of a module as plain values.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "tests/support/reference_module.h"
#include "workspace/module.h"

#include <vector>

namespace lintara::fuzz {

[[nodiscard]] inline std::vector<Text> LinesOf(const workspace::Module& module) {
    std::vector<Text> lines;
    for (Line line{1}; line <= Line{module.CountOfLines()}; ++line) {
        module.ReadLine(line, lines.emplace_back());
    }
    return lines;
}

[[nodiscard]] inline support::ReferenceModule ReferenceOf(const workspace::Module& module) {
    support::ReferenceModule reference;
    reference.lines = LinesOf(module);
    return reference;
}

}  // namespace lintara::fuzz

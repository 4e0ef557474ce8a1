// Edits of a module's lines, drawn from an input and made at two places at once.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "tests/support/reference_module.h"
#include "workspace/characters.h"
#include "workspace/module.h"

#include <cstdint>
#include <utility>

namespace lintara::fuzz {

// Makes one edit, which may ask for lines that do not exist, in both; they agree whether it can be made.
inline void EditBoth(Input& input, workspace::Module& module, support::ReferenceModule& reference) {
    const auto line = input.Between<std::int32_t>(-1, reference.CountOfLines() + 2);
    switch (input.Between(0, 2)) {
        case 0: {
            const Text text = input.ShortText(60);
            Require(module.InsertLines(Line{line}, text).has_value() == reference.InsertLines(line, text),
                    "both or neither can insert");
            break;
        }
        case 1: {
            const auto count = input.Between<std::int32_t>(-1, 5);
            Require(module.DeleteLines(Line{line}, count).has_value() == reference.DeleteLines(line, count),
                    "both or neither can delete");
            break;
        }
        default: {
            const Text text = input.ShortText(60);
            Require(module.ReplaceLine(Line{line}, text).has_value() == reference.ReplaceLine(line, text),
                    "both or neither can replace");
        }
    }
}

// The reference's lines, which may differ from the module's in the letter case of keywords, become the
// module's.
inline void TakeKeywordCase(const workspace::Module& module, support::ReferenceModule& reference) {
    Require(module.CountOfLines() == reference.CountOfLines(), "both have the same number of lines");
    for (Line line{1}; line <= Line{module.CountOfLines()}; ++line) {
        Text text;
        module.ReadLine(line, text);
        Text& expected = reference.lines[static_cast<std::size_t>(line.value()) - 1];
        RequireSame(workspace::FoldCase(text), workspace::FoldCase(expected), "both have the same lines");
        expected = std::move(text);
    }
}

}  // namespace lintara::fuzz

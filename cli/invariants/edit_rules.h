// What an editing command may do to a component, as data. What it did is held against this before anything is
// written (cli/invariants/edit_check.h); a command that says nothing may change nothing.
#pragma once

#include "base/text.h"
#include "transform/custom_code.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::cli {

// Line numbers: both when procedures that have numbers are numbered anew.
struct NumberRules {
    bool in = false;
    bool out = false;
    std::int32_t base = 10000;
    std::int32_t step = 5;
    bool byModule = false;  // numbers tell lines of the module instead, and neither base nor step counts
};

// Error handlers: both when handlers are brought up to date.
struct HandlerRules {
    bool in = false;
    bool out = false;
    Text label = {};
    Text code = {};  // a template; CR LF separates its lines
};

struct CustomCodeRules {
    bool in = false;
    bool out = false;
    bool markers = true;
    transform::CodePlace place = transform::CodePlace::AfterFirstLine;
    std::int32_t line = 1;  // of the body, for CodePlace::AtLine
    Text number = {};       // as the markers write it
    Text code = {};         // a template; CR LF separates its lines
};

struct ReplaceRules {
    Text sought;
    Text replacement;  // CR LF separates its lines
    std::int32_t from = 1;
    std::optional<std::int32_t> to = std::nullopt;
    bool wholeWord = false;
};

struct EditRules {
    NumberRules numbers = {};
    HandlerRules handlers = {};
    CustomCodeRules customCode = {};
    std::optional<ReplaceRules> replace = std::nullopt;  // alone
    // The library's work without the command's care. It finds procedures by searching for texts and may so
    // edit others than those meant; only that no line gets lost can be promised then.
    bool exact = false;
};

// Procedures by their numbers in the module, in ascending order: those that may be edited.
using EditableProcedures = std::vector<std::size_t>;

}  // namespace lintara::cli

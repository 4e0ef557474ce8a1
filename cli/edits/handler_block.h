// The block of an error handler inside a procedure: where it is, and whether it is what the label and the
// template in force give.
#pragma once

#include "cli/edits/edit_target.h"
#include "cli/project/procedure_text.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lintara::cli {

// What handlers are to be.
struct WantedHandler {
    Text label;
    Text code;  // a template; CR LF separates its lines
};

// Whether the template asks the machine who inserts it, and when.
[[nodiscard]] bool HoldsOpenPlaceholder(TextView code);

struct HandlerBlock {
    std::size_t begin = 0;  // the index of the marker's line; the block reaches to the body's end
    bool alone = true;      // only a line number stands in front of the marker, and no line continues into it
    Text label = {};        // that of the third line; "" when there is none
};

// The block in the lines of a body, as the library finds it: by its first marker.
[[nodiscard]] std::optional<HandlerBlock> FindHandlerBlock(std::span<const Text> body);

// The lines of the block that insertion would write into the group's procedures. The placeholders that say
// who inserted a handler, and when, stay open in them: they are no reason to write it anew.
[[nodiscard]] std::vector<Text> WantedBlock(const EditTarget& target, const ProcedureGroup& group,
                                            const WantedHandler& wanted);

// The index of the first of `block`, lines from a marker on, that is not what `wanted`, a wanted block, has
// there; the size of `block` when it ends too early. None when they are the same: line numbers, the width
// that numbering shifts other lines by, the letter case of code and blank lines at the end do not count.
[[nodiscard]] std::optional<std::size_t> FindHandlerChange(std::span<const Text> block,
                                                           std::span<const Text> wanted);

enum class HandlerState { None, UpToDate, OutOfDate };

struct HandlerFinding {
    HandlerState state = HandlerState::None;
    Line at{1};       // where to look, as the module is now
    std::string why;  // of what is out of date, as the end of a sentence: "line 7 ... is not what ..."
};

// The handlers of the procedures of that name, as they stand in the module. Of a property some of whose
// procedures have one, the others are out of date.
[[nodiscard]] HandlerFinding StateOfHandler(const EditTarget& target, const ProcedureGroup& group,
                                            const WantedHandler& wanted);

}  // namespace lintara::cli

// Whether what an edit left of a component is what it was meant to leave: asked of every command that edits,
// before anything is written or shown. It looks at the bytes of both states and takes back by itself, line by
// line, what the edit was to do; nothing of the code that edits is used for that. What it finds is a fault of
// this program, never of the user's code.
//
//  - The head, the declarations, what stands between procedures, attribute lines, and all procedures that
//    were not to be edited are the same bytes.
//  - The procedures are the same, in the same order, with the same headers and closing lines.
//  - Numbers and handlers that came are taken off again, and custom code is taken out: that gives the lines
//    that were there. The numbers are those that the rule of numbering gives, and stand where it lets them;
//    handlers and custom code are what the template stands for, to the last line. What went was numbers,
//    handlers or the block of custom code, and all of it.
//  - A replacement in a text changed the lines that hold what was sought, as it should, and no others.
//
// After an edit without the command's care (EditRules::exact) less is certain: what stands above the first
// mention of a procedure that was to be edited is the same, and so is what a replacement had no business
// with; insertion lost no line, and nothing came that it does not write; removal made no line up; numbering
// kept every line but for its beginning.
#pragma once

#include "cli/invariants/edit_rules.h"
#include "cli/invariants/expected_code.h"
#include "workspace/encoding.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct Violation {
    std::int64_t line = 0;  // of the file ahead of the edit, from 1; 0: of the file as a whole
    std::string message;    // what does not hold, as a sentence without its beginning and full stop

    friend bool operator==(const Violation&, const Violation&) = default;
};

// The lines of both states with their endings, each state in one piece of memory; the first `headLines` of
// each stand ahead of the code that the IDE shows.
struct CheckedFile {
    std::span<const std::string_view> before;
    std::span<const std::string_view> after;
    std::size_t headLines;
    const workspace::Encoding& encoding;
    CodeNames names = {};
};

// At most one violation for each procedure, and one where the procedures themselves are other ones. Takes
// time in proportion to the number of lines.
[[nodiscard]] std::vector<Violation> CheckEdit(const CheckedFile& file, const EditRules& rules,
                                               const EditableProcedures& editable);

}  // namespace lintara::cli

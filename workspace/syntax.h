// The little of the language's syntax that the workspace has to know: logical lines, comments, statements,
// procedure headers and the lines that close procedures.
//
// A logical line is a physical line with the lines that continue it, joined without the underscores that
// continue them. Words are compared without regard to case.
#pragma once

#include "base/text.h"
#include "hostmodel/member_kind.h"

#include <cstddef>
#include <optional>
#include <vector>

namespace lintara::workspace {

// Whether the next physical line continues this one: it ends in blank-underscore. Comments continue too.
[[nodiscard]] bool Continues(TextView physicalLine);

// Whether `text` is `word` (given in lower case) without regard to case.
[[nodiscard]] bool IsWord(TextView text, TextView word);

// The offset of the first character at or after `from` that is no blank; the length of `text` if none.
[[nodiscard]] std::size_t SkipBlanks(TextView text, std::size_t from = 0);

// The offset just after the word that begins at `from`; `from` itself when none does.
[[nodiscard]] std::size_t SkipWord(TextView text, std::size_t from);

// The offset just after a line number ("10 ", "10:") and then a label ("last:") with the blanks around them
// at the start of a line; where the first of them is missing, the offset of the first character.
[[nodiscard]] std::size_t SkipLineNumberAndLabel(TextView line);

// Where the comment of a logical line begins, which is at an apostrophe outside quotes, or at Rem at the
// start of a statement; the length of `line` when there is none.
[[nodiscard]] std::size_t CommentStart(TextView line);

// Whether there is nothing but blanks or a comment.
[[nodiscard]] bool IsBlankOrComment(TextView line);

// The statements of a logical line: its parts between the colons outside quotes, without its comment and
// without blanks around them. A label is a part of its own; empty parts are left out.
[[nodiscard]] std::vector<TextView> SplitStatements(TextView line);

// What opens a procedure, and with which word it closes.
enum class ProcedureWord : unsigned char { Sub, Function, Property };

struct ProcedureHeader {
    TextView name;  // within the line that was parsed
    hostmodel::MemberKind kind = hostmodel::MemberKind::vbext_pk_Proc;
    ProcedureWord word = ProcedureWord::Sub;
    bool closesItself = false;  // the line holds the closing statement too
};

[[nodiscard]] std::optional<ProcedureHeader> ParseHeader(TextView logicalLine);

// Whether the line closes a procedure that `word` opened.
[[nodiscard]] bool ClosesProcedure(TextView logicalLine, ProcedureWord word);

}  // namespace lintara::workspace

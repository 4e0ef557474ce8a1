// One state of a component's file as lines of bytes, and where its procedures are. It is read from the bytes
// alone, so that it tells what the next one to open the file will find, whatever edits have done in memory.
#pragma once

#include "base/text.h"
#include "workspace/encoding.h"
#include "workspace/syntax.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace lintara::cli {

// By indexes of lines. A procedure that nothing closes ends with the file.
struct ProcedureLines {
    std::size_t header = 0;
    std::size_t body = 0;     // behind the header's last line
    std::size_t closing = 0;  // the last line of the statement that closes it; the end of its body
    std::size_t end = 0;      // behind the closing line
    workspace::ProcedureWord word = workspace::ProcedureWord::Sub;
};

class CodeLines {
  public:
    // `fileLines` are the lines of the file with their endings, in one piece of memory (cli/output); the
    // first `headLines` of them are ahead of the first line that the IDE shows. Both must outlive this.
    CodeLines(std::span<const std::string_view> fileLines, std::size_t headLines,
              const workspace::Encoding& encoding);

    [[nodiscard]] const workspace::Encoding& encoding() const { return *encoding_; }
    // Whether the code units of the encoding are bytes, and ASCII is itself in it.
    [[nodiscard]] bool hasByteUnits() const { return hasByteUnits_; }
    // What stands ahead of the code, byte order mark included.
    [[nodiscard]] std::string_view head() const { return head_; }
    // The lines of the code, those that the IDE hides among them.
    [[nodiscard]] std::size_t count() const { return lines_.size(); }
    [[nodiscard]] std::string_view line(std::size_t index) const { return lines_[index]; }
    // Lines that follow each other, as one piece.
    [[nodiscard]] std::string_view piece(std::size_t begin, std::size_t end) const;
    [[nodiscard]] std::string_view textBytes(std::size_t index) const;
    [[nodiscard]] std::string_view ending(std::size_t index) const;
    // Decodes the line into `text`.
    void Read(std::size_t index, Text& text) const { encoding_->Decode(textBytes(index), text); }
    // An attribute line, which the IDE keeps and never shows.
    [[nodiscard]] bool IsHidden(std::size_t index) const;
    // Whether the language joins the next shown line to this one.
    [[nodiscard]] bool IsContinued(std::size_t index) const;
    // The next line at or behind `index` that the IDE shows; count() when there is none.
    [[nodiscard]] std::size_t NextShown(std::size_t index) const;

    [[nodiscard]] const std::vector<ProcedureLines>& procedures() const { return procedures_; }
    // As its header writes it.
    [[nodiscard]] Text NameOf(const ProcedureLines& procedure) const;

  private:
    void FindProcedures();
    // The next line at or behind `index` that must be read to know whether it opens a procedure, or closes
    // one when `isOpen`. Nearly all lines are passed by.
    [[nodiscard]] std::size_t NextPossibleEdge(std::size_t index, bool isOpen) const;
    // The index behind the logical line that begins at `first`; its text into `logical`.
    std::size_t ReadLogical(std::size_t first, Text& logical) const;

    std::span<const std::string_view> lines_;
    std::vector<std::string_view> trimmed_;  // in their place, when a byte order mark is a line's beginning
    std::string_view head_;
    const workspace::Encoding* encoding_;
    bool hasByteUnits_;
    std::vector<ProcedureLines> procedures_;
    mutable Text hidden_;
};

}  // namespace lintara::cli

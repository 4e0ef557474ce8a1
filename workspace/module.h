// A code module: the shown lines of one component, with the answers that the IDE gives about them.
//
// The file is read once into one buffer, and a line is a view into it until the line is edited. Lines are
// numbered from 1 and do not count what the IDE hides (the file head, the attribute lines of members); hidden
// lines stay behind the shown line they follow. Everything that no edit touched is written back byte for
// byte.
//
// Calls with the names of the IDE's operations answer exactly as those do; see hostmodel/code_module.h.
#pragma once

#include "base/position.h"
#include "base/result.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/member_kind.h"
#include "workspace/content_mark.h"
#include "workspace/declarations.h"
#include "workspace/encoding.h"
#include "workspace/shown_lines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::workspace {

// A procedure as the procedure index knows it.
struct ProcedureInfo {
    std::size_t number = 0;  // how many procedures stand above it in the module
    Text name;               // as its header writes it
    hostmodel::MemberKind kind = hostmodel::MemberKind::vbext_pk_Proc;
    bool isFunction = false;  // tells Function from Sub
    Line start;               // first line of its block: what stands above the header is its own
    Line header;              // first physical line of the header
    Line bodyBegin;           // the line after the header's last physical line
    Line closing;             // the line that closes it; the last line of the module when nothing does
    bool closed = true;       // whether a closing line exists

    // The lines between header and closing line; empty for a procedure written on one line.
    [[nodiscard]] LineRange body() const {
        return {bodyBegin, closed ? std::max(closing, bodyBegin) : closing + 1};
    }
};

// A character that an edited line cannot write in its file's encoding.
struct Unencodable {
    Line line;
    Column column;
    char32_t character = 0;
};

class Module {
  public:
    // The module in `bytes`, whose shown code begins at byte `codeBegin`.
    Module(std::string bytes, std::size_t codeBegin, EncodingPtr encoding);
    // A module in memory whose shown lines are those of `text`.
    [[nodiscard]] static std::unique_ptr<Module> FromText(TextView text);
    ~Module();

    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    [[nodiscard]] std::int32_t CountOfLines() const;
    [[nodiscard]] Result<Text> Lines(Line startLine, std::int32_t count) const;
    [[nodiscard]] Result<void> InsertLines(Line line, TextView text);
    [[nodiscard]] Result<void> DeleteLines(Line startLine, std::int32_t count);
    [[nodiscard]] Result<void> ReplaceLine(Line line, TextView text);

    [[nodiscard]] std::int32_t CountOfDeclarationLines() const;
    [[nodiscard]] Result<Line> ProcStartLine(TextView name, hostmodel::MemberKind kind) const;
    [[nodiscard]] Result<Line> ProcBodyLine(TextView name, hostmodel::MemberKind kind) const;
    [[nodiscard]] Result<std::int32_t> ProcCountLines(TextView name, hostmodel::MemberKind kind) const;
    [[nodiscard]] Result<Text> ProcOfLine(Line line, hostmodel::MemberKind& kind) const;

    [[nodiscard]] bool Find(TextView target, Position& start, Position& end,
                            hostmodel::FindOptions options) const;
    // Frees what Find remembers to be quick; it is gathered anew when needed.
    void ForgetSearches() const;

    // All procedures, in order of appearance.
    [[nodiscard]] std::vector<ProcedureInfo> Procedures() const;
    [[nodiscard]] std::size_t CountOfProcedures() const;
    // The procedure of that number as it stands now; the number must be below the count.
    [[nodiscard]] ProcedureInfo Procedure(std::size_t number) const;
    // The procedure whose block holds `line`; none in the declarations and outside the module.
    [[nodiscard]] std::optional<ProcedureInfo> ProcedureAt(Line line) const;
    // The member list of the IDE: declarations, then procedures, a property once.
    [[nodiscard]] std::vector<MemberInfo> MemberList() const;
    // The member of that name, without regard to case, the first of several.
    [[nodiscard]] std::optional<MemberInfo> FindMember(TextView name) const;

    // The text of one line that exists, read into `text`.
    void ReadLine(Line line, Text& text) const;
    // All shown lines joined by "\r\n".
    [[nodiscard]] Text AllText() const;

    // Puts `line` back to `text` exactly, without the keyword case that an edit gives.
    [[nodiscard]] Result<void> RestoreLine(Line line, TextView text);

    // Whether any edit took place. An edit that restores the original counts too: see CurrentBytes.
    [[nodiscard]] bool edited() const;
    // The file's bytes when it was loaded, and as a save would write them now.
    [[nodiscard]] const std::string& originalBytes() const;
    // By what originalBytes are known again.
    [[nodiscard]] ContentMark originalMark() const;
    void AppendCurrentBytes(std::string& bytes) const;
    // A view of what AppendCurrentBytes appends, valid until the next edit; `room` holds it where need be.
    [[nodiscard]] std::string_view CurrentBytes(std::string& room) const;
    // How many bytes a save would write, but for a line ending here and there. Cheap.
    [[nodiscard]] std::size_t CountBytes() const;
    // To be called when the edits are done: frees all but both of these, which is most of the memory. Lines
    // are those of the bytes that a save would write from then on, and read anew when they are asked for;
    // where they were before any edit is forgotten. A module with a line that a save could not write is left
    // alone.
    void KeepBytesOnly();
    // To be called behind KeepBytesOnly: frees what was loaded, too, if a save would write something else.
    // Neither originalBytes nor AsLoaded may be asked for any more.
    void ForgetOriginal();
    // The module as it was loaded. It may be called while another thread edits this one.
    [[nodiscard]] std::unique_ptr<Module> AsLoaded() const;
    // The module of the bytes that a save would write now, its head where it was.
    [[nodiscard]] std::unique_ptr<Module> Saved() const;
    // The first character that a save could not write; then the file must stay as it is.
    [[nodiscard]] std::optional<Unencodable> FirstUnencodable() const;
    // The physical line of the file, from 1, on which the shown line stands now; hidden lines count here.
    // It counts them, so it is not for every line.
    [[nodiscard]] std::int64_t FileLine(Line line) const;
    // Which shown line `line`, which exists, was before any edit; 0 for one that was inserted.
    [[nodiscard]] Line OriginOf(Line line) const;
    // The physical line of the file on which a shown line stood before any edit. Cheap.
    [[nodiscard]] std::int64_t OriginalFileLine(Line origin) const;
    [[nodiscard]] const Encoding& encoding() const;

  private:
    struct Parts;

    [[nodiscard]] Parts& parts() const;
    void ReplaceByOne(Line line, TextView text);
    void ReplaceBySeveral(Line line, TextView text);

    std::string original_;
    std::optional<ContentMark> forgotten_;  // of the bytes that `original_` held
    EncodingPtr encoding_;
    std::size_t codeBegin_;
    mutable std::unique_ptr<Parts> parts_;  // null when only the bytes were kept
    std::optional<std::string> current_;    // of a module that was edited, when only the bytes were kept
    ShownLines originalLines_;              // when only the bytes were kept
};

}  // namespace lintara::workspace

// `Lintara`, the one facade of the library: what a host creates, gives the suite's services object, and
// calls.
//
// Every member runs in the calling frame (assistant/calling_frame.h): it never throws, reports no error, and
// returns its empty value where something failed. Objects of the host are released before a member returns.
// The members stand in the order of the dispatch interface, under its names; see dispatch_table.h.
// Calls come one at a time, on the host's user-interface thread.
#pragma once

#include "assistant/code_buffers.h"
#include "base/text.h"
#include "hostmodel/globals.h"
#include "hostmodel/screen.h"

#include <cstdint>
#include <memory>

namespace lintara {

class Lintara {
  public:
    // `screen` shows the hourglass during the longer operations; without one nothing is shown.
    explicit Lintara(std::shared_ptr<hostmodel::Screen> screen = nullptr);

    // The services object, set by the host before the first call. Without it every service that needs the
    // IDE returns its empty result; only the buffers work.
    std::shared_ptr<hostmodel::Globals> oG;

    // The main copy-and-paste buffer, in memory only.
    [[nodiscard]] Text TarnwickCPBuffer() const noexcept;
    void SetTarnwickCPBuffer(TextView value) noexcept;
    // The numbered buffers, 0 to 10. Any other index reads as "" and writes nothing.
    [[nodiscard]] Text AdditionalCPBuffer(std::int32_t Index) const noexcept;
    void SetAdditionalCPBuffer(std::int32_t Index, TextView value) noexcept;

    // Not built yet: these return their empty result, showing the hourglass where they will.
    [[nodiscard]] Text ParsePseudoCode(TextView APseudoCodeString) noexcept;
    [[nodiscard]] Text ParsePseudoCodeEx(TextView APseudoCodeString, TextView AComponentName,
                                         TextView AMemberName) noexcept;
    [[nodiscard]] Text GeneratePseudoCode(TextView sCode) noexcept;

    // The member under the caret of the active code window; "" in the declarations or without a window.
    [[nodiscard]] Text GetMemberName() noexcept;
    // Its kind: "Sub", "Function", "Property", or "?" when a comment above its header hides it.
    [[nodiscard]] Text GetMemberType() noexcept;
    // The kind of a member of the active project, by its header.
    [[nodiscard]] Text GetMemberTypeEx(TextView sComponentName, TextView sMemberName) noexcept;

    // Begins a session: loads the numbered buffers 0 to 9 from the code database of the services object.
    // The database has to be open; finding and opening it is not built yet.
    void InitCodeAutomation() noexcept;

    // Not built yet: these change nothing and return their empty result.
    [[nodiscard]] Text GetTextSelection(Text& sLines, std::int32_t iStartLine, std::int32_t iEndLine,
                                        std::int32_t iStartCol, std::int32_t iEndCol) noexcept;
    [[nodiscard]] Text InsertTextInLine(TextView sLine, TextView sText, std::int32_t iCol) noexcept;
    void TranslateCarret(std::int32_t& iLine, std::int32_t& iCol, TextView sText) noexcept;

    // Ends a session: stores the buffers 0 to 9. The database stays open: it is the services object's.
    void CloseCodeAutomation() noexcept;

    // Numbers one procedure, a property with all its procedures: the n-th line behind the first one of the
    // body gets iLNBase + n * iLNStep. See transform/line_numbers.h.
    void LineNumbersInserter(TextView sProject, TextView sComponent, TextView sMember, std::int32_t iLNBase,
                             std::int32_t iLNStep) noexcept;
    void LineNumbersRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept;

    // Not built yet: these change nothing; AFound becomes false.
    void ErrorHandlerInserter(TextView sProject, TextView sComponent, TextView sMember, TextView sEHLabel,
                              TextView sEHCode) noexcept;
    void ErrorHandlerRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept;
    void SearchAndReplace(TextView AComponentName, TextView ASoughtString, TextView AReplacementString,
                          std::int32_t AStartLine, std::int32_t AEndLine, bool WholeWord,
                          bool GoThroughDelete, bool& AFound) noexcept;
    void CustomCodeInserter(TextView sProject, TextView sComponent, TextView sMember, TextView sCodeToInsert,
                            bool fNoDelimiters, std::int16_t iWhere, std::int32_t iLine,
                            std::int16_t ID) noexcept;
    void CustomCodeRemover(TextView sProject, TextView sComponent, TextView sMember,
                           std::int16_t ID) noexcept;

    // The line of the caret, or the last one of the selection; 0 when no code window is active.
    [[nodiscard]] std::int32_t GetLineNumber() noexcept;

    // Not built yet: shows nothing.
    void ShowHistory() noexcept;

  private:
    std::shared_ptr<hostmodel::Screen> screen_;
    assistant::CodeBuffers buffers_;
};

}  // namespace lintara

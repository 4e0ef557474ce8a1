// `Lintara`, the one facade of the library: what a host creates, gives the suite's services object, and
// calls.
//
// Every member runs in the calling frame (assistant/calling_frame.h): it never throws, reports no error, and
// returns its empty value where something failed. Objects of the host are released before a member returns.
// The members stand in the order of the dispatch interface, under its names; see dispatch_table.h.
// Calls come one at a time, on the host's user-interface thread.
#pragma once

#include "assistant/code_buffers.h"
#include "assistant/platform.h"
#include "base/text.h"
#include "hostmodel/globals.h"

#include <cstdint>
#include <memory>

namespace lintara {

class Lintara {
  public:
    explicit Lintara(Platform platform = {});

    // The services object, set by the host before the first call. Without it every service that needs the
    // IDE returns its empty result; the buffers and the arithmetic of selection and caret work.
    std::shared_ptr<hostmodel::Globals> oG;

    // The main copy-and-paste buffer, in memory only.
    [[nodiscard]] Text TarnwickCPBuffer() const noexcept;
    void SetTarnwickCPBuffer(TextView value) noexcept;
    // The numbered buffers, 0 to 10. Any other index reads as "" and writes nothing.
    [[nodiscard]] Text AdditionalCPBuffer(std::int32_t Index) const noexcept;
    void SetAdditionalCPBuffer(std::int32_t Index, TextView value) noexcept;

    // Templates into code and back; see transform/templates.h. The first expands a template for the member
    // under the caret, the second for a member of the active project. These show the hourglass.
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

    // Begins a session: opens the code database if nobody has (assistant/code_database.h), and loads the
    // buffers 0 to 9 that it holds. Without a database they keep their values. It shows the hourglass.
    void InitCodeAutomation() noexcept;

    // Arithmetic of the selection and the caret, which works without a services object; see
    // transform/text_selection.h. Lines and columns count from 1. These show the hourglass.
    [[nodiscard]] Text GetTextSelection(Text& sLines, std::int32_t iStartLine, std::int32_t iEndLine,
                                        std::int32_t iStartCol, std::int32_t iEndCol) noexcept;
    [[nodiscard]] Text InsertTextInLine(TextView sLine, TextView sText, std::int32_t iCol) noexcept;
    void TranslateCarret(std::int32_t& iLine, std::int32_t& iCol, TextView sText) noexcept;

    // Ends a session: stores the buffers 0 to 9. The database stays open: it is the services object's. It
    // shows the hourglass.
    void CloseCodeAutomation() noexcept;

    // Numbers one procedure, a property with all its procedures: the n-th line behind the first one of the
    // body gets iLNBase + n * iLNStep. See transform/line_numbers.h.
    void LineNumbersInserter(TextView sProject, TextView sComponent, TextView sMember, std::int32_t iLNBase,
                             std::int32_t iLNStep) noexcept;
    void LineNumbersRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept;

    // Gives one procedure, or all procedures of a property, an error handler with the label and the code, a
    // template; one that has such a handler is left alone. See transform/error_handler_insertion.h.
    void ErrorHandlerInserter(TextView sProject, TextView sComponent, TextView sMember, TextView sEHLabel,
                              TextView sEHCode) noexcept;
    // Takes it out again, with what was added below it. The statements that led to the label, which is read
    // from the settings, switch error handling off then. See transform/error_handler_removal.h.
    void ErrorHandlerRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept;

    // Replaces a text, in any letter case, from AStartLine to AEndLine of a component of the active project;
    // AFound says whether it occurred, in the component behind AEndLine too. See
    // transform/search_and_replace.h.
    void SearchAndReplace(TextView AComponentName, TextView ASoughtString, TextView AReplacementString,
                          std::int32_t AStartLine, std::int32_t AEndLine, bool WholeWord,
                          bool GoThroughDelete, bool& AFound) noexcept;

    // Puts a block of code, a template, into one procedure, or into all procedures of a property: iWhere is
    // 1 for the beginning of the body, 2 for its end, 3 for its iLine-th line. fNoDelimiters leaves out the
    // marker comments with the ID, by which the removal finds the block. See transform/custom_code.h.
    void CustomCodeInserter(TextView sProject, TextView sComponent, TextView sMember, TextView sCodeToInsert,
                            bool fNoDelimiters, std::int16_t iWhere, std::int32_t iLine,
                            std::int16_t ID) noexcept;
    void CustomCodeRemover(TextView sProject, TextView sComponent, TextView sMember,
                           std::int16_t ID) noexcept;

    // The line of the caret, or the last one of the selection; 0 when no code window is active.
    [[nodiscard]] std::int32_t GetLineNumber() noexcept;

    // Shows where the user has been in the code of the active project, and has the host open the place that
    // the user chooses. The host's timer stands still meanwhile.
    void ShowHistory() noexcept;

  private:
    Platform platform_;
    assistant::CodeBuffers buffers_;
};

}  // namespace lintara

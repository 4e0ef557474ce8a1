#include "assistant/lintara.h"

#include "assistant/calling_frame.h"
#include "assistant/code_database.h"
#include "assistant/show_history.h"
#include "base/statement.h"
#include "transform/custom_code.h"
#include "transform/error_handler_insertion.h"
#include "transform/error_handler_removal.h"
#include "transform/line_numbers.h"
#include "transform/member_queries.h"
#include "transform/search_and_replace.h"
#include "transform/templates.h"
#include "transform/text_selection.h"

#include <utility>

namespace lintara {

using assistant::Compute;
using assistant::Hourglass;
using assistant::Perform;
using GlobalsPtr = std::shared_ptr<hostmodel::Globals>;

namespace {

// Runs `use` with the services object, if the host has set one. The handle is held during the call, should
// the host let go of it meanwhile.
template <class Use>
void WithGlobals(GlobalsPtr globals, Use&& use) {
    if (globals != nullptr) {
        std::forward<Use>(use)(*globals);
    }
}

// Runs `use` with the code database, if one is open.
template <class Use>
void WithCodeDatabase(GlobalsPtr globals, Use&& use) {
    WithGlobals(std::move(globals), [&](hostmodel::Globals& services) {
        std::shared_ptr<hostmodel::Database> database;
        Assign(database, services.CodeDb());
        if (database != nullptr) {
            std::forward<Use>(use)(*database);
        }
    });
}

transform::TemplateSources SourcesOver(hostmodel::Globals& globals, const Platform& platform) {
    return {.globals = globals, .clock = platform.clock.get(), .regional = platform.regional.get()};
}

}  // namespace

Lintara::Lintara(Platform platform) : platform_(std::move(platform)) {}

Text Lintara::TarnwickCPBuffer() const noexcept {
    return Compute<Text>([&](Text& result) { result = buffers_.main(); });
}

void Lintara::SetTarnwickCPBuffer(TextView value) noexcept {
    Perform([&] { buffers_.SetMain(value); });
}

Text Lintara::AdditionalCPBuffer(std::int32_t Index) const noexcept {
    return Compute<Text>([&](Text& result) { Assign(result, buffers_.Numbered(Index)); });
}

void Lintara::SetAdditionalCPBuffer(std::int32_t Index, TextView value) noexcept {
    Perform([&] { Attempt(buffers_.SetNumbered(Index, value)); });
}

Text Lintara::ParsePseudoCode(TextView APseudoCodeString) noexcept {
    return Compute<Text>([&](Text& result) {
        const Hourglass hourglass(platform_.screen.get());
        WithGlobals(oG, [&](auto& globals) {
            result = transform::ParsePseudoCode(SourcesOver(globals, platform_), APseudoCodeString);
        });
    });
}

Text Lintara::ParsePseudoCodeEx(TextView APseudoCodeString, TextView AComponentName,
                                TextView AMemberName) noexcept {
    return Compute<Text>([&](Text& result) {
        const Hourglass hourglass(platform_.screen.get());
        WithGlobals(oG, [&](auto& globals) {
            result = transform::ParsePseudoCodeEx(SourcesOver(globals, platform_), APseudoCodeString,
                                                  AComponentName, AMemberName);
        });
    });
}

Text Lintara::GeneratePseudoCode(TextView sCode) noexcept {
    return Compute<Text>([&](Text& result) {
        const Hourglass hourglass(platform_.screen.get());
        WithGlobals(oG, [&](auto& globals) {
            result = transform::GeneratePseudoCode(SourcesOver(globals, platform_), sCode);
        });
    });
}

Text Lintara::GetMemberName() noexcept {
    return Compute<Text>([&](Text& result) {
        WithGlobals(oG, [&](auto& globals) { result = transform::GetMemberName(globals); });
    });
}

Text Lintara::GetMemberType() noexcept {
    return Compute<Text>([&](Text& result) {
        WithGlobals(oG, [&](auto& globals) { result = transform::GetMemberType(globals); });
    });
}

Text Lintara::GetMemberTypeEx(TextView sComponentName, TextView sMemberName) noexcept {
    return Compute<Text>([&](Text& result) {
        WithGlobals(oG, [&](auto& globals) {
            result = transform::GetMemberTypeEx(globals, sComponentName, sMemberName);
        });
    });
}

void Lintara::InitCodeAutomation() noexcept {
    Perform([&] {
        const Hourglass hourglass(platform_.screen.get());
        WithGlobals(oG, [&](auto& globals) { assistant::OpenCodeDatabase(globals, platform_); });
        WithCodeDatabase(oG, [&](auto& database) { buffers_.Load(database); });
    });
}

Text Lintara::GetTextSelection(Text& sLines, std::int32_t iStartLine, std::int32_t iEndLine,
                               std::int32_t iStartCol, std::int32_t iEndCol) noexcept {
    return Compute<Text>([&](Text& result) {
        const Hourglass hourglass(platform_.screen.get());
        result = transform::GetTextSelection(sLines, iStartLine, iEndLine, iStartCol, iEndCol);
    });
}

Text Lintara::InsertTextInLine(TextView sLine, TextView sText, std::int32_t iCol) noexcept {
    return Compute<Text>([&](Text& result) {
        const Hourglass hourglass(platform_.screen.get());
        result = transform::InsertTextInLine(sLine, sText, iCol);
    });
}

void Lintara::TranslateCarret(std::int32_t& iLine, std::int32_t& iCol, TextView sText) noexcept {
    Perform([&] {
        const Hourglass hourglass(platform_.screen.get());
        transform::TranslateCarret(iLine, iCol, sText);
    });
}

void Lintara::CloseCodeAutomation() noexcept {
    Perform([&] {
        const Hourglass hourglass(platform_.screen.get());
        WithCodeDatabase(oG, [&](auto& database) { buffers_.Save(database); });
    });
}

void Lintara::LineNumbersInserter(TextView sProject, TextView sComponent, TextView sMember,
                                  std::int32_t iLNBase, std::int32_t iLNStep) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::LineNumbersInserter(globals, sProject, sComponent, sMember, iLNBase, iLNStep);
        });
    });
}

void Lintara::LineNumbersRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::LineNumbersRemover(globals, sProject, sComponent, sMember);
        });
    });
}

void Lintara::ErrorHandlerInserter(TextView sProject, TextView sComponent, TextView sMember,
                                   TextView sEHLabel, TextView sEHCode) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::ErrorHandlerInserter(SourcesOver(globals, platform_), sProject, sComponent, sMember,
                                            sEHLabel, sEHCode);
        });
    });
}

void Lintara::ErrorHandlerRemover(TextView sProject, TextView sComponent, TextView sMember) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::ErrorHandlerRemover(globals, platform_.settings.get(), sProject, sComponent, sMember);
        });
    });
}

void Lintara::SearchAndReplace(TextView AComponentName, TextView ASoughtString, TextView AReplacementString,
                               std::int32_t AStartLine, std::int32_t AEndLine, bool WholeWord,
                               bool GoThroughDelete, bool& AFound) noexcept {
    AFound = Compute<bool>([&](bool& found) {
        WithGlobals(oG, [&](auto& globals) {
            transform::SearchAndReplace(globals, AComponentName, ASoughtString, AReplacementString,
                                        Line{AStartLine}, Line{AEndLine},
                                        {.wholeWord = WholeWord, .goThroughDelete = GoThroughDelete}, found);
        });
    });
}

void Lintara::CustomCodeInserter(TextView sProject, TextView sComponent, TextView sMember,
                                 TextView sCodeToInsert, bool fNoDelimiters, std::int16_t iWhere,
                                 std::int32_t iLine, std::int16_t ID) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::CustomCodeInserter(SourcesOver(globals, platform_), sProject, sComponent, sMember,
                                          {.code = sCodeToInsert,
                                           .noDelimiters = fNoDelimiters,
                                           .place = transform::CodePlace{iWhere},
                                           .line = iLine,
                                           .id = ID});
        });
    });
}

void Lintara::CustomCodeRemover(TextView sProject, TextView sComponent, TextView sMember,
                                std::int16_t ID) noexcept {
    Perform([&] {
        WithGlobals(oG, [&](auto& globals) {
            transform::CustomCodeRemover(globals, sProject, sComponent, sMember, ID);
        });
    });
}

std::int32_t Lintara::GetLineNumber() noexcept {
    return Compute<std::int32_t>([&](std::int32_t& result) {
        WithGlobals(oG, [&](auto& globals) { result = transform::GetLineNumber(globals); });
    });
}

void Lintara::ShowHistory() noexcept {
    Perform([&] { WithGlobals(oG, [&](auto& globals) { assistant::ShowHistory(globals, platform_); }); });
}

}  // namespace lintara

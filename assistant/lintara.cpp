#include "assistant/lintara.h"

#include "assistant/calling_frame.h"
#include "base/statement.h"
#include "transform/line_numbers.h"
#include "transform/member_queries.h"

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

}  // namespace

Lintara::Lintara(std::shared_ptr<hostmodel::Screen> screen) : screen_(std::move(screen)) {}

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

Text Lintara::ParsePseudoCode(TextView) noexcept {
    return Compute<Text>([&](Text&) { const Hourglass hourglass(screen_.get()); });
}

Text Lintara::ParsePseudoCodeEx(TextView, TextView, TextView) noexcept {
    return Compute<Text>([&](Text&) { const Hourglass hourglass(screen_.get()); });
}

Text Lintara::GeneratePseudoCode(TextView) noexcept {
    return Compute<Text>([&](Text&) { const Hourglass hourglass(screen_.get()); });
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
        const Hourglass hourglass(screen_.get());
        WithCodeDatabase(oG, [&](auto& database) { buffers_.Load(database); });
    });
}

Text Lintara::GetTextSelection(Text&, std::int32_t, std::int32_t, std::int32_t, std::int32_t) noexcept {
    return {};
}

Text Lintara::InsertTextInLine(TextView, TextView, std::int32_t) noexcept {
    return Compute<Text>([&](Text&) { const Hourglass hourglass(screen_.get()); });
}

void Lintara::TranslateCarret(std::int32_t&, std::int32_t&, TextView) noexcept {
    Perform([&] { const Hourglass hourglass(screen_.get()); });
}

void Lintara::CloseCodeAutomation() noexcept {
    Perform([&] {
        const Hourglass hourglass(screen_.get());
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

void Lintara::ErrorHandlerInserter(TextView, TextView, TextView, TextView, TextView) noexcept {}

void Lintara::ErrorHandlerRemover(TextView, TextView, TextView) noexcept {}

void Lintara::SearchAndReplace(TextView, TextView, TextView, std::int32_t, std::int32_t, bool, bool,
                               bool& AFound) noexcept {
    AFound = false;
}

void Lintara::CustomCodeInserter(TextView, TextView, TextView, TextView, bool, std::int16_t, std::int32_t,
                                 std::int16_t) noexcept {}

void Lintara::CustomCodeRemover(TextView, TextView, TextView, std::int16_t) noexcept {}

std::int32_t Lintara::GetLineNumber() noexcept {
    return Compute<std::int32_t>([&](std::int32_t& result) {
        WithGlobals(oG, [&](auto& globals) { result = transform::GetLineNumber(globals); });
    });
}

void Lintara::ShowHistory() noexcept {}

}  // namespace lintara

// A code module that answers what a test tells it, true to no rule: for answers that no sane host gives, and
// for tests that need lines and nothing else. What a test does not script fails. The services object that
// comes with it leads every walk to that one module.
#pragma once

#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/globals.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace lintara::support {

class ScriptedModule : public hostmodel::CodeModule {
  public:
    using MemberKind = hostmodel::MemberKind;

    // The lines that Lines and ReplaceLine work on.
    std::vector<Text> lines;
    // Where set, this answers instead.
    std::function<Result<Text>(Line)> lineAt;

    std::int32_t declarationLines = 0;
    std::function<Result<Line>(TextView, MemberKind)> procStartLine;
    std::function<Result<Line>(TextView, MemberKind)> procBodyLine;
    std::function<Result<std::int32_t>(TextView, MemberKind)> procCountLines;
    std::function<Result<Text>(Line, MemberKind&)> procOfLine;
    std::function<Result<bool>(TextView, Position&, Position&, hostmodel::FindOptions)> find;
    // The one member that the list has, whatever its name.
    std::optional<Line> memberLocation;
    std::optional<hostmodel::MemberType> memberType;

    // What the services object says, and the designer of the one component.
    std::function<Result<Text>(TextView, TextView)> tokenBefore;
    std::shared_ptr<hostmodel::Dispatch> designer;

    // The caret of the one code window, if there is one.
    std::optional<Position> caret;

    // How often lines were read and replaced.
    std::size_t reads = 0;
    std::size_t replacements = 0;

    // The lines of `source`, which end in LF.
    explicit ScriptedModule(std::string_view source = "");
    // The lines joined by LF.
    [[nodiscard]] std::string text() const;

    Result<std::shared_ptr<hostmodel::VBComponent>> Parent() override;
    Result<Text> Lines(Line startLine, std::int32_t count) override;
    Result<void> InsertLines(Line line, TextView text) override;
    Result<void> DeleteLines(Line startLine, std::int32_t count) override;
    Result<void> ReplaceLine(Line line, TextView text) override;
    Result<Line> ProcStartLine(TextView name, MemberKind kind) override;
    Result<Line> ProcBodyLine(TextView name, MemberKind kind) override;
    Result<std::int32_t> ProcCountLines(TextView name, MemberKind kind) override;
    Result<Text> ProcOfLine(Line line, MemberKind& kind) override;
    Result<std::int32_t> CountOfDeclarationLines() override;
    Result<std::shared_ptr<hostmodel::Members>> Members() override;
    Result<bool> Find(TextView target, Position& start, Position& end,
                      hostmodel::FindOptions options) override;
};

// A services object whose every project, component and code window show `module`.
[[nodiscard]] std::shared_ptr<hostmodel::Globals> GlobalsOver(std::shared_ptr<ScriptedModule> module);

}  // namespace lintara::support

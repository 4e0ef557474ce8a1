// Replaces a text in one component with the library's search and replace, and makes sure that every match
// was replaced once.
//
// The library goes on searching, on the line that it has just changed, at the column where the match ended
// before: it may find its own replacement, or miss a match that moved towards the start of the line. A
// command that would be left half done like that is refused.
#pragma once

#include "assistant/lintara.h"
#include "cli/edits/edit_run.h"
#include "hostmodel/globals.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace lintara::cli {

struct ReplaceRequest {
    Text sought;  // CR LF separates its lines, as in the replacement
    Text replacement;
    std::int32_t from = 1;
    std::optional<std::int32_t> to = std::nullopt;  // none: to the end of the component
    bool wholeWord = false;
    bool exact = false;  // the library's work as it is
};

class ComponentReplace : public ComponentEditor {
  public:
    // `globals` show `workspace`.
    ComponentReplace(workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals,
                     ReplaceRequest request);

    // Takes one component: a second one is refused, and so are lines that it does not have.
    [[nodiscard]] ComponentReport Edit(const ScopedComponent& scope) override;

  private:
    struct Match {
        Line line;
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    void CheckScope(const ScopedComponent& scope);
    void CheckLines(const workspace::Module& module) const;
    [[nodiscard]] Line LastLine(const workspace::Module& module) const;
    // Asks the library, to replace up to the line `last`. Whether it found anything.
    [[nodiscard]] bool Replace(const ScopedComponent& scope, Line last);
    void ReplaceCarefully(const ScopedComponent& scope, const std::vector<Match>& matches,
                          ComponentReport& report);

    // The matches within single lines of the request, in their order, none of whose lines has too many; and
    // the text that the module has when each of them gave way to the replacement.
    [[nodiscard]] std::vector<Match> FindMatches(const workspace::Module& module) const;
    [[nodiscard]] std::vector<Text> Replaced(const workspace::Module& module,
                                             const std::vector<Match>& matches) const;
    // How many lines the replacements of the matches above `line` add.
    [[nodiscard]] std::int32_t AddedAbove(Line line, const std::vector<Match>& matches) const;

    void RequireResult(const workspace::Module& module, const std::vector<Text>& expected) const;
    void RemarkLongLines(const workspace::Module& module, const std::vector<Text>& before,
                         ComponentReport& report) const;
    void RemarkProcedures(const workspace::Module& module,
                          const std::vector<workspace::ProcedureInfo>& before,
                          const std::vector<Match>& matches, ComponentReport& report) const;

    workspace::Workspace& workspace_;
    Lintara lintara_;
    ReplaceRequest request_;
    std::int32_t addedLines_;  // by one replacement
    const workspace::Component* edited_ = nullptr;
};

}  // namespace lintara::cli

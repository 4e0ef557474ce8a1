// One component in memory, edited as the command does it: what comes out, and what is told about it.
#pragma once

#include "cli/edits/procedure_editor.h"
#include "cli/options.h"
#include "cli/output/report.h"
#include "workspace/workspace.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

class EditedModule {
  public:
    // `code` is all of a module's lines, in UTF-8; lines end in "\n", which is written as CR LF.
    explicit EditedModule(std::string_view code);
    // A file as it is, in windows-1252, with its head.
    static EditedModule FromFile(std::string bytes);

    // Each edits the module as it is now, and returns what the editor says.
    ComponentReport Insert(NumberOptions numbers = {}, bool exact = false);
    ComponentReport Remove(bool exact = false);
    ComponentReport Edit(std::unique_ptr<ProcedureEdit> edit, bool backwards, bool exact);

    // `platform` is what the library gets.
    ComponentReport Edit(EditPlan plan, Platform platform = {});

    // The code as it is now, with "\n".
    [[nodiscard]] std::string Code() const;
    // The bytes that a save would write.
    [[nodiscard]] std::string Bytes() const;
    [[nodiscard]] const std::string& OriginalBytes() const;
    [[nodiscard]] workspace::Module& module() const { return *component_->module; }

  private:
    explicit EditedModule(std::unique_ptr<workspace::Module> module);

    std::unique_ptr<workspace::Workspace> workspace_;
    workspace::Project* project_;
    workspace::Component* component_;
};

// "reason name" of each skipped procedure, in order.
[[nodiscard]] std::vector<std::string> SkippedIn(const ComponentReport& report);
[[nodiscard]] std::vector<std::string> EditedIn(const ComponentReport& report);

}  // namespace lintara::cli

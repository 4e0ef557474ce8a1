// A workspace made of source text, for tests that read as before and after: one project "Project1" whose
// module "Module1" holds the text, shown in the active code window.
//
// The source is UTF-8 with lines that end in LF; one at its beginning and one at its end do not count, so
// that a raw string may start and end on lines of its own. Marks in it are taken out and say what is selected
// in the code window: `^` is the caret, or `{{` and `}}` stand around the selection. Without marks the caret
// is in front of the first character.
#pragma once

#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/member_kind.h"
#include "workspace/object_model.h"
#include "workspace/workspace.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::support {

inline constexpr TextView ProjectName = u"Project1";
inline constexpr TextView ModuleName = u"Module1";

class CodeFixture {
  public:
    explicit CodeFixture(std::string_view source);

    [[nodiscard]] workspace::Workspace& workspace() { return *workspace_; }
    // The services object over the workspace; its handles are counted.
    [[nodiscard]] const std::shared_ptr<workspace::WorkspaceGlobals>& globals() const { return globals_; }

    // The code of the module, lines joined by LF, in UTF-8.
    [[nodiscard]] std::string text() const { return TextOf(ProjectName, ModuleName); }
    [[nodiscard]] std::string TextOf(TextView projectName, TextView componentName) const;
    [[nodiscard]] workspace::Module& module() const;

    // Another component, not shown in a window. The project is made if need be; it does not become active.
    void AddComponent(TextView projectName, TextView componentName, std::string_view source,
                      hostmodel::ComponentType type = hostmodel::ComponentType::Module);

    // Makes the module that of a component with these controls on its designer.
    void SetDesigner(std::vector<workspace::DesignerControl> controls,
                     hostmodel::ComponentType type = hostmodel::ComponentType::Form);

    void CloseCodeWindow() { workspace_->ClearActivePane(); }

  private:
    std::unique_ptr<workspace::Workspace> workspace_ = std::make_unique<workspace::Workspace>();
    std::shared_ptr<workspace::WorkspaceGlobals> globals_ =
        std::make_shared<workspace::WorkspaceGlobals>(*workspace_);
};

// The source with its outermost line breaks taken off, as the fixture reads it: for expected texts.
[[nodiscard]] std::string Code(std::string_view source);

}  // namespace lintara::support

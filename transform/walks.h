// The three ways to a code module. Every operation on code begins with one of them, from the services object
// down, and keeps nothing of what it passed on the way. A step that fails, or that yields no object, ends the
// walk with its error.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/code_pane.h"
#include "hostmodel/globals.h"
#include "hostmodel/vbe.h"

#include <memory>

namespace lintara::transform {

using CodeModulePtr = std::shared_ptr<hostmodel::CodeModule>;
using CodePanePtr = std::shared_ptr<hostmodel::CodePane>;
using VBComponentPtr = std::shared_ptr<hostmodel::VBComponent>;
using VBProjectPtr = std::shared_ptr<hostmodel::VBProject>;

// By project and component name: the way of the operations that edit code.
[[nodiscard]] Result<CodeModulePtr> CodeModuleByNames(hostmodel::Globals& globals, TextView projectName,
                                                      TextView componentName);

// The project that is active in the IDE, and by component name in it.
[[nodiscard]] Result<VBProjectPtr> ActiveProject(hostmodel::Globals& globals);
[[nodiscard]] Result<VBComponentPtr> ComponentInActiveProject(hostmodel::Globals& globals,
                                                              TextView componentName);
[[nodiscard]] Result<CodeModulePtr> CodeModuleInActiveProject(hostmodel::Globals& globals,
                                                              TextView componentName);

// Through the code window that has the focus; the component is the one whose code it shows.
[[nodiscard]] Result<CodePanePtr> ActiveCodePane(hostmodel::Globals& globals);
[[nodiscard]] Result<CodeModulePtr> ActiveCodeModule(hostmodel::Globals& globals);
[[nodiscard]] Result<VBComponentPtr> ActiveComponent(hostmodel::Globals& globals);

}  // namespace lintara::transform

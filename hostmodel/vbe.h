// The IDE's tree from its root down to a component. Lookups by name pay no regard to case and fail when
// there is no such object.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "hostmodel/code_pane.h"
#include "hostmodel/dispatch.h"
#include "hostmodel/member_kind.h"

#include <memory>

namespace lintara::hostmodel {

class VBComponent {
  public:
    virtual ~VBComponent() = default;

    [[nodiscard]] virtual Result<Text> Name() = 0;
    [[nodiscard]] virtual Result<ComponentType> Type() = 0;
    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() = 0;
    // The visual designer, reached by name; fails for components that have none.
    [[nodiscard]] virtual Result<std::shared_ptr<Dispatch>> Designer() = 0;
};

class VBComponents {
  public:
    virtual ~VBComponents() = default;

    [[nodiscard]] virtual Result<std::shared_ptr<VBComponent>> Item(TextView name) = 0;
};

class VBProject {
  public:
    virtual ~VBProject() = default;

    [[nodiscard]] virtual Result<Text> Name() = 0;
    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() = 0;
};

class VBProjects {
  public:
    virtual ~VBProjects() = default;

    [[nodiscard]] virtual Result<std::shared_ptr<VBProject>> Item(TextView name) = 0;
};

class VBE {
  public:
    virtual ~VBE() = default;

    // All open projects.
    [[nodiscard]] virtual Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() = 0;
    // Fails when no project is open.
    [[nodiscard]] virtual Result<std::shared_ptr<VBProject>> ActiveVBProject() = 0;
    // The code window that has the focus; fails when there is none.
    [[nodiscard]] virtual Result<std::shared_ptr<CodePane>> ActiveCodePane() = 0;
};

}  // namespace lintara::hostmodel

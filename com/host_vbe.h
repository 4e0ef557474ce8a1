// The IDE's tree from its root down to a component, and its code window, late-bound.
#pragma once

#include "com/host_object.h"
#include "hostmodel/code_pane.h"
#include "hostmodel/vbe.h"

namespace lintara::com {

class HostCodePane final : public hostmodel::CodePane, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override;
    Result<hostmodel::Selection> GetSelection() override;
    Result<Line> TopLine() override;
    Result<std::int32_t> CountOfVisibleLines() override;
};

class HostVBComponent final : public hostmodel::VBComponent, public HostObject {
  public:
    using HostObject::HostObject;

    Result<Text> Name() override;
    Result<hostmodel::ComponentType> Type() override;
    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override;
    Result<std::shared_ptr<hostmodel::Dispatch>> Designer() override;
};

class HostVBComponents final : public hostmodel::VBComponents, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::VBComponent>> Item(TextView name) override;
};

class HostVBProject final : public hostmodel::VBProject, public HostObject {
  public:
    using HostObject::HostObject;

    Result<Text> Name() override;
    Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override;
};

class HostVBProjects final : public hostmodel::VBProjects, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::VBProject>> Item(TextView name) override;
};

class HostVBE final : public hostmodel::VBE, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override;
    Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override;
    Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override;
};

}  // namespace lintara::com

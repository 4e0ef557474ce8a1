#include "com/host_vbe.h"

#include "com/host_code_module.h"

namespace lintara::com {

Result<std::shared_ptr<hostmodel::CodeModule>> HostCodePane::CodeModule() {
    return GetObjectAs<hostmodel::CodeModule, HostCodeModule>(u"CodeModule");
}

Result<hostmodel::Selection> HostCodePane::GetSelection() {
    std::int32_t startLine = 0;
    std::int32_t startColumn = 0;
    std::int32_t endLine = 0;
    std::int32_t endColumn = 0;
    Arguments places;
    places.AddReference(startLine).AddReference(startColumn).AddReference(endLine).AddReference(endColumn);
    return Then(object().Call(u"GetSelection", std::move(places)), [&] {
        return Result<hostmodel::Selection>(
            {{Line{startLine}, Column{startColumn}}, {Line{endLine}, Column{endColumn}}});
    });
}

Result<Line> HostCodePane::TopLine() {
    return GetLine(u"TopLine");
}

Result<std::int32_t> HostCodePane::CountOfVisibleLines() {
    return GetLong(u"CountOfVisibleLines");
}

Result<Text> HostVBComponent::Name() {
    return GetText(u"Name");
}

Result<hostmodel::ComponentType> HostVBComponent::Type() {
    return Then(GetLong(u"Type"), [](std::int32_t type) {
        return Result<hostmodel::ComponentType>(static_cast<hostmodel::ComponentType>(type));
    });
}

Result<std::shared_ptr<hostmodel::CodeModule>> HostVBComponent::CodeModule() {
    return GetObjectAs<hostmodel::CodeModule, HostCodeModule>(u"CodeModule");
}

Result<std::shared_ptr<hostmodel::Dispatch>> HostVBComponent::Designer() {
    return GetDispatch(u"Designer");
}

Result<std::shared_ptr<hostmodel::VBComponent>> HostVBComponents::Item(TextView name) {
    return GetObjectAs<hostmodel::VBComponent, HostVBComponent>(u"Item", With(name));
}

Result<Text> HostVBProject::Name() {
    return GetText(u"Name");
}

Result<std::shared_ptr<hostmodel::VBComponents>> HostVBProject::VBComponents() {
    return GetObjectAs<hostmodel::VBComponents, HostVBComponents>(u"VBComponents");
}

Result<std::shared_ptr<hostmodel::VBProject>> HostVBProjects::Item(TextView name) {
    return GetObjectAs<hostmodel::VBProject, HostVBProject>(u"Item", With(name));
}

Result<std::shared_ptr<hostmodel::VBProjects>> HostVBE::VBProjects() {
    return GetObjectAs<hostmodel::VBProjects, HostVBProjects>(u"VBProjects");
}

Result<std::shared_ptr<hostmodel::VBProject>> HostVBE::ActiveVBProject() {
    return GetObjectAs<hostmodel::VBProject, HostVBProject>(u"ActiveVBProject");
}

Result<std::shared_ptr<hostmodel::CodePane>> HostVBE::ActiveCodePane() {
    return GetObjectAs<hostmodel::CodePane, HostCodePane>(u"ActiveCodePane");
}

}  // namespace lintara::com

#include "transform/walks.h"

namespace lintara::transform {
namespace {

// A host may answer "none" with an empty object instead of an error; the next step needs one.
template <class T>
Result<std::shared_ptr<T>> Present(Result<std::shared_ptr<T>> object) {
    if (object && *object == nullptr) {
        return Failure(ErrorNumber::ObjectNotSet, "the host has no such object");
    }
    return object;
}

// The object that `step` finds from `object`.
template <class T, class Step>
auto Next(const Result<std::shared_ptr<T>>& object, Step step) {
    return Then(object, [&](const std::shared_ptr<T>& present) { return Present(step(*present)); });
}

Result<std::shared_ptr<hostmodel::VBE>> Root(hostmodel::Globals& globals) {
    return Present(globals.VBE());
}

Result<VBComponentPtr> ComponentOf(const Result<VBProjectPtr>& project, TextView componentName) {
    const auto components = Next(project, [](auto& found) { return found.VBComponents(); });
    return Next(components, [&](auto& all) { return all.Item(componentName); });
}

Result<CodeModulePtr> CodeModuleOf(const Result<VBComponentPtr>& component) {
    return Next(component, [](auto& found) { return found.CodeModule(); });
}

}  // namespace

Result<CodeModulePtr> CodeModuleByNames(hostmodel::Globals& globals, TextView projectName,
                                        TextView componentName) {
    const auto projects = Next(Root(globals), [](auto& vbe) { return vbe.VBProjects(); });
    const auto project = Next(projects, [&](auto& all) { return all.Item(projectName); });
    return CodeModuleOf(ComponentOf(project, componentName));
}

Result<VBProjectPtr> ActiveProject(hostmodel::Globals& globals) {
    return Next(Root(globals), [](auto& vbe) { return vbe.ActiveVBProject(); });
}

Result<VBComponentPtr> ComponentInActiveProject(hostmodel::Globals& globals, TextView componentName) {
    return ComponentOf(ActiveProject(globals), componentName);
}

Result<CodeModulePtr> CodeModuleInActiveProject(hostmodel::Globals& globals, TextView componentName) {
    return CodeModuleOf(ComponentInActiveProject(globals, componentName));
}

Result<CodePanePtr> ActiveCodePane(hostmodel::Globals& globals) {
    return Next(Root(globals), [](auto& vbe) { return vbe.ActiveCodePane(); });
}

Result<CodeModulePtr> ActiveCodeModule(hostmodel::Globals& globals) {
    return Next(ActiveCodePane(globals), [](auto& pane) { return pane.CodeModule(); });
}

Result<VBComponentPtr> ActiveComponent(hostmodel::Globals& globals) {
    return Next(ActiveCodeModule(globals), [](auto& module) { return module.Parent(); });
}

}  // namespace lintara::transform

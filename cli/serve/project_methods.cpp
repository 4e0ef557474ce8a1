#include "cli/serve/project_methods.h"

#include "cli/serve/request_error.h"

#include <iterator>

namespace lintara::cli {

std::vector<MethodParameter> ComponentParameters(std::vector<MethodParameter> more) {
    std::vector<MethodParameter> parameters = {{"project"}, {"component"}};
    std::ranges::move(more, std::back_inserter(parameters));
    return parameters;
}

workspace::Project& ProjectOf(Session& session, const Arguments& arguments) {
    const Text& name = arguments.TextOf("project");
    workspace::Project* project = session.workspace().Find(name);
    if (project == nullptr) {
        throw HostFailure("no project named \"" + JsonText(name) + "\" is open");
    }
    return *project;
}

workspace::Component& ComponentOf(Session& session, const Arguments& arguments) {
    const workspace::Project& project = ProjectOf(session, arguments);
    const Text& name = arguments.TextOf("component");
    workspace::Component* component = project.Find(name);
    if (component == nullptr) {
        throw HostFailure("the project " + JsonText(project.name()) + " has no component named \"" +
                          JsonText(name) + "\"");
    }
    return *component;
}

}  // namespace lintara::cli

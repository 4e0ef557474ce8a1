// ide.* and globals.set: what a person at the IDE would choose, and who that is.
#include "cli/serve/project_methods.h"

namespace lintara::cli {
namespace {

Json Activate(Session& session, const Arguments& arguments) {
    workspace::ActivePane pane;
    pane.project = &ProjectOf(session, arguments);
    pane.component = &ComponentOf(session, arguments);
    pane.selection = {.start = {Line{arguments.Long("startLine")}, Column{arguments.Long("startColumn")}},
                      .end = {Line{arguments.Long("endLine")}, Column{arguments.Long("endColumn")}}};
    if (arguments.Has("topLine")) {
        pane.topLine = Line{arguments.Long("topLine")};
    }
    if (arguments.Has("visibleLines")) {
        pane.visibleLines = arguments.Long("visibleLines");
    }
    session.workspace().SetActivePane(pane);
    return Json::object();
}

Json Deactivate(Session& session, const Arguments&) {
    session.workspace().ClearActivePane();
    return Json::object();
}

Json SetActiveProject(Session& session, const Arguments& arguments) {
    session.workspace().SetActiveProject(ProjectOf(session, arguments));
    return Json::object();
}

Json SetGlobals(Session& session, const Arguments& arguments) {
    if (arguments.Has("ComputerName")) {
        session.globals().SetComputerName(arguments.TextOf("ComputerName"));
    }
    if (arguments.Has("UserName")) {
        session.globals().SetUserName(arguments.TextOf("UserName"));
    }
    return Json::object();
}

}  // namespace

std::vector<MethodInfo> IdeMethods() {
    using enum ArgumentType;
    return {
        {"ide.activate",
         ComponentParameters({{"startLine", Long},
                              {"startColumn", Long},
                              {"endLine", Long},
                              {"endColumn", Long},
                              {.name = "topLine", .type = Long, .optional = true},
                              {.name = "visibleLines", .type = Long, .optional = true}}),
         Activate},
        {"ide.deactivate", {}, Deactivate},
        {"ide.setActiveProject", {{"project"}}, SetActiveProject},
        {"globals.set",
         {{.name = "ComputerName", .optional = true}, {.name = "UserName", .optional = true}},
         SetGlobals},
    };
}

}  // namespace lintara::cli

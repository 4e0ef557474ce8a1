// workspace.*: opening, making, comparing, saving and closing projects.
#include "cli/output/line_changes.h"
#include "cli/output/unified_diff.h"
#include "cli/serve/project_methods.h"
#include "cli/serve/request_error.h"
#include "workspace/open.h"
#include "workspace/save.h"
#include "workspace/unencodable.h"

#include <array>
#include <memory>
#include <span>
#include <utility>

namespace lintara::cli {
namespace {

using hostmodel::ComponentType;
using workspace::Component;
using workspace::Project;

Json ComponentsArray(const Project& project) {
    Json components = Json::array();
    for (const auto& component : project.components()) {
        components.push_back({{"name", JsonText(component->name)},
                              {"type", static_cast<int>(component->type)},
                              {"lines", component->module->CountOfLines()},
                              {"path", JsonPath(component->path)}});
    }
    return components;
}

Json ProjectsObject(std::span<const std::unique_ptr<Project>> projects,
                    const workspace::Diagnostics& warnings) {
    Json list = Json::array();
    for (const auto& project : projects) {
        list.push_back({{"name", JsonText(project->name())},
                        {"path", JsonPath(project->path())},
                        {"components", ComponentsArray(*project)}});
    }
    Json messages = Json::array();
    for (const workspace::Diagnostic& warning : warnings) {
        messages.push_back(
            {{"path", JsonPath(warning.path)}, {"line", warning.line}, {"message", warning.message}});
    }
    return {{"projects", std::move(list)}, {"warnings", std::move(messages)}};
}

workspace::OpenOptions OptionsOf(const Arguments& arguments) {
    workspace::OpenOptions options;
    if (arguments.Has("codePage")) {
        auto encoding = workspace::FindEncoding(workspace::ToUtf8(arguments.TextOf("codePage")));
        if (!encoding) {
            arguments.Refuse("codePage", "is none: " + encoding.error());
        }
        options.codePage = *std::move(encoding);
    }
    options.recursive = arguments.Boolean("recursive");
    options.skipMissing = arguments.Boolean("skipMissing");
    return options;
}

// A project that is open already is an error: two of one name cannot be told apart.
Json Open(Session& session, const Arguments& arguments) {
    const Text& path = arguments.TextOf("path");
    if (path.empty() || path.contains(u'\0')) {
        arguments.Refuse("path", "is no path");
    }
    workspace::Workspace& workspace = session.workspace();
    const std::size_t before = workspace.projects().size();
    const auto warnings = workspace::Open(workspace, workspace::ToUtf8(path), OptionsOf(arguments));
    if (!warnings) {
        throw HostFailure(warnings.error());
    }
    session.warnings().insert(session.warnings().end(), warnings->begin(), warnings->end());
    return ProjectsObject(std::span(workspace.projects()).subspan(before), *warnings);
}

Json List(Session& session, const Arguments&) {
    return ProjectsObject(session.workspace().projects(), session.warnings());
}

Json NewProject(Session& session, const Arguments& arguments) {
    const Text& name = arguments.TextOf("name");
    if (name.empty()) {
        arguments.Refuse("name", "is empty");
    }
    if (session.workspace().Find(name) != nullptr) {
        throw HostFailure("a project named " + JsonText(name) + " is open already");
    }
    session.workspace().Add(std::make_unique<Project>(name, std::filesystem::path()));
    return Json::object();
}

ComponentType TypeOf(const Arguments& arguments) {
    using enum ComponentType;
    constexpr std::array types = {Module,       Class,       OfficeForm,   Form,    MDIForm,
                                  PropertyPage, UserControl, UserDocument, Designer};
    for (const ComponentType type : types) {
        if (static_cast<std::int32_t>(type) == arguments.Long("type")) {
            return type;
        }
    }
    arguments.Refuse("type", "is none of 1, 2, 3, 5, 6, 7, 8, 9 and 11");
}

Json AddComponent(Session& session, const Arguments& arguments) {
    const Text& name = arguments.TextOf("name");
    auto component = std::make_unique<Component>();
    component->type = TypeOf(arguments);
    const bool hasDesigner =
        component->type != ComponentType::Module && component->type != ComponentType::Class;
    if (name.empty()) {
        arguments.Refuse("name", "is empty");
    }
    if (hasDesigner) {
        component->designer = arguments.Controls("controls");
    } else if (!arguments.Controls("controls").empty()) {
        arguments.Refuse("controls", "does not go with the types 1 and 2, which have no designer");
    }
    Project& project = ProjectOf(session, arguments);
    if (project.Find(name) != nullptr) {
        throw HostFailure("the project " + JsonText(project.name()) + " has a component named " +
                          JsonText(name) + " already");
    }
    component->name = name;
    component->module = workspace::Module::FromText(arguments.TextOf("text"));
    project.Add(std::move(component));
    return Json::object();
}

std::string DiffOf(const Component& component) {
    const workspace::Module& module = *component.module;
    std::string bytes;
    module.AppendCurrentBytes(bytes);
    const FileLines before = SplitFile(module.originalBytes(), module.encoding());
    const FileLines after = SplitFile(bytes, module.encoding());
    std::string diff;
    AppendUnifiedDiff(DiffLabel(component.path), before, after, CompareLines(before, after),
                      module.encoding(), {.utf8 = true}, diff);
    return diff;
}

Json Changes(Session& session, const Arguments&) {
    Json files = Json::array();
    workspace::Diagnostics errors;
    for (const workspace::ChangedFile& changed : workspace::ChangedFiles(session.workspace())) {
        // A save would write none of the files.
        if (auto error = workspace::UnencodableIn(*changed.component)) {
            errors.push_back(*std::move(error));
            continue;
        }
        files.push_back({{"path", JsonPath(changed.component->path)}, {"diff", DiffOf(*changed.component)}});
    }
    if (!errors.empty()) {
        throw HostFailure(errors);
    }
    return {{"files", std::move(files)}};
}

// The project is locked while its files are written, and no longer: a process that serves for hours keeps
// nobody waiting. That nobody wrote the files meanwhile is checked under the lock.
Json Save(Session& session, const Arguments&) {
    workspace::SaveOptions options;
    options.allowedOutside = session.allowedOutside();
    const auto saved = workspace::Save(session.workspace(), options);
    if (!saved) {
        throw HostFailure(saved.error());
    }
    workspace::AcceptSaved(session.workspace());
    Json files = Json::array();
    for (const std::filesystem::path& path : *saved) {
        files.push_back(JsonPath(path));
    }
    return {{"files", std::move(files)}};
}

Json Reset(Session& session, const Arguments&) {
    session.Reset();
    return Json::object();
}

}  // namespace

std::vector<MethodInfo> WorkspaceMethods() {
    using enum ArgumentType;
    return {
        {"workspace.open",
         {{"path"},
          {.name = "codePage", .optional = true},
          {.name = "recursive", .type = Boolean, .optional = true},
          {.name = "skipMissing", .type = Boolean, .optional = true}},
         Open},
        {"workspace.newProject", {{"name"}}, NewProject},
        {"workspace.addComponent",
         {{"project"},
          {"name"},
          {"type", Long},
          {"text"},
          {.name = "controls", .type = Controls, .optional = true}},
         AddComponent},
        {"workspace.projects", {}, List},
        {"workspace.changes", {}, Changes},
        {"workspace.save", {}, Save},
        {"workspace.reset", {}, Reset},
    };
}

}  // namespace lintara::cli

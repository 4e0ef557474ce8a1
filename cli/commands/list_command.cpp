// lintara list: projects, components and members.
#include "cli/commands/commands.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/component_kind.h"
#include "cli/project/open_project.h"
#include "cli/scope/procedure_groups.h"
#include "workspace/workspace.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr std::string_view ListFooter =
    "\nExamples:\n"
    "  lintara list Invoicing.vbp\n"
    "      Projects, components and members, each with its kind and its lines.\n"
    "  lintara list Everything.vbg --json\n"
    "      The same of a group of projects, for programs.\n"
    "\nLines are those that the IDE shows: the head of a component's file does not "
    "count.\n" LINTARA_READING_STATUSES;

struct ListedMember {
    std::string_view kind;
    std::string name;
    Line first;
    Line last;
};

std::string_view DeclarationKind(hostmodel::MemberType type) {
    using enum hostmodel::MemberType;
    switch (type) {
        case Variable:
            return "Variable";
        case Event:
            return "Event";
        case Constant:
            return "Const";
        case Method:
        case Property:
            return "Declare";
    }
    return "";
}

// Declarations, then procedures; each procedure of a property for itself.
std::vector<ListedMember> MembersOf(const workspace::Module& module) {
    const std::vector<workspace::ProcedureInfo> procedures = module.Procedures();
    std::vector<ListedMember> members;
    for (const workspace::MemberInfo& member : module.MemberList()) {
        // The member list goes on with the procedures.
        if (!procedures.empty() && member.codeLocation >= procedures.front().header) {
            break;
        }
        members.push_back({DeclarationKind(member.type), workspace::ToUtf8(member.name), member.codeLocation,
                           member.codeLocation});
    }
    for (const workspace::ProcedureInfo& procedure : procedures) {
        members.push_back({KindWord(procedure), workspace::ToUtf8(procedure.name), procedure.header,
                           std::max(procedure.header, procedure.closing)});
    }
    return members;
}

std::string RangeText(const ListedMember& member) {
    const std::string first = std::to_string(member.first.value());
    return member.first == member.last ? first : first + "-" + std::to_string(member.last.value());
}

std::string Padded(std::string text, std::size_t width) {
    const std::size_t columns = ColumnsOf(text);
    return columns < width ? text + std::string(width - columns, ' ') : text;
}

void AppendMembers(const std::vector<ListedMember>& members, std::string& out) {
    std::size_t kindWidth = 0;
    std::size_t nameWidth = 0;
    for (const ListedMember& member : members) {
        kindWidth = std::max(kindWidth, member.kind.size());
        nameWidth = std::max(nameWidth, ColumnsOf(Printable(std::string_view(member.name))));
    }
    for (const ListedMember& member : members) {
        out += "    " + Padded(std::string(member.kind), kindWidth) + "  ";
        out += Padded(Printable(std::string_view(member.name)), nameWidth) + "  " + RangeText(member) + "\n";
    }
}

std::string LineCount(const workspace::Module& module) {
    const std::int32_t count = module.CountOfLines();
    return std::to_string(count) + (count == 1 ? " line" : " lines");
}

void WriteTable(const workspace::Workspace& workspace, Sink& sink) {
    for (const auto& project : workspace.projects()) {
        std::string out =
            "project " + Printable(project->name()) + "  (" + PrintablePath(project->path()) + ")";
        out += project.get() == workspace.activeProject() && workspace.projects().size() > 1 ? "  startup\n"
                                                                                             : "\n";
        for (const auto& component : project->components()) {
            out += "  " + std::string(KindWord(component->type)) + " " + Printable(component->name) + "  (" +
                   PrintablePath(component->path) + ", " + LineCount(*component->module) + ")\n";
            AppendMembers(MembersOf(*component->module), out);
        }
        sink.Write(out);
    }
}

Json MembersArray(const workspace::Module& module) {
    Json members = Json::array();
    for (const ListedMember& member : MembersOf(module)) {
        members.push_back({{"name", member.name},
                           {"kind", member.kind},
                           {"firstLine", member.first.value()},
                           {"lastLine", member.last.value()},
                           {"fileLine", module.OriginalFileLine(member.first)}});
    }
    return members;
}

std::string AsJson(const workspace::Workspace& workspace, const workspace::Diagnostics& warnings) {
    Json projects = Json::array();
    for (const auto& project : workspace.projects()) {
        Json components = Json::array();
        for (const auto& component : project->components()) {
            components.push_back({{"name", JsonText(component->name)},
                                  {"kind", KindWord(component->type)},
                                  {"file", JsonPath(component->path)},
                                  {"lines", component->module->CountOfLines()},
                                  {"members", MembersArray(*component->module)}});
        }
        projects.push_back({{"name", JsonText(project->name())},
                            {"file", JsonPath(project->path())},
                            {"startup", project.get() == workspace.activeProject()},
                            {"components", std::move(components)}});
    }
    Json messages = Json::array();
    for (const workspace::Diagnostic& warning : warnings) {
        messages.push_back(DiagnosticObject(warning));
    }
    return Dump({{"projects", std::move(projects)}, {"warnings", std::move(messages)}});
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    Streams& streams = environment.streams;
    Messages messages(streams, false);
    Progress progress(streams, true);
    workspace::Workspace workspace;
    const auto opened = OpenOrComplain(workspace, ReadReading(given), streams.in, progress, messages);
    if (!opened) {
        return opened.error();
    }
    if (given.Flag("json")) {
        streams.out.Write(AsJson(workspace, *opened));
    } else {
        WriteTable(workspace, streams.out);
    }
    return ExitStatus::Done;
}

}  // namespace

CommandInfo ListCommand() {
    return {.name = "list",
            .description = "Show projects, components and members",
            .footer = ListFooter,
            .arguments = {PathArgument()},
            .options = Joined({ReadingOptions(), {JsonOption()}}),
            .run = Run};
}

}  // namespace lintara::cli

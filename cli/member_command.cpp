// lintara member: the library's queries about the member under a caret.
#include "assistant/lintara.h"
#include "cli/commands.h"
#include "cli/json_text.h"
#include "cli/messages.h"
#include "cli/open_project.h"
#include "cli/scope.h"
#include "cli/terminal_text.h"
#include "workspace/object_model.h"

namespace lintara::cli {
namespace {

struct Answer {
    Text project;
    Text component;
    std::int32_t line = 0;
    Text name;
    Text type;
    Text typeEx;
};

Answer Ask(workspace::Workspace& workspace, const ScopedComponent& found, const CaretPlace& place) {
    const Position caret{place.line, place.column};
    workspace.SetActivePane({.project = found.project,
                             .component = found.component,
                             .selection = {caret, caret},
                             .topLine = place.line});
    Lintara lintara;
    lintara.oG = std::make_shared<workspace::WorkspaceGlobals>(workspace);
    Answer answer;
    answer.project = found.project->name();
    answer.component = found.component->name;
    answer.line = lintara.GetLineNumber();
    answer.name = lintara.GetMemberName();
    answer.type = lintara.GetMemberType();
    answer.typeEx = lintara.GetMemberTypeEx(answer.component, answer.name);
    return answer;
}

std::string AsJson(const Answer& answer) {
    return Dump({{"project", JsonText(answer.project)},
                 {"component", JsonText(answer.component)},
                 {"line", answer.line},
                 {"name", JsonText(answer.name)},
                 {"type", JsonText(answer.type)},
                 {"typeEx", JsonText(answer.typeEx)}});
}

std::string AsTable(const Answer& answer) {
    return "project    " + Printable(answer.project) + "\ncomponent  " + Printable(answer.component) +
           "\nline       " + std::to_string(answer.line) + "\nname       " + Printable(answer.name) +
           "\ntype       " + Printable(answer.type) + "\ntypeEx     " + Printable(answer.typeEx) + "\n";
}

}  // namespace

ExitStatus RunMemberCommand(const Options& options, Streams& streams) {
    Messages messages(streams, false);
    Progress progress(streams, true);
    workspace::Workspace workspace;
    if (const auto opened = OpenOrComplain(workspace, options, progress, messages); !opened) {
        return opened.error();
    }
    const CaretPlace& place = *options.scope.at;
    const auto found = FindCaretComponent(workspace, place);
    if (!found) {
        messages.Error({{}, 0, found.error()});
        return ExitStatus::Usage;
    }
    if (auto outside = CheckCaretLine(*found, place)) {
        messages.Error({{}, 0, *std::move(outside)});
        return ExitStatus::Usage;
    }
    const Answer answer = Ask(workspace, *found, place);
    streams.out.Write(options.json ? AsJson(answer) : AsTable(answer));
    return ExitStatus::Done;
}

}  // namespace lintara::cli

// lintara member: the library's queries about the member under a caret.
#include "assistant/lintara.h"
#include "cli/commands/commands.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/json_text.h"
#include "cli/output/terminal_text.h"
#include "cli/project/caret.h"
#include "cli/project/open_project.h"

namespace lintara::cli {
namespace {

constexpr std::string_view MemberFooter =
    "\nExample:\n"
    "  lintara member Invoicing.vbp --at Totals:42\n"
    "      Which member holds line 42 of the component Totals, and of what kind is it?\n"
    "\nThe line is the one that the IDE shows. 'type' looks at the first line of the member's block,\n"
    "which may be a comment, 'typeEx' at its header: they can differ.\n" LINTARA_READING_STATUSES;

struct Answer {
    Text project;
    Text component;
    std::int32_t line = 0;
    Text name;
    Text type;
    Text typeEx;
};

Answer Ask(workspace::Workspace& workspace, const Environment& environment,
           const workspace::ActivePane& caret) {
    Lintara lintara;
    lintara.oG = MakeGlobals(workspace, environment);
    Answer answer;
    answer.project = caret.project->name();
    answer.component = caret.component->name;
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

ExitStatus Run(const OptionReader& given, Environment& environment) {
    workspace::Workspace workspace;
    const auto caret = OpenAtCaret(workspace, given, environment);
    if (!caret) {
        return caret.error();
    }
    const Answer answer = Ask(workspace, environment, *caret);
    environment.streams.out.Write(given.Flag("json") ? AsJson(answer) : AsTable(answer));
    return ExitStatus::Done;
}

}  // namespace

CommandInfo MemberCommand() {
    return {.name = "member",
            .description = "Tell the member under a caret",
            .footer = MemberFooter,
            .arguments = {PathArgument()},
            .options = Joined({ReadingOptions(), {CaretOption(), JsonOption()}}),
            .run = Run};
}

}  // namespace lintara::cli

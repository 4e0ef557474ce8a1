#include "cli/dialog/dialog_run.h"

#include "assistant/lintara.h"
#include "base/constants.h"
#include "base/settings_table.h"
#include "cli/commands/commands.h"
#include "cli/dialog/host_buffer.h"
#include "cli/dialog/shell_words.h"
#include "cli/output/messages.h"
#include "cli/project/caret.h"
#include "cli/project/open_project.h"

#include <algorithm>
#include <sstream>

namespace lintara::cli {
namespace {

CaretAnswers AskAtCaret(workspace::Workspace& workspace, const Environment& environment,
                        const workspace::ActivePane& caret) {
    Lintara lintara;
    lintara.oG = MakeGlobals(workspace, environment);
    return {.project = caret.project->name(),
            .component = caret.component->name,
            .member = lintara.GetMemberName(),
            .line = lintara.GetLineNumber(),
            .isOneOfSeveralProjects = workspace.projects().size() > 1};
}

const CommandInfo& CommandNamed(std::string_view name) {
    return *std::ranges::find(Commands(), name, &CommandInfo::name);
}

bool HasRememberedCode(const Environment& environment) {
    SettingsStore* settings = environment.platform.settings.get();
    if (settings == nullptr) {
        return false;
    }
    const auto code = settings->Find(FindSetting(constants::LastCustomCodeKey)->name());
    return code && *code && !(*code)->empty();
}

// The options of the command line, as words, but those that are about the dialog.
void AppendSharedOptions(const OptionReader& given, std::vector<std::string>& words) {
    for (const OptionInfo& option : given.command().options) {
        if (!given.IsOnCommandLine(option.name) || option.name == "at" || option.name == "print") {
            continue;
        }
        const std::string name = "--" + std::string(option.name);
        if (option.kind == OptionKind::Flag) {
            words.push_back(given.Flag(option.name) ? name : name + "=false");
            continue;
        }
        for (const std::string& text : given.TextsOf(option.name)) {
            words.push_back(name);
            words.push_back(text);
        }
    }
}

std::string LineWithoutWindow(const DialogKind& kind, const OptionReader& given, const CaretAnswers& caret,
                              const Environment& environment) {
    std::vector<std::string> words = {"lintara"};
    std::istringstream name{std::string(kind.command)};
    for (std::string word; name >> word;) {
        words.push_back(word);
    }
    words.push_back(given.Argument(0));
    std::ranges::copy(kind.usualOptions(HasRememberedCode(environment)), std::back_inserter(words));
    if (!kind.offersProcedureFirst || caret.member.empty()) {
        words.insert(words.end(), {"--scope", "component"});
    }
    words.insert(words.end(), {"--at", given.TextOf("at").value_or("")});
    AppendSharedOptions(given, words);
    return ShellLine(words);
}

Json RequestOf(const DialogKind& kind, const CaretAnswers& caret, const HostBuffer& buffer) {
    Json request = kind.request(caret);
    if (kind.buffer.taken != nullptr) {
        if (std::string text = buffer.Read(); !text.empty()) {
            request[kind.buffer.taken] = std::move(text);
        }
    }
    return request;
}

// What the user copied in the dialog is there in the next one, whatever becomes of the edit.
void KeepBuffer(const DialogKind& kind, const WindowAnswer& answer, const HostBuffer& buffer,
                Streams& streams) {
    if (kind.buffer.given == nullptr || !answer.object().contains(kind.buffer.given)) {
        return;
    }
    const std::string text = answer.TextOf(kind.buffer.given);
    if ((text.empty() && !kind.buffer.isGivenEmpty) || text == buffer.Read()) {
        return;
    }
    if (const auto written = buffer.Write(text); !written) {
        Messages(streams, false)
            .Warning({{}, 0, "the copy-and-paste buffer was not kept: " + written.error()});
    }
}

// The same machine with other streams.
Environment Over(const Environment& environment, Source& in, Sink& err) {
    const Streams& streams = environment.streams;
    return {.streams = {.in = in,
                        .out = streams.out,
                        .err = err,
                        .outIsTerminal = streams.outIsTerminal,
                        .errIsTerminal = streams.errIsTerminal,
                        .wantsColor = streams.wantsColor,
                        .clock = streams.clock},
            .platform = environment.platform,
            .identity = environment.identity,
            .stateFolder = environment.stateFolder,
            .ask = environment.ask,
            .commandLine = environment.commandLine};
}

ExitStatus Carry(const DialogKind& kind, const WindowAnswer& answer, const CaretAnswers& caret,
                 const OptionReader& given, Environment& environment) {
    StandInRun run{.options = given.given(), .input = {}};
    run.options.Remove("at");
    run.options.Remove("print");
    AddScope(answer, caret, run.options);
    kind.addChoice(answer, run);
    StringSource in;
    in.text = std::move(run.input);
    Environment inner = Over(environment, in, environment.streams.err);
    const CommandInfo& command = CommandNamed(kind.command);
    return command.run(OptionReader(command, std::move(run.options), {given.Argument(0)}), inner);
}

}  // namespace

ExitStatus RunDialog(const DialogKind& kind, const OptionReader& given, Environment& environment) {
    Streams& streams = environment.streams;
    // The command that does the work reads the project again, and warns of the same.
    StringSink warnings;
    workspace::Workspace workspace;
    Environment reading = Over(environment, streams.in, warnings);
    const auto pane = OpenAtCaret(workspace, given, reading);
    if (!pane) {
        streams.err.Write(warnings.text);
        return pane.error();
    }
    const CaretAnswers caret = AskAtCaret(workspace, environment, *pane);
    workspace.Clear();
    const HostBuffer buffer(environment.stateFolder);
    const auto answer = AskWindow(RequestOf(kind, caret, buffer), environment);
    if (answer && answer->accepted()) {
        KeepBuffer(kind, *answer, buffer, streams);
    }
    if (answer && answer->accepted() && !given.Flag("print")) {
        try {
            return Carry(kind, *answer, caret, given, environment);
        } catch (const UsageError& error) {
            throw UsageError("what was chosen in the dialog cannot be done: " + std::string(error.what()));
        }
    }
    streams.err.Write(warnings.text);
    if (!answer) {
        Messages(streams, false)
            .Error({{},
                    0,
                    answer.error() +
                        "; without a window: " + LineWithoutWindow(kind, given, caret, environment)});
        return ExitStatus::Failed;
    }
    if (given.Flag("print")) {
        streams.out.Write(Dump(answer->object()));
    }
    if (!answer->accepted()) {
        Messages(streams, given.Flag("quiet")).Note("the dialog was cancelled; nothing was changed");
        return ExitStatus::Cancelled;
    }
    return ExitStatus::Done;
}

}  // namespace lintara::cli

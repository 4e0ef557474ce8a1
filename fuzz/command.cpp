// Any bytes as a component that the editing commands read from standard input: each run ends with a status
// and a reason, what it writes opens again with the same procedures, and numbers or custom code go in and out
// without a trace.
#include "base/constants.h"
#include "base/settings_table.h"
#include "cli/commands/commands.h"
#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options/given_options.h"
#include "cli/options/option_reader.h"
#include "cli/options/usage_error.h"
#include "cli/streams.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "platform/memory_settings.h"
#include "workspace/component_file.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

namespace lintara::fuzz {
namespace {

using Option = std::pair<std::string_view, std::string>;

// A command and its options, as the command line would give them.
struct Request {
    std::string_view command;
    std::vector<Option> options = {};
};

struct Outcome {
    int status = 0;
    std::string out;
    std::string err;
};

constexpr std::string_view fileName = "Module1.bas";
constexpr std::array codePages = {"1252", "1252", "932", "65001", "1200"};

std::shared_ptr<SettingsStore> Settings() {
    auto settings = std::make_shared<platform::MemorySettings>();
    const SettingInfo& code = *FindSetting(constants::LastCustomCodeKey);
    Require(settings->Save(code.name(), u"x = 1\r\n' y").has_value(), "memory takes a setting");
    return settings;
}

// What the parser of command lines does is left out: it takes ten times as long as the work.
cli::ExitStatus Run(const Request& request, std::string_view codePage, cli::Environment& environment) {
    const auto& commands = cli::Commands();
    const auto command = std::ranges::find(commands, request.command, &cli::CommandInfo::name);
    Require(command != commands.end(), "the command exists", request.command);
    cli::GivenOptions given;
    for (const auto& [name, value] : request.options) {
        Require(command->Option(name) != nullptr, "the command has the option", name);
        given.Add(name, {{value}});
    }
    given.Add("stdin-filename", {{std::string(fileName)}});
    given.Add("code-page", {{std::string(codePage)}});
    try {
        return command->run(cli::OptionReader(*command, std::move(given), {"-"}), environment);
    } catch (const cli::UsageError& error) {
        Require(false, "the options are right", error.what());
        throw;
    }
}

Outcome Run(const Request& request, const std::string& input, std::string_view codePage) {
    cli::StringSink out;
    cli::StringSink err;
    cli::StringSource in;
    in.text = input;
    cli::Environment environment{.streams = {.in = in, .out = out, .err = err}};
    environment.platform.settings = Settings();
    const auto status = static_cast<int>(Run(request, codePage, environment));
    Require(status >= 0 && status <= 4, "a run ends with a status that is no fault of the command", err.text);
    Require(status <= 1 || !err.text.empty(), "a run that fails says why");
    return {status, std::move(out.text), std::move(err.text)};
}

// Names and kinds in order; nullopt for bytes that are no component.
auto ProceduresOf(const std::string& bytes, std::string_view codePage) {
    using Procedure = std::tuple<Text, hostmodel::MemberKind, bool, bool>;
    std::optional<std::vector<Procedure>> procedures;
    const auto file = workspace::ParseComponentFile(fileName, hostmodel::ComponentType::Module, bytes,
                                                    *workspace::FindEncoding(codePage));
    if (file) {
        procedures.emplace();
        for (const auto& p : workspace::Module(bytes, file->codeBegin, file->encoding).Procedures()) {
            procedures->emplace_back(p.name, p.kind, p.isFunction, p.closed);
        }
    }
    return procedures;
}

// The command's answer to any code: what it writes has the procedures that it read. The bytes that come out.
std::string Edited(const Request& request, const std::string& bytes, std::string_view codePage) {
    const Outcome outcome = Run(request, bytes, codePage);
    if (outcome.status != 0) {
        return bytes;
    }
    Require(ProceduresOf(outcome.out, codePage) == ProceduresOf(bytes, codePage),
            "an edit keeps all procedures", outcome.err);
    return outcome.out;
}

void CheckCustomCode(Input& input, std::string_view codePage) {
    static constexpr std::array places = {"first", "last"};
    const std::string id = std::to_string(input.Between(-1, 14));
    const Request in = {"custom insert", {{"id", id}, {"where", input.Pick(places)}}};
    const Request out = {"custom remove", {{"id", id}}};
    const std::string bytes = input.Rest();
    const std::string clean = Edited(out, bytes, codePage);
    RequireSame(Edited(out, Edited(in, clean, codePage), codePage), clean,
                "custom code goes in and out without a trace");
}

void CheckNumbers(Input& input, std::string_view codePage) {
    const std::string step = std::to_string(input.Between(1, 30000));
    Request in = {"insert", {{"line-numbers", "true"}}};
    in.options.emplace_back(input.Flag() ? Option("step", step) : Option("numbering", "module"));
    const std::string bytes = input.Rest();
    const Request out = {"remove", {{"line-numbers", "true"}}};
    const std::string clean = Edited(out, bytes, codePage);
    // Numbers that the removal keeps, and those of other widths, are there before and after.
    if (Edited(out, clean, codePage) == clean) {
        RequireSame(Edited(out, Edited(in, clean, codePage), codePage), clean,
                    "numbers go in and out without a trace");
    }
}

void CheckHandlers(Input& input, std::string_view codePage) {
    Request in = {"insert", {{"error-handlers", "true"}, {"label", "zzHandler"}}};
    Request out = {"remove", {{"error-handlers", "true"}, {"label", "zzHandler"}}};
    for (const std::string_view option : {"line-numbers", "refresh"}) {
        if (input.Flag()) {
            in.options.emplace_back(option, "true");
        }
    }
    if (input.Flag()) {
        out.options.emplace_back("line-numbers", "true");
    }
    const std::string bytes = input.Rest();
    const std::string handled = Edited(in, bytes, codePage);
    const std::string removed = Edited(out, handled, codePage);
    Require(ProceduresOf(removed, codePage) == ProceduresOf(bytes, codePage),
            "handlers that go in and out keep all procedures");
}

// Without guards nothing is promised but an end with a status.
void RunExactly(Input& input, std::string_view codePage) {
    static const std::array<Request, 5> requests = {
        {{"insert", {{"error-handlers", "true"}, {"line-numbers", "true"}, {"exact", "true"}}},
         {"remove", {{"error-handlers", "true"}, {"line-numbers", "true"}, {"exact", "true"}}},
         {"custom insert", {{"id", "1"}, {"where", "last"}, {"exact", "true"}}},
         {"insert", {{"line-numbers", "true"}, {"diff", "true"}, {"exact", "true"}}},
         {"insert", {{"line-numbers", "true"}, {"json", "true"}, {"check", "true"}, {"exact", "true"}}}}};
    const Request& request = input.Pick(requests);
    (void)Run(request, input.Rest(), codePage);
}

void Check(Input& input) {
    const std::string_view codePage = input.Pick(codePages);
    switch (input.Between(0, 3)) {
        case 0:
            return CheckCustomCode(input, codePage);
        case 1:
            return CheckNumbers(input, codePage);
        case 2:
            return CheckHandlers(input, codePage);
        default:
            return RunExactly(input, codePage);
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::Check(input);
    return 0;
}

#include "cli/command.h"

#include "cli/commands.h"
#include "cli/options.h"
#include "cli/terminal_text.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <string_view>
#include <unistd.h>

namespace lintara::cli {
namespace {

ExitStatus Dispatch(const Options& options, Streams& streams) {
    switch (options.verb) {
        case Verb::List:
            return RunListCommand(options, streams);
        case Verb::Insert:
        case Verb::Remove:
            return RunEditCommand(options, streams);
        case Verb::Member:
            return RunMemberCommand(options, streams);
        case Verb::Recover:
            return RunRecoverCommand(options, streams);
    }
    return ExitStatus::Usage;
}

ExitStatus RunChecked(std::span<const std::string> arguments, Streams& streams) {
    const auto options = ParseCommandLine(arguments);
    if (!options) {
        streams.out.Write(options.error().out);
        streams.err.Write(options.error().err);
        return options.error().status;
    }
    return Dispatch(*options, streams);
}

bool EnvironmentHas(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

bool TerminalIsDumb() {
    const char* terminal = std::getenv("TERM");
    return terminal != nullptr && std::string_view(terminal) == "dumb";
}

}  // namespace

ExitStatus Run(std::span<const std::string> arguments, Streams& streams) {
    ExitStatus status = ExitStatus::Failed;
    try {
        status = RunChecked(arguments, streams);
    } catch (const std::exception& exception) {
        streams.err.Write("lintara: error: " + Printable(std::string_view(exception.what())) + "\n");
        return ExitStatus::Failed;
    }
    if (streams.out.failed() && (status == ExitStatus::Done || status == ExitStatus::ChangesFound)) {
        streams.err.Write("lintara: error: standard output could not be written\n");
        return ExitStatus::Failed;
    }
    return status;
}

int Main(int argc, char** argv) {
#ifdef SIGXFSZ
    // A file that outgrows its limit is an error like a full disk, not the end of the process.
    std::signal(SIGXFSZ, SIG_IGN);
#endif
    DescriptorSink out(STDOUT_FILENO);
    DescriptorSink err(STDERR_FILENO);
    Streams streams{.out = out, .err = err};
    streams.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
    streams.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
    streams.wantsColor = !EnvironmentHas("NO_COLOR") && !TerminalIsDumb();
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    return static_cast<int>(Run(arguments, streams));
}

}  // namespace lintara::cli

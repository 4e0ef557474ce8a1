#include "cli/command.h"

#include "cli/machine.h"
#include "cli/options/command_line.h"
#include "cli/options/layers.h"
#include "cli/output/terminal_text.h"

#include <csignal>
#include <cstdlib>
#include <exception>
#include <new>
#include <string_view>
#include <unistd.h>

namespace lintara::cli {
namespace {

ExitStatus RunChecked(std::span<const std::string> arguments, Environment& environment, Connect connect) {
    Streams& streams = environment.streams;
    const auto given = ParseCommandLine(arguments);
    if (!given) {
        streams.out.Write(given.error().out);
        streams.err.Write(given.error().err);
        return given.error().status;
    }
    environment.commandLine.assign(arguments.begin(), arguments.end());
    connect(environment);
    try {
        return given->command().run(WithLayers(*given, environment), environment);
    } catch (const UsageError& error) {
        streams.err.Write(Complaint(given->command(), error.what()));
        return ExitStatus::Usage;
    }
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

ExitStatus Run(std::span<const std::string> arguments, Environment& environment, Connect connect) {
    Streams& streams = environment.streams;
    ExitStatus status = ExitStatus::Failed;
    try {
        status = RunChecked(arguments, environment, connect);
    } catch (const std::bad_alloc&) {
        streams.err.Write(
            "lintara: error: out of memory: this takes more than the machine, or the limit set for this "
            "command, gives; try fewer components at once\n");
        return ExitStatus::Failed;
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
    DescriptorSource in(STDIN_FILENO);
    DescriptorSink out(STDOUT_FILENO);
    DescriptorSink err(STDERR_FILENO);
    Environment environment{.streams = {.in = in, .out = out, .err = err}};
    Streams& streams = environment.streams;
    streams.outIsTerminal = ::isatty(STDOUT_FILENO) == 1;
    streams.errIsTerminal = ::isatty(STDERR_FILENO) == 1;
    streams.wantsColor = !EnvironmentHas("NO_COLOR") && !TerminalIsDumb();
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    return static_cast<int>(Run(arguments, environment, ConnectToMachine));
}

}  // namespace lintara::cli

// lintara serve: the library for programs, over standard input and output.
#include "cli/commands/commands.h"
#include "cli/options/option_reader.h"
#include "cli/options/shared_options.h"
#include "cli/serve/serve_run.h"

namespace lintara::cli {
namespace {

constexpr std::string_view ServeFooter = R"(
The protocol is JSON-RPC 2.0, UTF-8, one JSON value a line; answers come in the order of the
requests, and arguments go by name. A batch (an array of requests) is answered with an array.
Lines and columns of code count from 1; lines of one text are joined by \r\n. A line of the
protocol may have 256 MiB.

A session; what the program sends is marked by > and takes one line, long ones are broken here:
  $ lintara serve --isolated
  > {"jsonrpc":"2.0","id":1,"method":"workspace.newProject","params":{"name":"Demo"}}
  {"jsonrpc":"2.0","id":1,"result":{}}
  > {"jsonrpc":"2.0","id":2,"method":"workspace.addComponent","params":{"project":"Demo",
     "name":"Main","type":1,"text":"Sub A()\r\n    Beep\r\n    Beep\r\nEnd Sub"}}
  {"jsonrpc":"2.0","id":2,"result":{}}
  > {"jsonrpc":"2.0","id":3,"method":"lintara.LineNumbersInserter","params":{
     "sProject":"Demo","sComponent":"Main","sMember":"A","iLNBase":100,"iLNStep":10}}
  {"jsonrpc":"2.0","id":3,"result":{}}
  > {"jsonrpc":"2.0","id":4,"method":"codemodule.Text","params":{"project":"Demo",
     "component":"Main"}}
  {"jsonrpc":"2.0","id":4,"result":{"value":
     "Sub A()\r\n100:     Beep\r\n110:     Beep\r\nEnd Sub"}}

"workspace.open" opens a project from disk, "workspace.changes" shows what a save would write,
"workspace.save" writes it, all files or none. docs/automation.md has all methods and errors,
samples/clients has clients in two languages.

Exit status:
  0  the input has ended
  2  wrong usage
  3  the input could not be read, or nobody reads the answers any more
)";

OptionInfo AllowSavingOutside() {
    OptionInfo option = AllowOutsideOption();
    option.description = "Save files below DIR, too, though it lies outside of the opened folder; repeatable";
    option.group = {};
    return option;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    return RunServe({.isolated = given.Flag("isolated"), .allowedOutside = ReadAllowedOutside(given)},
                    environment);
}

}  // namespace

CommandInfo ServeCommand() {
    return {.name = "serve",
            .description = "Serve other programs: the library over standard input and output",
            .footer = ServeFooter,
            .arguments = {},
            .options = {{.name = "isolated",
                         .description = "Keep settings and code database in memory, apart from the user's"},
                        AllowSavingOutside()},
            .run = Run};
}

}  // namespace lintara::cli

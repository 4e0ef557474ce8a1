#include "tests/cli/command_run.h"

#include "platform/sqlite_engine.h"

#include <sstream>

namespace lintara::cli {

void CommandTest::WriteShop() const {
    Write("Shop.vbp",
          "Type=Exe\r\nModule=Main; Main.bas\r\nModule=Stock; lib\\Stock.bas\r\nName=\"Shop\"\r\n");
    Write("Main.bas",
          "Attribute VB_Name = \"Main\"\r\n"
          "Option Explicit\r\n"
          "Private count As Long\r\n"
          "\r\n"
          "Public Sub Main()\r\n"
          "    count = 1\r\n"
          "    Sell count\r\n"
          "End Sub\r\n"
          "\r\n"
          "' takes one away\r\n"
          "Private Function Sell(ByVal n As Long) As Long\r\n"
          "    Sell = n - 1\r\n"
          "End Function\r\n");
    Write("lib/Stock.bas",
          "Attribute VB_Name = \"Stock\"\r\n"
          "Public Property Get Size() As Long\r\n"
          "    Size = 3\r\n"
          "End Property\r\n"
          "Public Property Let Size(ByVal v As Long)\r\n"
          "    Debug.Print v\r\n"
          "End Property\r\n"
          "Sub Odd()\r\n"
          "    Debug.Print 1\r\n"
          "End Sub ' odd\r\n");
}

Outcome CommandTest::Run(std::string_view line) const {
    std::istringstream words{std::string(line)};
    std::vector<std::string> arguments;
    for (std::string word; words >> word;) {
        arguments.push_back(word.starts_with('@') ? Path(word.substr(1)) : word);
    }
    return Run(arguments);
}

Outcome CommandTest::Run(const std::vector<std::string>& arguments) const {
    StringSink out;
    StringSink err;
    StringSource in;
    in.text = input;
    Environment environment{.streams = {.in = in, .out = out, .err = err}};
    environment.platform.settings = settings;
    // Tests do not wait for each other's locks.
    environment.platform.databaseEngine =
        std::make_shared<platform::SqliteEngine>(nullptr, std::chrono::milliseconds(50));
    environment.platform.libraryFolder = libraryFolder;
    environment.stateFolder = state_.path();
    if (answers) {
        environment.ask = [&err, left = *answers](std::string_view question) mutable {
            err.Write(question);
            const auto answer = left.empty() ? std::nullopt : std::optional(left.front());
            left.erase(left.begin(), left.begin() + (answer ? 1 : 0));
            return answer;
        };
    }
    Streams& streams = environment.streams;
    streams.outIsTerminal = outIsTerminal;
    streams.errIsTerminal = errIsTerminal;
    streams.wantsColor = wantsColor;
    const ExitStatus status = cli::Run(arguments, environment);
    // Messages and results name the folder, which is another one each time.
    return {static_cast<int>(status), Replaced(out.text, folder().string(), "DIR"),
            Replaced(err.text, folder().string(), "DIR")};
}

std::string Replaced(std::string_view text, std::string_view sought, std::string_view replacement) {
    std::string result;
    for (std::size_t at = 0;;) {
        const std::size_t found = text.find(sought, at);
        result += text.substr(at, found - at);
        if (found == std::string_view::npos) {
            return result;
        }
        result += replacement;
        at = found + sought.size();
    }
}

}  // namespace lintara::cli

// A project whose names and code are made to steer the terminal of whoever looks at it.
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

// Sets the title, clears the screen, and the same in one character of C1 and backwards in a text.
constexpr const char* Steering =
    "\x1b]0;title\x07\x1b[2J\xc2\x9b"
    "2J\xe2\x80\xae\r\x08";

// The bytes that a terminal takes as commands. Colours and the progress bar are the program's own.
std::string Commands(std::string_view out) {
    std::string text(out);
    for (const std::string own : {"\x1b[1m", "\x1b[31m", "\x1b[32m", "\x1b[36m", "\x1b[m", "\x1b[K"}) {
        text = Replaced(text, own, "");
    }
    std::string found;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isC1 =
            byte == 0xc2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xa0;
        const bool turns = text.compare(i, 3, "\xe2\x80\xae") == 0;
        if ((byte < 0x20 && byte != '\n' && byte != '\t') || byte == 0x7f || isC1 || turns) {
            found += text.substr(i, 8) + "|";
        }
    }
    return found;
}

class TerminalSafety : public testing::TestWithParam<const char*> {
  protected:
    void SetUp() override {
        test.outIsTerminal = true;
        test.errIsTerminal = true;
        const std::string name = Steering;
        test.Write("P.vbp", "Module=M" + name + "; M" + name + ".bas\r\nName=\"P" + name + "\"\r\n");
        fs::create_directories(test.Path("in"));
        test.Write("in/M" + name + ".bas",
                   "\xef\xbb\xbf"
                   "Attribute VB_Name = \"M" +
                       name +
                       "\"\r\n"
                       "Const c" +
                       name +
                       " = 1\r\n"
                       "Sub A()\r\n    x = \"" +
                       name +
                       "\"\r\n    Beep\r\nEnd Sub\r\n"
                       "Sub A()\r\n    x = \"" +
                       name +
                       "\"\r\nEnd Sub\r\n"
                       "Sub B()\r\nhErr" +
                       name + ": \r\n10 Beep '" + name +
                       "\r\nEnd Sub\r\n"
                       "' " +
                       name + "\r\n");
        test.Write("in/Other" + name + ".bas", "Begin\r\nSub A()\r\n  Beep\r\nEnd Sub\r\n");
        test.Write("bad" + name + ".vbp", "Module=M; none" + name + ".bas\r\n");
        test.Write("toml/a.bas", "Sub A()\r\n  Beep\r\nEnd Sub\r\n");
        test.Write("toml/.lintara.toml", "\"un\\u001b[2Jknown\" = \"x\"\n");
        test.Write("template.txt", "x = \"" + name + "\"\r\n");
    }

    CommandTest test;
};

TEST_P(TerminalSafety, NothingSteersTheTerminal) {
    std::string line = GetParam();
    std::vector<std::string> arguments;
    std::string word;
    for (const char c : line + " ") {
        if (c != ' ') {
            word += c;
            continue;
        }
        word = Replaced(word, "NAME", Steering);
        arguments.push_back(word.starts_with('@') ? test.Path(word.substr(1)) : word);
        word.clear();
    }
    test.input = "x = \"" + std::string(Steering) + "\"\r\n";
    const Outcome outcome = test.Run(arguments);
    EXPECT_FALSE((outcome.out + outcome.err).empty()) << line;
    EXPECT_EQ(Commands(outcome.out), "") << line;
    EXPECT_EQ(Commands(outcome.err), "") << line;
}

INSTANTIATE_TEST_SUITE_P(
    Lines, TerminalSafety,
    testing::Values(
        "list @in", "list @in --json", "check @in", "check @in --json", "list @P.vbp", "list @badNAME.vbp",
        "insert @in --line-numbers --diff", "insert @in --line-numbers --list",
        "insert @in --line-numbers --check", "insert @in --error-handlers --line-numbers",
        "insert @in --line-numbers --json", "insert @in --error-handlers --template @template.txt --diff",
        "insert @in --line-numbers --exclude NAME", "insert @in --line-numbers --component NAME",
        "insert @in --line-numbers --template @noNAME", "insert @in --line-numbers --allow-outside @noNAME",
        "insert @in --line-numbers --output @outNAME", "insert - --stdin-filename aNAME.bas --line-numbers",
        "insert - --stdin-filename aNAME.bas --line-numbers --diff", "remove @in --line-numbers --check",
        "replace @in --component MNAME --find Beep --replace Stop --diff",
        "custom insert @in --id 1 --code @template.txt --diff", "undo @in", "recover @in",
        "where @in --erl 10", "where @in --erl 10 --component MNAME --json", "list @nothingNAME",
        "config @in", "config @nothingNAME", "list @toml", "history @in", "member @in --at MNAME:5",
        "member @in --at NAME:5 --json", "template expand @in --at MNAME:5", "settings list",
        "settings get NAME", "buffer list --database @noNAME", "listNAME", "list @in --NAME"));

}  // namespace
}  // namespace lintara::cli

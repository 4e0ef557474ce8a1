// Completions and the manual page: what they say, and that the programs they are for take them.
#include "cli/reference/reference.h"

#include "tests/cli/command_run.h"

#include <array>
#include <cstdio>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli::reference {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view sizes[] = {"small", "large"};

// A program whose texts hold all that means something to a shell or a formatter.
const std::vector<CommandInfo>& OddCommands() {
    static const std::vector<CommandInfo> commands = {
        {.name = "make",
         .description = "It's [a:b] \"quoted\" \\ $HOME `x`",
         .footer = "\nExample:\n.dots 'first'\n'quote -x\nback\\slash caf\u00e9\n",
         .arguments = {{.name = "PATH", .description = "File"}},
         .options =
             {{.name = "size",
               .kind = OptionKind::Text,
               .valueName = "SIZE",
               .description = ".small or 'large'",
               .shortName = 's',
               .values = sizes},
              {.name = "into", .kind = OptionKind::Text, .valueName = "DIR", .description = "Where to"},
              {.name = "from", .kind = OptionKind::Texts, .valueName = "FILE", .description = "What"},
              {.name = "free", .kind = OptionKind::Text, .valueName = "N", .description = "Any"},
              {.name = "all", .description = "All of it"}}},
        {.name = "tool get",
         .description = "Get one",
         .footer = "",
         .arguments = {{.name = "SIZE", .description = "Which", .values = sizes}},
         .options = {}},
    };
    return commands;
}

constexpr CommandFamily oddFamilies[] = {{"tool", "Some tools"}};

Program OddProgram() {
    return {.description = "Makes things.",
            .footer = "\nMore.\n",
            .version = "1.2",
            .commands = OddCommands(),
            .families = oddFamilies};
}

// The lines that a shell command prints, standard error included.
std::vector<std::string> LinesOf(const std::string& command) {
    std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    std::string text;
    std::array<char, 4096> buffer;
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), pipe)) > 0;) {
        text.append(buffer.data(), count);
    }
    ::pclose(pipe);
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

bool Has(const std::string& program) {
    return LinesOf("command -v " + program) != std::vector<std::string>();
}

class BashTest : public testing::Test {
  protected:
    // What bash proposes at the end of these words.
    std::vector<std::string> Proposed(const Program& program, const std::vector<std::string>& words) {
        folder_.Write("completion.bash", BashCompletion(program));
        std::string script = "cd '" + folder_.path().string() + "'\nsource ./completion.bash\nCOMP_WORDS=(";
        for (const std::string& word : words) {
            script += " '" + word + "'";
        }
        script += ")\nCOMP_CWORD=" + std::to_string(words.size() - 1) +
                  "\n_lintara lintara\nfor word in \"${COMPREPLY[@]}\"; do printf '%s\\n' \"$word\"; done\n";
        return LinesOf("bash --norc '" + folder_.Write("run.bash", script).string() + "'");
    }
    std::vector<std::string> Odd(const std::vector<std::string>& words) {
        return Proposed(OddProgram(), words);
    }
    std::vector<std::string> Ours(const std::vector<std::string>& words) {
        return Proposed(ThisProgram(), words);
    }

    support::TemporaryFolder folder_;
};

TEST_F(BashTest, CompletesCommandsAndThoseOfFamilies) {
    EXPECT_THAT(Odd({"lintara", ""}), ElementsAre("make", "tool", "--help", "--version"));
    EXPECT_THAT(Odd({"lintara", "m"}), ElementsAre("make"));
    EXPECT_THAT(Odd({"lintara", "tool", ""}), ElementsAre("get", "--help"));
    EXPECT_THAT(Ours({"lintara", "ins"}), ElementsAre("insert"));
    EXPECT_THAT(Ours({"lintara", "settings", ""}), ElementsAre("list", "get", "set", "reset", "--help"));
}

TEST_F(BashTest, CompletesOptions) {
    EXPECT_THAT(Odd({"lintara", "make", "--"}),
                ElementsAre("--size", "--into", "--from", "--free", "--all", "--help"));
    EXPECT_THAT(Odd({"lintara", "tool", "get", "-"}), ElementsAre("--help", "-h"));
    EXPECT_THAT(Ours({"lintara", "insert", "--line-n"}), ElementsAre("--line-numbers"));
    EXPECT_THAT(Ours({"lintara", "insert", "Shop.vbp", "--no-c"}), ElementsAre("--no-config"));
}

TEST_F(BashTest, CompletesFixedValues) {
    EXPECT_THAT(Odd({"lintara", "make", "--size", ""}), ElementsAre("small", "large"));
    EXPECT_THAT(Odd({"lintara", "make", "-s", "l"}), ElementsAre("large"));
    EXPECT_THAT(Odd({"lintara", "make", "--size", "=", "s"}), ElementsAre("small"));
    EXPECT_THAT(Odd({"lintara", "make", "--size", "="}), ElementsAre("small", "large"));
    EXPECT_THAT(Odd({"lintara", "make", "--free", ""}), IsEmpty());
    EXPECT_THAT(Odd({"lintara", "tool", "get", ""}), ElementsAre("small", "large"));
    EXPECT_THAT(Odd({"lintara", "tool", "get", "small", ""}), IsEmpty());
    EXPECT_THAT(Ours({"lintara", "insert", "--scope", "p"}), ElementsAre("project", "procedure"));
    EXPECT_THAT(Ours({"lintara", "insert", "--numbering", ""}), ElementsAre("procedure", "module"));
    EXPECT_THAT(Ours({"lintara", "custom", "insert", "--where", ""}), ElementsAre("first", "last", "line"));
    EXPECT_THAT(Ours({"lintara", "settings", "get", "LN"}), ElementsAre("LNBase", "LNStep"));
}

TEST_F(BashTest, CompletesFilesAndFolders) {
    folder_.Write("My Shop.vbp", "");
    folder_.Write("sub/Main.bas", "");
    EXPECT_THAT(Odd({"lintara", "make", "My"}), ElementsAre("My Shop.vbp"));
    EXPECT_THAT(Odd({"lintara", "make", "--all", "sub/"}), ElementsAre("sub/Main.bas"));
    EXPECT_THAT(Odd({"lintara", "make", "--from", "M"}), ElementsAre("My Shop.vbp"));
    EXPECT_THAT(Odd({"lintara", "make", "--into", ""}), ElementsAre("sub"));
    EXPECT_THAT(Ours({"lintara", "insert", "-o", ""}), ElementsAre("sub"));
    EXPECT_THAT(Ours({"lintara", "list", "My"}), ElementsAre("My Shop.vbp"));
}

TEST(Completion, OfZshEscapesWhatItsSpecificationsReserve) {
    const std::string text = ZshCompletion(OddProgram());
    EXPECT_THAT(text, testing::StartsWith("#compdef lintara\n"));
    EXPECT_THAT(text, HasSubstr("'(--size -s)--size=[.small or '\\''large'\\'']:SIZE:(small large)'"));
    EXPECT_THAT(text, HasSubstr("'(--size -s)-s[.small or '\\''large'\\'']:SIZE:(small large)'"));
    EXPECT_THAT(text, HasSubstr("'(--into)--into=[Where to]:DIR:_files -/'"));
    EXPECT_THAT(text, HasSubstr("'*--from=[What]:FILE:_files'"));
    EXPECT_THAT(text, HasSubstr("'(--all)--all[All of it]'"));
    EXPECT_THAT(text, HasSubstr("':PATH:_files'"));
    EXPECT_THAT(text, HasSubstr("'make:It'\\''s [a:b] \"quoted\" \\ $HOME `x`'"));
    EXPECT_THAT(text, HasSubstr("get) _lintara_tool_get ;;"));
    EXPECT_THAT(text, HasSubstr("\n_lintara_tool_get() {\n"));
}

TEST(Completion, OfFishEscapesQuotes) {
    const std::string text = FishCompletion(OddProgram());
    EXPECT_THAT(text,
                HasSubstr("-n \"__lintara_is ''\" -a 'make' -d 'It\\'s [a:b] \"quoted\" \\\\ $HOME `x`'\n"));
    EXPECT_THAT(text, HasSubstr("-n \"__lintara_is 'tool'\" -a 'get' -d 'Get one'\n"));
    EXPECT_THAT(text, HasSubstr("-n \"__lintara_is 'make'\" -l size -s s -x -a 'small large' -d '.small or "
                                "\\'large\\''\n"));
    EXPECT_THAT(text, HasSubstr("-n \"__lintara_is 'make'\" -F\n"));
    EXPECT_THAT(text, HasSubstr("-n \"__lintara_is 'tool get'\" -a 'small large'\n"));
    EXPECT_THAT(text, HasSubstr("-l free -x -d 'Any'\n"));
}

TEST(Completion, IsAcceptedByItsShells) {
    const support::TemporaryFolder folder;
    const auto complaints = [&](const std::string& shell, const std::string& text) {
        return LinesOf(shell + " -n '" + folder.Write("completion", text).string() + "'");
    };
    for (const Program& program : {OddProgram(), ThisProgram()}) {
        EXPECT_THAT(complaints("bash", BashCompletion(program)), IsEmpty());
        if (Has("zsh")) {
            EXPECT_THAT(complaints("zsh", ZshCompletion(program)), IsEmpty());
        }
        if (Has("fish")) {
            EXPECT_THAT(complaints("fish", FishCompletion(program)), IsEmpty());
        }
    }
}

TEST(ManualPage, EscapesWhatTheFormatterReserves) {
    const std::string page = ManualPage(OddProgram());
    EXPECT_THAT(page, HasSubstr(".TH LINTARA 1 \"\" \"lintara 1.2\" \"User Commands\"\n"));
    EXPECT_THAT(page, HasSubstr(".SH NAME\nlintara \\- Makes things\n"));
    EXPECT_THAT(page, HasSubstr("It\\(aqs [a:b] \\(dqquoted\\(dq \\e $HOME \\(gax\\(ga.\n"));
    EXPECT_THAT(
        page,
        HasSubstr(".TP\n\\fB\\-\\-size\\fR, \\fB\\-s\\fR \\fISIZE\\fR\n\\&.small or \\(aqlarge\\(aq\n"));
    EXPECT_THAT(page, HasSubstr("\n\\&.dots \\(aqfirst\\(aq\n\\(aqquote \\-x\nback\\eslash caf\\[u00E9]\n"));
    EXPECT_THAT(page, HasSubstr(".SS \"lintara tool get\"\n"));
}

TEST(ManualPage, HoldsOnlyRequestsOfTheMacros) {
    std::istringstream page(ManualPage(ThisProgram()));
    for (std::string line; std::getline(page, line);) {
        EXPECT_FALSE(line.starts_with('\'')) << line;
        if (line.starts_with('.')) {
            EXPECT_THAT((std::vector<std::string>{".\\\"", ".TH", ".SH", ".SS", ".TP", ".PP", ".nf", ".fi",
                                                  ".br", ".ad", ".nh"}),
                        Contains(line.substr(0, line.find(' '))));
        }
    }
}

TEST(ManualPage, TellsOfEveryCommandAndOption) {
    const std::string page = ManualPage(ThisProgram());
    for (const CommandInfo& command : ThisProgram().commands) {
        const std::size_t section = page.find(".SS \"lintara " + Replaced(command.name, "-", "\\-") + "\"\n");
        ASSERT_NE(section, std::string::npos) << command.name;
        const std::string text = page.substr(section, page.find("\n.SS", section) - section);
        for (const OptionInfo& option : command.options) {
            EXPECT_THAT(text, HasSubstr("\n\\fB\\-\\-" + Replaced(option.name, "-", "\\-") + "\\fR"));
        }
    }
}

TEST(ManualPage, IsFormattedWithoutWarnings) {
    if (!Has("groff")) {
        GTEST_SKIP() << "groff is not installed";
    }
    const support::TemporaryFolder folder;
    for (const Program& program : {OddProgram(), ThisProgram()}) {
        const std::string file = "'" + folder.Write("lintara.1", ManualPage(program)).string() + "'";
        EXPECT_THAT(LinesOf("groff -man -Tutf8 -ww -z " + file), IsEmpty());
    }
    folder.Write("odd.1", ManualPage(OddProgram()));
    const auto lines = LinesOf("groff -man -Tutf8 -P-cbou '" + (folder / "odd.1").string() + "'");
    EXPECT_THAT(lines, Contains(HasSubstr("It's [a:b] \"quoted\" \\ $HOME `x`.")));
    EXPECT_THAT(lines, Contains(HasSubstr(".dots 'first'")));
    EXPECT_THAT(lines, Contains(HasSubstr("'quote -x")));
    EXPECT_THAT(lines, Contains(HasSubstr("back\\slash caf\u00e9")));
}

}  // namespace
}  // namespace lintara::cli::reference

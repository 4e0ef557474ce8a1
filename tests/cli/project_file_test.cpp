#include "cli/options/project_file.h"

#include "cli/commands/commands.h"
#include "cli/options/usage_error.h"
#include "tests/cli/command_run.h"
#include "tests/support/other_process.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

OptionInfo Shared(std::string_view name, OptionKind kind) {
    return {.name = name, .kind = kind, .description = {}, .inProjectFile = true};
}

const std::vector<CommandInfo>& Table() {
    static const std::vector<CommandInfo> commands = [] {
        OptionInfo path = Shared("template", OptionKind::Text);
        path.isPath = true;
        const OptionInfo flag = Shared("line-numbers", OptionKind::Flag);
        const OptionInfo exclude = Shared("exclude", OptionKind::Texts);
        std::vector<CommandInfo> table;
        table.push_back({.name = "insert",
                         .description = {},
                         .footer = {},
                         .arguments = {},
                         .options = {flag,
                                     Shared("base", OptionKind::Text),
                                     path,
                                     exclude,
                                     {.name = "list", .description = {}},
                                     {.name = "diff", .description = {}}}});
        table.push_back({.name = "list",
                         .description = {},
                         .footer = {},
                         .arguments = {},
                         .options = {exclude, Shared("recursive", OptionKind::Flag)}});
        table.push_back({.name = "custom insert",
                         .description = {},
                         .footer = {},
                         .arguments = {},
                         .options = {exclude}});
        return table;
    }();
    return commands;
}

class ProjectFileTest : public testing::Test {
  protected:
    ProjectFile Read(std::string_view bytes) {
        return ReadProjectFile(folder_.Write(".lintara.toml", bytes), Table());
    }
    // What is complained of, without the folder; "" when nothing is.
    std::string Complaint(std::string_view bytes) {
        try {
            static_cast<void>(Read(bytes));
        } catch (const UsageError& error) {
            return Replaced(error.what(), folder_.path().string(), "DIR");
        }
        return "";
    }
    static std::vector<std::string> Texts(const GivenOptions& options, std::string_view name) {
        const GivenOption* option = options.Find(name);
        return option == nullptr ? std::vector<std::string>{"(none)"} : option->texts;
    }

    support::TemporaryFolder folder_;
};

TEST_F(ProjectFileTest, HoldsTextsNumbersFlagsAndLists) {
    const struct {
        std::string_view line;
        std::string_view option;
        std::vector<std::string> texts;
    } cases[] = {
        {"base = 20000", "base", {"20000"}},
        {"base = 0x10", "base", {"16"}},
        {"base = -5", "base", {"-5"}},
        {"base = 0.5", "base", {"0.5"}},
        {"base = 20000.0", "base", {"20000"}},
        {"base = \"20000\"", "base", {"20000"}},
        {"base = \"caf\u00e9\"", "base", {"caf\u00e9"}},
        {"'base' = '''a\nb'''", "base", {"a\nb"}},
        {"line-numbers = true", "line-numbers", {"true"}},
        {"line-numbers = false # not here", "line-numbers", {"false"}},
        {"exclude = 'One'", "exclude", {"One"}},
        {"exclude = [\"One\", \"*.Class_Initialize\"]", "exclude", {"One", "*.Class_Initialize"}},
        {"exclude = []", "exclude", {}},
        {"\xEF\xBB\xBF"
         "base = 1\r\n",
         "base",
         {"1"}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Texts(Read(c.line).shared, c.option), c.texts) << c.line;
    }
    EXPECT_THAT(Texts(Read("").shared, "base"), ElementsAre("(none)"));
}

TEST_F(ProjectFileTest, TellsWhereEachOptionStands) {
    const ProjectFile file =
        Read("# numbers\nbase = 1\n\nexclude = [\n  'A',\n]\n[insert]\nline-numbers = true\n");
    const auto place = [&](const GivenOptions& options, std::string_view name) {
        EXPECT_TRUE(options.IsFrom(OptionOrigin::ProjectFile, name));
        return Replaced(options.Find(name)->place, folder_.path().string(), "DIR");
    };
    EXPECT_EQ(place(file.shared, "base"), "DIR/.lintara.toml:2");
    EXPECT_EQ(place(file.shared, "exclude"), "DIR/.lintara.toml:4");
    EXPECT_EQ(place(file.ofCommands.at("insert"), "line-numbers"), "DIR/.lintara.toml:8");
}

TEST_F(ProjectFileTest, NamesFilesFromItsOwnFolder) {
    EXPECT_THAT(Texts(Read("template = 'a/handler.txt'").shared, "template"),
                ElementsAre((folder_ / "a/handler.txt").string()));
    EXPECT_THAT(Texts(Read("template = '/etc/handler.txt'").shared, "template"),
                ElementsAre("/etc/handler.txt"));
    // A file of that name, not standard input.
    EXPECT_THAT(Texts(Read("template = '-'").shared, "template"), ElementsAre((folder_ / "-").string()));
}

TEST_F(ProjectFileTest, GivesEachCommandWhatItHas) {
    const ProjectFile file = Read(
        "base = 1\nexclude = ['A']\nrecursive = true\n[insert]\nbase = 2\n[custom.insert]\nexclude = ['B', "
        "'C']\n");
    const auto given = [&](std::size_t command, std::string_view option) {
        return Texts(file.For(Table()[command]), option);
    };
    EXPECT_THAT(given(0, "base"), ElementsAre("2"));
    EXPECT_THAT(given(0, "exclude"), ElementsAre("A"));
    EXPECT_THAT(given(0, "recursive"), ElementsAre("(none)"));
    EXPECT_THAT(given(1, "base"), ElementsAre("(none)"));
    EXPECT_THAT(given(1, "recursive"), ElementsAre("true"));
    EXPECT_THAT(given(2, "exclude"), ElementsAre("B", "C"));
}

TEST_F(ProjectFileTest, MayHoldATableOfACommandThatIsNamedLikeAnOption) {
    EXPECT_THAT(Texts(Read("[list]\nrecursive = true").For(Table()[1]), "recursive"), ElementsAre("true"));
}

TEST_F(ProjectFileTest, ComplainsOfWhatNoCommandTakes) {
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"\nbaes = 1", "DIR/.lintara.toml:2: there is no option 'baes'. Did you mean base?"},
        {"quux = 1",
         "DIR/.lintara.toml:1: there is no option 'quux'. 'lintara config --no-config' shows them all"},
        {"'\\x' = 1", "DIR/.lintara.toml:1: there is no option '\\x'."},
        {"diff = true", "DIR/.lintara.toml:1: 'diff' can be given on the command line only"},
        {"base = true", "DIR/.lintara.toml:1: base takes a text or a number, not true or false"},
        {"base = [1]", "DIR/.lintara.toml:1: base takes a text or a number, not a list"},
        {"base = 2020-01-01", "DIR/.lintara.toml:1: base takes a text or a number, not a date or time"},
        {"base.x = 1", "DIR/.lintara.toml:1: base takes a text or a number, not a table"},
        {"base = ''", "DIR/.lintara.toml:1: base: the value is empty"},
        {"base = \"a\\u0000b\"", "DIR/.lintara.toml:1: base: the value holds a null character"},
        {"line-numbers = 1", "DIR/.lintara.toml:1: line-numbers takes true or false, not a number"},
        {"line-numbers = 'true'", "DIR/.lintara.toml:1: line-numbers takes true or false, not a text"},
        {"exclude = 1", "DIR/.lintara.toml:1: exclude takes a text or a list of texts, not a number"},
        {"exclude = [\n'A',\n2]",
         "DIR/.lintara.toml:3: exclude takes a text or a list of texts, not a number"},
        {"exclude = [['A']]", "DIR/.lintara.toml:1: exclude takes a text or a list of texts, not a list"},
        {"exclude = ['']", "DIR/.lintara.toml:1: exclude: the value is empty"},
        {"insert = 1", "DIR/.lintara.toml:1: 'insert' is a command; write its options below [insert]"},
        {"[insret]", "DIR/.lintara.toml:1: there is no command 'insret'. Did you mean insert?"},
        {"[insert]\nbsae = 1",
         "DIR/.lintara.toml:2: the command 'insert' has no option 'bsae'. Did you mean base?"},
        {"[list]\nbase = 1", "DIR/.lintara.toml:2: the command 'list' has no option 'base'"},
        {"[custom]\nexclude = 'A'",
         "DIR/.lintara.toml:2: below [custom] there are only tables of commands, such as [custom.insert]"},
        {"[custom.remove]\nexclude = 'A'",
         "DIR/.lintara.toml:1: below [custom] there are only tables of commands, such as [custom.insert]"},
        {"[[insert]]\nbase = 1",
         "DIR/.lintara.toml:1: [[insert]] begins a list of tables; write [insert], and that once"},
        {"base = 1\n[[custom.insert]]\nexact = true",
         "DIR/.lintara.toml:2: [[custom.insert]] begins a list of tables; write [custom.insert], and that "
         "once"},
        {"[[template]]\nx = 1",
         "DIR/.lintara.toml:1: [[template]] begins a list of tables; write [template], and that once"},
        {"base = 1\nbase = 2", "DIR/.lintara.toml:2: this is no TOML that can be read: "},
        {"base = 'x\n", "DIR/.lintara.toml:1: this is no TOML that can be read: "},
        {"a b c", "DIR/.lintara.toml:1: this is no TOML that can be read: "},
    };
    for (const auto& [bytes, complaint] : cases) {
        EXPECT_THAT(Complaint(bytes), testing::StartsWith(complaint)) << bytes;
    }
}

std::string Repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

TEST_F(ProjectFileTest, SpeaksOfDepthInItsOwnWords) {
    EXPECT_THAT(
        Complaint("exclude = " + Repeated("[", 400)),
        testing::StartsWith("DIR/.lintara.toml:1: this is no TOML that can be read: lists and tables stand "
                            "too deep in one another"));
}

TEST_F(ProjectFileTest, SurvivesHostileFiles) {
    std::string binary;
    for (int byte = 0; byte < 256; ++byte) {
        binary += static_cast<char>(byte);
    }
    const std::pair<std::string, std::string_view> cases[] = {
        {binary, ":1: this is no TOML that can be read: "},
        {"base = \"\xff\xfe\"", ":1: this is no TOML that can be read: "},
        {"\xff\xfe" + std::string("b\0a\0", 4), ":1: this is no TOML that can be read: "},
        {"base = " + Repeated("[", 500000), ":1: this is no TOML that can be read: "},
        {"base = " + Repeated("{a = ", 100000), ":1: this is no TOML that can be read: "},
        {"base" + Repeated(".a", 400000) + " = 1",
         ":1: this is no TOML that can be read: there are too many dots"},
        {"\n[base" + Repeated(" . 'a'", 150000) + "]",
         ":2: this is no TOML that can be read: there are too many dots"},
        {Repeated("[a.a.a.a.a.a.a.a.a.a.a]\n", 300),
         ":201: this is no TOML that can be read: there are too many dots"},
        {Repeated("# nothing\n", 200000), ": is larger than 1 MiB"},
    };
    for (const auto& [bytes, complaint] : cases) {
        EXPECT_THAT(Complaint(bytes), HasSubstr("DIR/.lintara.toml" + std::string(complaint)))
            << bytes.substr(0, 40);
    }
}

TEST_F(ProjectFileTest, CountsNoDotsInTextsAndComments) {
    const std::string dots = Repeated(".", 3000);
    EXPECT_EQ(Complaint("exclude = ['" + dots + "', \"\\\"" + dots + "\", \"\"] # " + dots),
              "DIR/.lintara.toml:1: exclude: the value is empty");
    EXPECT_EQ(Complaint("base = '''" + dots + "\n'''\nexclude = \"\"\"\"" + dots + "\n\"\"\"\n"), "");
}

TEST_F(ProjectFileTest, EndsInAnErrorOrInOptionsWhateverIsCutOff) {
    const std::string whole =
        "base = 20000\nexclude = [\"One\", 'Two']\n[insert]\nline-numbers = true\n[custom.insert]\nexclude = "
        "\"A\"\n";
    for (std::size_t length = 0; length <= whole.size(); ++length) {
        EXPECT_THAT(Complaint(whole.substr(0, length)),
                    testing::AnyOf(IsEmpty(), HasSubstr("DIR/.lintara.toml:")));
    }
}

TEST_F(ProjectFileTest, OfNoRightsOrOfAnotherKindIsAnErrorOfReading) {
    folder_.Write("none/.lintara.toml", "");
    const auto complaint = [&](const std::filesystem::path& path) -> std::string {
        try {
            static_cast<void>(ReadProjectFile(path, Table()));
        } catch (const UsageError&) {
            return "usage";
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_THAT(complaint(folder_ / "missing"),
                HasSubstr("missing: cannot be read: No such file or directory"));
    EXPECT_THAT(complaint(folder_.path()), HasSubstr("is a folder, not a file"));
    EXPECT_THAT(complaint("/dev/zero"), HasSubstr("/dev/zero: is a device, not a file"));
    const auto file = folder_.Write("locked.toml", "base = 1");
    std::filesystem::permissions(file, std::filesystem::perms::none);
    EXPECT_THAT(support::AsOrdinaryUser(folder_.path(), [&] { return complaint(file); }),
                HasSubstr("locked.toml: cannot be read: Permission denied"));
}

TEST_F(ProjectFileTest, IsTheNearestOneAboveTheProject) {
    folder_.Write("shop/Shop.vbp", "");
    folder_.Write("shop/lib/deep/A.bas", "");
    folder_.Write(".lintara.toml", "");
    const auto found = [&](std::string_view path) {
        const auto file = FindProjectFile(folder_ / path);
        return file ? Replaced(file->string(), std::filesystem::canonical(folder_.path()).string(), "DIR")
                    : "none";
    };
    EXPECT_EQ(found("shop/Shop.vbp"), "DIR/.lintara.toml");
    folder_.Write("shop/.lintara.toml", "");
    for (const std::string_view path : {"shop/Shop.vbp", "shop", "shop/", "shop/lib", "shop/lib/deep/A.bas",
                                        "shop/lib/deep/new.bas", "shop/lib/../lib"}) {
        EXPECT_EQ(found(path), "DIR/shop/.lintara.toml") << path;
    }
    folder_.Write("shop/lib/deep/.lintara.toml", "");
    EXPECT_EQ(found("shop/lib/deep/A.bas"), "DIR/shop/lib/deep/.lintara.toml");
    EXPECT_EQ(found("shop/lib"), "DIR/shop/.lintara.toml");
    EXPECT_EQ(found("no/such/folder"), "none");
}

TEST_F(ProjectFileTest, IsNotPassedOverWhenItLeadsNowhere) {
    folder_.Write("shop/Shop.vbp", "");
    folder_.Write(".lintara.toml", "");
    std::filesystem::create_symlink("nowhere", folder_ / "shop/.lintara.toml");
    EXPECT_EQ(FindProjectFile(folder_ / "shop")->parent_path().filename(), "shop");
}

// An option means the same in every command, or a file could not give it to all of them at once.
TEST(CommandTable, HasOneMeaningForEachOptionOfProjectFiles) {
    std::map<std::string_view, const OptionInfo*> known;
    for (const CommandInfo& command : Commands()) {
        for (const OptionInfo& option : command.options) {
            if (!option.inProjectFile) {
                continue;
            }
            const OptionInfo& first = *known.try_emplace(option.name, &option).first->second;
            EXPECT_EQ(first.kind, option.kind) << command.name << " " << option.name;
            EXPECT_EQ(first.isPath, option.isPath) << command.name << " " << option.name;
            EXPECT_EQ(first.mayBeEmpty, option.mayBeEmpty) << command.name << " " << option.name;
            EXPECT_EQ(first.setting, option.setting) << command.name << " " << option.name;
            EXPECT_FALSE(option.required) << command.name << " " << option.name;
        }
    }
    EXPECT_GT(known.size(), 8u);
}

TEST(CommandTable, LetsEveryCommandThatReadsProjectsChooseTheFile) {
    for (const CommandInfo& command : Commands()) {
        const bool readsProject = !command.arguments.empty() && command.arguments.front().name == "PATH";
        const bool takesOptions = std::ranges::any_of(
            command.options, [](const OptionInfo& option) { return option.inProjectFile; });
        if (readsProject && takesOptions) {
            EXPECT_TRUE(command.Option("config") != nullptr && command.Option("no-config") != nullptr)
                << command.name;
        }
    }
}

}  // namespace
}  // namespace lintara::cli

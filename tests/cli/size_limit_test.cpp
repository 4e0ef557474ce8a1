// What is inserted, and what becomes of a component by it, has limits: a project that names a template must
// not fill the memory.
#include "cli/edits/size_limit.h"

#include "base/constants.h"
#include "base/settings_table.h"
#include "cli/edits/refusal.h"
#include "tests/cli/command_run.h"
#include "tests/cli/edited_module.h"
#include "tests/cli/handler_edits.h"
#include "workspace/limits.h"

#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr auto largestCode = static_cast<std::size_t>(workspace::largestCode);

class CodeSize : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        before = test.Files();
    }

    void ExpectRefused(const std::string& line, const std::string& complaint) {
        const Outcome outcome = test.Run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_THAT(outcome.err, HasSubstr(complaint)) << line;
        EXPECT_EQ(outcome.out, "");
    }

    CommandTest test;
    std::map<std::string, std::string> before;
};

TEST_F(CodeSize, IsLimitedInFiles) {
    test.Write("large.txt", std::string(largestCode + 1, '\''));
    ExpectRefused("insert @Shop.vbp --error-handlers --template @large.txt",
                  "--template: DIR/large.txt: is larger than 1 MiB");
    ExpectRefused("custom insert @Shop.vbp --id 5 --code @large.txt",
                  "--code: DIR/large.txt: is larger than 1 MiB");
    ExpectRefused("custom insert @Shop.vbp --id 5 --code @large.txt --exact",
                  "--code: DIR/large.txt: is larger than 1 MiB");
    test.Write(".lintara.toml", "[insert]\ntemplate = 'large.txt'\n");
    ExpectRefused("insert @Shop.vbp --error-handlers",
                  ".lintara.toml:2: template: DIR/large.txt: is larger than 1 MiB");
}

TEST_F(CodeSize, IsLimitedInStandardInput) {
    test.input = std::string(largestCode + 1, '\'');
    ExpectRefused("insert @Shop.vbp --error-handlers --template -",
                  "--template: standard input is larger than 1 MiB");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(CodeSize, IsLimitedInSettings) {
    const Text large(largestCode + 1, u'\'');
    ASSERT_TRUE(test.settings->Save(FindSetting(constants::LastCustomCodeKey)->name(), large));
    ExpectRefused("custom insert @Shop.vbp --id 5",
                  "the user's setting LastCustomCode: is larger than 1 MiB");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(CodeSize, AtTheLimitIsTaken) {
    std::string code;
    while (code.size() < largestCode) {
        code += "' " + std::string(124, 'x') + "\r\n";
    }
    test.Write("code.txt", code.substr(0, largestCode));
    EXPECT_EQ(test.Run("custom insert @Shop.vbp --id 5 --code @code.txt --component Main").status, 0);
    EXPECT_GT(test.Read("Main.bas").size(), largestCode);
}

TEST(LongName, IsNotWrittenIntoATemplateAgainAndAgain) {
    const std::string longName(workspace::longestName + 1, 'x');
    const std::string longest(workspace::longestName, 'y');
    EditedModule module("Sub " + longName + "()\n    z\nEnd Sub\nSub " + longest + "()\n    z\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module);
    EXPECT_THAT(EditedIn(report), ElementsAre(longest));
    EXPECT_THAT(SkippedIn(report), ElementsAre("long-name " + longName));
    EXPECT_EQ(report.skipped[0].at, Line(1));
}

class ComponentSize : public testing::Test {
  protected:
    ComponentSize() {
        workspace::Project& project = workspace.Add(std::make_unique<workspace::Project>(u"P", ""));
        auto added = std::make_unique<workspace::Component>();
        added->name = u"Module1";
        added->path = "Module1.bas";
        added->module = workspace::Module::FromText(u"a\r\nb");
        component = &project.Add(std::move(added));
    }

    // What the refusal says; "" when there is none.
    template <class Deed>
    static std::string Refused(Deed deed) {
        try {
            deed();
        } catch (const Refusal& refusal) {
            return refusal.what();
        }
        return {};
    }

    workspace::Workspace workspace;
    workspace::Component* component = nullptr;
};

TEST_F(ComponentSize, IsThatOfAFileThatCanBeRead) {
    const std::size_t left =
        static_cast<std::size_t>(workspace::largestComponent) - component->module->originalBytes().size();
    EXPECT_EQ(Refused([&] { RequireReadable(*component, left); }), "");
    EXPECT_THAT(Refused([&] { RequireReadable(*component, left + 1); }),
                HasSubstr("Module1.bas: would be larger than 256 MiB then"));
    ASSERT_TRUE(component->module->InsertLines(Line(2), u"c"));
    EXPECT_NE(Refused([&] { RequireReadable(*component, left); }), "");
}

TEST_F(ComponentSize, HasALimitForAllComponentsTogether) {
    const auto original = static_cast<std::size_t>(component->module->originalBytes().size());
    const std::string half(static_cast<std::size_t>(workspace::mostGrowth) / 2 + original, 'x');
    TotalSize total(workspace);
    EXPECT_EQ(Refused([&] { total.ComponentEdited(*component, half); }), "");
    EXPECT_EQ(Refused([&] { total.ComponentEdited(*component, half); }), "");
    EXPECT_EQ(Refused([&] { total.ComponentEdited(*component, ""); }), "");
    EXPECT_THAT(Refused([&] { total.ComponentEdited(*component, half); }),
                HasSubstr("Module1.bas: with it, what was edited would be larger than 256 MiB"));
}

TEST_F(ComponentSize, LinesCountToo) {
    TotalSize total(workspace);
    EXPECT_THAT(
        Refused([&] { total.ComponentEdited(*component, std::string(workspace::mostLines + 1, '\n')); }),
        HasSubstr("Module1.bas: would have more than 10000000 lines"));
}

TEST(ComponentGrowth, IsRefusedBeforeItIsTried) {
    CommandTest test;
    std::string code = "Attribute VB_Name = \"m\"\r\n";
    for (int i = 0; i < 3000; ++i) {
        code += "'a\r\n";
    }
    test.Write("m.bas", code);
    const std::string large(100'000, 'c');
    const Outcome outcome =
        test.Run({"replace", test.Path("m.bas"), "--component", "m", "--find", "a", "--replace", large});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("m.bas: would be larger than 256 MiB then"));
    EXPECT_EQ(test.Read("m.bas"), code);
}

TEST(OutOfMemory, IsToldInASentence) {
    StringSource in;
    StringSink out;
    StringSink err;
    Environment environment{.streams = {.in = in, .out = out, .err = err}};
    const std::vector<std::string> line = {"config", "--no-config"};
    EXPECT_EQ(cli::Run(line, environment, [](Environment&) { throw std::bad_alloc(); }), ExitStatus::Failed);
    EXPECT_THAT(err.text,
                AllOf(HasSubstr("lintara: error: out of memory"), testing::Not(HasSubstr("alloc"))));
}

}  // namespace
}  // namespace lintara::cli

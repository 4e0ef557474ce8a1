// What --exclude and the comment "' lintara: skip" leave out.
#include "cli/scope/exclusions.h"

#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(SkipComment, IsToldByItsWords) {
    for (const TextView line : {u"' lintara: skip", u"'LINTARA:SKIP", u"  \t'  Lintara : skip  because",
                                u"Rem lintara: skip", u"' lintara: skip, it is generated"}) {
        EXPECT_TRUE(IsSkipComment(line));
    }
    for (const TextView line :
         {u"", u"'", u"lintara: skip", u"' lintara: skipped", u"' lintara skip", u"x ' lintara: skip",
          u"' see lintara: skip", u"Remlintara: skip", u"' lintara: ski"}) {
        EXPECT_FALSE(IsSkipComment(line));
    }
}

TEST(Exclusion, OfNothingIsTold) {
    const CommandTest test;
    test.WriteShop();
    for (const std::string command : {"insert @Shop.vbp --check --line-numbers",
                                      "check @Shop.vbp --line-numbers", "where @Shop.vbp --erl 10000"}) {
        const Outcome outcome = test.Run(command + " --exclude Stok --exclude Stock.Siz --exclude Main");
        EXPECT_THAT(outcome.err,
                    HasSubstr("warning: --exclude: 'Stok' names no component and no "
                              "Component.Procedure, so it leaves out nothing. Did you mean Stock?"));
        EXPECT_THAT(outcome.err, HasSubstr("'Stock.Siz' names no component and no Component.Procedure, so it "
                                           "leaves out nothing. Did you mean Stock.Size"));
        EXPECT_THAT(outcome.err, Not(HasSubstr("'Main'")));
    }
}

TEST(Exclusion, OfNothingInAProjectFileIsNoMistake) {
    const CommandTest test;
    test.WriteShop();
    test.Write(".lintara.toml", "exclude = [\"Stok\"]\n");
    EXPECT_THAT(test.Run("insert @Shop.vbp --check --line-numbers").err, Not(HasSubstr("Stok")));
}

struct ExcludeCase {
    const char* name;
    const char* options;
    int numbered;  // procedures; the project has five
};

void PrintTo(const ExcludeCase& c, std::ostream* out) {
    *out << c.name;
}

class Exclude : public testing::TestWithParam<ExcludeCase> {
  protected:
    static void WriteProject(const CommandTest& test, const std::string& folder, const std::string& name) {
        test.Write(folder + name + ".vbp",
                   "Module=Alpha; Alpha.bas\r\nModule=Main; Main.bas\r\nName=\"" + name + "\"\r\n");
        test.Write(folder + "Alpha.bas",
                   "Attribute VB_Name = \"Alpha\"\r\nSub Load()\r\n    x\r\nEnd Sub\r\nSub Main()\r\n    "
                   "x\r\nEnd Sub\r\n");
        test.Write(
            folder + "Main.bas",
            "Attribute VB_Name = \"Main\"\r\nSub Load()\r\n    x\r\nEnd Sub\r\n"
            "Property Get P()\r\n    x\r\nEnd Property\r\nProperty Let P(v)\r\n    x\r\nEnd Property\r\n"
            "Sub Form_Load()\r\n    x\r\nEnd Sub\r\n");
    }
};

TEST_P(Exclude, LeavesOutWhatItNames) {
    const CommandTest test;
    WriteProject(test, "", "Shop");
    const Outcome outcome =
        test.Run("insert @Shop.vbp --line-numbers --check " + std::string(GetParam().options));
    const std::string procedures = std::to_string(GetParam().numbered) + " procedure";
    EXPECT_THAT(outcome.out, GetParam().numbered == 0 ? HasSubstr("Nothing to change.")
                                                      : HasSubstr("Would number " + procedures));
    EXPECT_THAT(outcome.out, Not(HasSubstr("skipped")));
    // Patterns that leave out nothing are told; each row has such ones only, or none.
    EXPECT_EQ(outcome.err.empty(), GetParam().numbered < 5) << outcome.err;
    EXPECT_EQ(outcome.err.contains("leaves out nothing"), GetParam().numbered == 5) << outcome.err;
}

const ExcludeCase excludeCases[] = {
    {"Component", "--exclude alpha", 3},
    {"ComponentPattern", "--exclude ?a*", 2},
    {"Everything", "--exclude *", 0},
    {"Procedure", "--exclude Main.P", 4},
    {"ProcedureEverywhere", "--exclude *.load", 3},
    {"StarsReachOverNoDot", "--exclude *Load", 5},
    {"NothingOfThatName", "--exclude Nobody --exclude Main.Nobody --exclude a.b.c.d", 5},
    {"ProjectCountsInGroupsOnly", "--exclude Shop.Alpha --exclude Shop.Main.P", 5},
    {"Several", "--exclude Alpha.Load --exclude Main.P", 3},
    {"WinsOverComponent", "--component Alpha --exclude Alpha", 0},
    {"WinsOverProcedure", "--procedure Load --exclude Alpha", 1},
    {"WinsOverTheCaret", "--at Main:2 --exclude Main.Load", 0},
};

INSTANTIATE_TEST_SUITE_P(Cases, Exclude, testing::ValuesIn(excludeCases),
                         [](const auto& test) { return std::string(test.param.name); });

class ExcludeInGroup : public Exclude {};

TEST_P(ExcludeInGroup, NamesProjectsToo) {
    const CommandTest test;
    WriteProject(test, "one/", "One");
    WriteProject(test, "two/", "Two");
    test.Write("Both.vbg", "VBGROUP 5.0\r\nStartupProject=one\\One.vbp\r\nProject=two\\Two.vbp\r\n");
    const Outcome outcome =
        test.Run("insert @Both.vbg --line-numbers --check " + std::string(GetParam().options));
    EXPECT_THAT(outcome.out, HasSubstr("Would number " + std::to_string(GetParam().numbered) + " procedure"));
}

const ExcludeCase groupCases[] = {
    {"ComponentOfAll", "--exclude Alpha", 6},
    {"ComponentOfOne", "--exclude one.Alpha", 8},
    {"AllOfOne", "--exclude Two.*", 5},
    {"ProcedureOfOne", "--exclude Two.Main.P", 9},
};

INSTANTIATE_TEST_SUITE_P(Cases, ExcludeInGroup, testing::ValuesIn(groupCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct CommentCase {
    const char* name;
    const char* code;
    const char* out;
};

void PrintTo(const CommentCase& c, std::ostream* out) {
    *out << c.name;
}

class SkipComments : public testing::TestWithParam<CommentCase> {};

TEST_P(SkipComments, LeaveOutWhatTheyStandIn) {
    const CommandTest test;
    test.Write("A.bas", Replaced(GetParam().code, "\n", "\r\n"));
    const Outcome outcome = test.Run("insert @A.bas --line-numbers --check");
    EXPECT_THAT(outcome.out, HasSubstr(GetParam().out));
    EXPECT_THAT(outcome.out, Not(HasSubstr("skipped")));
    EXPECT_EQ(outcome.err, "");
}

const CommentCase commentCases[] = {
    {"AboveAHeader", "Sub A()\n    x\nEnd Sub\n' lintara: skip\n\n' more\nSub B()\n    x\nEnd Sub\n",
     "Would number 1 procedure"},
    {"AboveTheFirstHeader",
     "Option Explicit\n' lintara: skip\nSub A()\n    x\nEnd Sub\nSub B()\n    x\nEnd Sub\n",
     "Would number 1 procedure"},
    {"InTheDeclarations",
     "' lintara: skip\nOption Explicit\nSub A()\n    x\nEnd Sub\nSub B()\n    x\nEnd Sub\n",
     "Nothing to change"},
    {"BehindADeclaration", "Dim x ' lintara: skip\nSub A()\n    x\nEnd Sub\n", "Would number 1 procedure"},
    {"InABody", "Sub A()\n' lintara: skip\n    x\nEnd Sub\n", "Would number 1 procedure"},
    {"OneOfAProperty",
     "Property Get A()\n    x\nEnd Property\n' lintara: skip\nProperty Let A(v)\n    x\nEnd Property\n",
     "Nothing to change"},
    {"OneThatIsHiddenBehindAnother", "Sub A()\n    x\nEnd Sub\n' lintara: skip\nSub A()\n    x\nEnd Sub\n",
     "Would number 1 procedure"},
};

INSTANTIATE_TEST_SUITE_P(Cases, SkipComments, testing::ValuesIn(commentCases),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace lintara::cli

// Search and replace in one component: what is replaced, what is refused, what is told.
#include "cli/edits/component_replace.h"
#include "cli/edits/refusal.h"
#include "tests/cli/command_run.h"
#include "tests/support/project_generator.h"
#include "workspace/encoding.h"
#include "workspace/object_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A component Module1 in memory.
class ReplacedModule {
  public:
    explicit ReplacedModule(const std::string& code) {
        project_ = &workspace_.Add(std::make_unique<workspace::Project>(u"Project1", ""));
        auto component = std::make_unique<workspace::Component>();
        component->name = u"Module1";
        component->module = std::make_unique<workspace::Module>(Replaced(code, "\n", "\r\n"), 0,
                                                                *workspace::FindEncoding("utf-8"));
        component_ = &project_->Add(std::move(component));
    }

    ComponentReport Replace(const ReplaceRequest& request) {
        ComponentReplace editor(workspace_, std::make_shared<workspace::WorkspaceGlobals>(workspace_),
                                request);
        return editor.Edit({project_, component_, {}});
    }

    [[nodiscard]] std::string Code() const {
        std::string bytes;
        component_->module->AppendCurrentBytes(bytes);
        return Replaced(bytes, "\r\n", "\n");
    }

  private:
    workspace::Workspace workspace_;
    workspace::Project* project_;
    workspace::Component* component_;
};

ReplaceRequest Request(const char16_t* sought, const char16_t* replacement) {
    return {.sought = sought, .replacement = replacement};
}

ReplaceRequest Between(ReplaceRequest request, std::int32_t from, std::int32_t to) {
    request.from = from;
    request.to = to;
    return request;
}

ReplaceRequest WholeWord(ReplaceRequest request) {
    request.wholeWord = true;
    return request;
}

std::vector<std::string> RemarksIn(const ComponentReport& report) {
    std::vector<std::string> remarks;
    for (const Remark& remark : report.remarks) {
        remarks.push_back(std::string(remark.code) + " " + std::to_string(remark.at.value()));
    }
    return remarks;
}

struct ReplaceCase {
    const char* name;
    ReplaceRequest request;
    const char* before;
    const char* after;
    bool found = true;
};

void PrintTo(const ReplaceCase& c, std::ostream* out) {
    *out << c.name;
}

class Replacement : public testing::TestWithParam<ReplaceCase> {};

TEST_P(Replacement, ReplacesEachOccurrenceOnce) {
    ReplacedModule module(GetParam().before);
    EXPECT_EQ(module.Replace(GetParam().request).found, GetParam().found);
    EXPECT_EQ(module.Code(), GetParam().after);
}

const ReplaceCase replaceCases[] = {
    {"SeveralOnALine", Request(u"abc", u"d"), "x = abc + abc\n", "x = d + d\n"},
    {"InAnyLetterCase", Request(u"abc", u"def"), "ABC\nAbc\n", "def\ndef\n"},
    {"PartsOfWords", Request(u"abc", u"def"), "abcd\n", "defd\n"},
    {"WholeWordsOnly", WholeWord(Request(u"abc", u"def")), "abcd abc\n", "abcd def\n"},
    {"Nothing", Request(u"abc", u"def"), "x\n", "x\n", false},
    {"NothingInAnEmptyComponent", Request(u"abc", u"def"), "", "", false},
    {"ByNothing", Request(u"Stop: ", u""), "Stop: x\ny\n", "x\ny\n"},
    {"OnTheGivenLinesOnly", Between(Request(u"a", u"b"), 2, 3), "a\na\na\na\n", "a\nb\nb\na\n"},
    {"NothingOnTheGivenLines", Between(Request(u"a", u"b"), 2, 2), "a\nx\na\n", "a\nx\na\n", false},
    {"ByTheSameText", Request(u"abc", u"abc"), "abc\n", "abc\n"},
    {"OneLineBySeveral", Request(u"; ", u"\r\n"), "a; b\nc\nd; e\n", "a\nb\nc\nd\ne\n"},
    {"SeveralLinesOnTheGivenLinesOnly", Between(Request(u"; ", u"\r\n"), 1, 2), "a; b\nc; d\ne; f\n",
     "a\nb\nc\nd\ne; f\n"},
    {"ATextOverTwoLinesIsFoundAndStays", Request(u"a\r\nb", u"c"), "a\nb\n", "a\nb\n"},
    {"KeywordsGetTheirLetterCase", Request(u"when", u"if"), "when x Then y\n", "If x Then y\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Replacement, testing::ValuesIn(replaceCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct RefusedCase {
    const char* name;
    ReplaceRequest request;
    const char* before;
    const char* exact;  // what --exact makes of it
    const char* line;   // that the refusal names
};

void PrintTo(const RefusedCase& c, std::ostream* out) {
    *out << c.name;
}

class RefusedReplacement : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedReplacement, NamesTheLine) {
    ReplacedModule module(GetParam().before);
    try {
        (void)module.Replace(GetParam().request);
        FAIL() << "it was not refused";
    } catch (const Refusal& refusal) {
        EXPECT_THAT(refusal.what(), AllOf(HasSubstr("--replace: at line " + std::string(GetParam().line)),
                                          HasSubstr("--exact")));
    }
}

TEST_P(RefusedReplacement, IsLeftHalfDoneWhenExact) {
    ReplacedModule module(GetParam().before);
    ReplaceRequest request = GetParam().request;
    request.exact = true;
    EXPECT_EQ(module.Replace(request).found, true);
    EXPECT_EQ(module.Code(), GetParam().exact);
}

const RefusedCase refusedCases[] = {
    {"FindsItsOwnReplacement", Request(u"a", u"aa"), "x\na\n", "x\naaaa\n", "2 "},
    {"PassesOverAMatchThatMoved", Request(u"abc", u""), "abcabc\n", "abc\n", "1 "},
    {"FindsWhatComesTogether", Request(u"ab", u"xxa"), "abb\n", "xxxxa\n", "1 "},
};

INSTANTIATE_TEST_SUITE_P(Cases, RefusedReplacement, testing::ValuesIn(refusedCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(ComponentReplace, TakesAReplacementThatHoldsTheTextAheadOfTheNextSearch) {
    ReplacedModule module("abc + abc\n");
    EXPECT_EQ(module.Replace(Request(u"abc", u"abcd")).found, true);
    EXPECT_EQ(module.Code(), "abcd + abcd\n");
}

TEST(ComponentReplace, RemarksWhatChangesTheProcedures) {
    const std::string code = "Sub A()\nEnd Sub\nSub B()\n    x\nEnd Sub\n' more\n";
    struct Case {
        ReplaceRequest request;
        const char* remark;
        const char* message;
    };
    const Case cases[] = {
        {Request(u"Sub B", u"Sub C"), "procedures-changed 3", "where Sub B was, there is Sub C now"},
        {Between(Request(u"End Sub", u"' end"), 2, 2), "procedures-changed 1", "Sub A ends at another place"},
        {Request(u"    x", u"End Sub"), "procedures-changed 3", "Sub B ends at another place"},
        {Between(Request(u"Sub B()", u"' b"), 3, 3), "procedures-changed 3", "Sub B is none any more"},
        {Request(u"    x", u"x\r\nEnd Sub\r\nSub C()"), "procedures-changed 3",
         "Sub B ends at another place"},
        {Request(u"' more", u"Sub C()\r\nEnd Sub"), "procedures-changed 6", "Sub C is a new one"},
    };
    for (const Case& c : cases) {
        ReplacedModule module(code);
        const ComponentReport report = module.Replace(c.request);
        EXPECT_THAT(RemarksIn(report), ElementsAre(c.remark)) << c.message;
        ASSERT_EQ(report.remarks.size(), 1U);
        EXPECT_THAT(report.remarks[0].message, HasSubstr(c.message));
    }
}

TEST(ComponentReplace, SaysNothingOfProceduresThatOnlyMove) {
    ReplacedModule module("Sub A()\nx; y\nEnd Sub\nSub B()\nz; u\nEnd Sub\n");
    EXPECT_THAT(RemarksIn(module.Replace(Request(u"; ", u"\r\n"))), IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\nx\ny\nEnd Sub\nSub B()\nz\nu\nEnd Sub\n");
}

TEST(ComponentReplace, RemarksLinesThatBecomeTooLong) {
    ReplacedModule module("x\n" + std::string(1020, 'y') + "abc\n" + std::string(1030, 'z') + "\n");
    EXPECT_THAT(RemarksIn(module.Replace(Request(u"abc", u"abcd"))), ElementsAre("line-too-long 2"));
}

class ReplaceCommandLine : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        before = test.Files();
    }

    CommandTest test;
    std::map<std::string, std::string> before;
};

TEST_F(ReplaceCommandLine, ReplacesInOneComponentAndBackAgain) {
    const Outcome there =
        test.Run("replace @Shop.vbp --component main --find count --replace total --whole-word");
    EXPECT_EQ(there.status, 0);
    EXPECT_EQ(there.out, "Replaced in 3 lines in 1 file.\n");
    EXPECT_EQ(there.err, "");
    EXPECT_THAT(test.Read("Main.bas"), AllOf(HasSubstr("Private total As Long\r\n"),
                                             HasSubstr("    total = 1\r\n    Sell total\r\n")));
    EXPECT_EQ(test.Run("replace @Shop.vbp --component Shop.Main --find total --replace count").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(ReplaceCommandLine, TellsWhenNothingIsFound) {
    const Outcome outcome = test.Run("replace @Shop.vbp --component Main --find nowhere --replace x --check");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "Nothing found.\n");
    EXPECT_EQ(test.Run("replace @Shop.vbp --component Main --find Sell --replace Sell").out,
              "Found, but there is nothing to change.\n");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(ReplaceCommandLine, ChecksShowsAndWritesElsewhere) {
    const Outcome check = test.Run("replace @Shop.vbp --component Main --find Sell --replace Buy --check");
    EXPECT_EQ(check.status, 1);
    EXPECT_EQ(check.out, "DIR/Main.bas: 3 lines would change\nWould replace in 3 lines in 1 file.\n");
    const Outcome diff = test.Run("replace @Shop.vbp --component Main --find Sell --replace Buy --diff");
    EXPECT_EQ(diff.status, 0);
    EXPECT_THAT(diff.out, AllOf(HasSubstr("-    Sell count"), HasSubstr("+    Buy count")));
    EXPECT_EQ(test.Files(), before);
    EXPECT_EQ(test.Run("replace @Shop.vbp --component Main --find Sell --replace Buy --output @copy").status,
              0);
    EXPECT_THAT(test.Read("copy/Main.bas"), HasSubstr("    Buy count"));
    EXPECT_EQ(test.Read("Main.bas"), before["Main.bas"]);
}

TEST_F(ReplaceCommandLine, ReportsAsJson) {
    const auto found = nlohmann::json::parse(
        test.Run("replace @Shop.vbp --component Main --find Sell --replace Buy --json --check").out);
    EXPECT_EQ(found["command"], "replace");
    EXPECT_EQ(found["status"], 1);
    EXPECT_EQ(found["linesChanged"], 3);
    EXPECT_EQ(found["components"][0]["found"], true);
    EXPECT_EQ(found["warnings"][0]["code"], "procedures-changed");
    const auto nothing = nlohmann::json::parse(
        test.Run("replace @Shop.vbp --component Main --find nowhere --replace Buy --json").out);
    EXPECT_EQ(nothing["components"][0]["found"], false);
    const auto others = nlohmann::json::parse(test.Run("remove @Shop.vbp --line-numbers --json").out);
    EXPECT_FALSE(others["components"][0].contains("found"));
}

TEST_F(ReplaceCommandLine, TakesLineBreaksOfAnyKind) {
    EXPECT_EQ(test.Run({"replace", test.Path("Shop.vbp"), "--component", "Main", "--find", "count = 1",
                        "--replace", "count = 0\ncount = 2"})
                  .status,
              0);
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("    count = 0\r\ncount = 2\r\n    Sell count\r\n"));
    const Outcome spanning = test.Run({"replace", test.Path("Shop.vbp"), "--component", "Main", "--find",
                                       "count = 0\ncount = 2", "--replace", "x"});
    EXPECT_EQ(spanning.status, 0);
    EXPECT_EQ(spanning.out, "Found, but there is nothing to change.\n");
}

TEST_F(ReplaceCommandLine, RefusesWhatWouldBeLeftHalfDone) {
    const Outcome refused = test.Run("replace @Shop.vbp --component Main --find l --replace ll");
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, HasSubstr("--replace: at line "));
    EXPECT_EQ(test.Files(), before);
    EXPECT_EQ(test.Run("replace @Shop.vbp --component Main --find l --replace ll --exact").status, 0);
    EXPECT_NE(test.Files(), before);
}

TEST_F(ReplaceCommandLine, RefusesWhatMakesNoSense) {
    test.Write("Other.bas", "Attribute VB_Name = \"Main\"\r\nx\r\n");
    test.Write("Other.vbp", "Type=Exe\r\nModule=Main; Other.bas\r\nName=\"Other\"\r\n");
    test.Write("Both.vbg", "VBGROUP 5.0\r\nStartupProject=Shop.vbp\r\nProject=Other.vbp\r\n");
    const std::map<std::string, std::string> files = test.Files();
    struct Case {
        const char* line;
        const char* complaint;
    };
    const Case cases[] = {
        {"replace @Shop.vbp --find a --replace b", "--component"},
        {"replace @Shop.vbp --component Main --replace b", "--find"},
        {"replace @Shop.vbp --component Main --find a", "--replace"},
        {"replace @Shop.vbp --component M* --find a --replace b", "--component: give one component"},
        {"replace @Shop.vbp --component Mian --find a --replace b", "there is no component 'Mian'"},
        {"replace @Both.vbg --component Main --find x --replace y", "give Project.Component"},
        {"replace @Shop.vbp --component Main --find a --replace b --from 0",
         "--from: lines are numbered from 1"},
        {"replace @Shop.vbp --component Main --find a --replace b --to 0", "--to: lines are numbered from 1"},
        {"replace @Shop.vbp --component Main --find a --replace b --from 3 --to 2",
         "--from 3 lies behind --to 2"},
        {"replace @Shop.vbp --component Main --find a --replace b --from 13",
         "--from: there is no line 13 in Main"},
        {"replace @Shop.vbp --component Main --find a --replace b --to 13", "it has 12 lines"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = test.Run(c.line);
        EXPECT_EQ(outcome.status, 2) << c.line;
        EXPECT_THAT(outcome.err, HasSubstr(c.complaint)) << c.line;
    }
    EXPECT_EQ(
        test.Run({"replace", test.Path("Shop.vbp"), "--component", "Main", "--find", "", "--replace", "b"})
            .status,
        2);
    EXPECT_EQ(test.Files(), files);
}

TEST_F(ReplaceCommandLine, EditsTheNamedProjectOfAGroup) {
    test.Write("Other.bas", "Attribute VB_Name = \"Main\"\r\nx = count\r\n");
    test.Write("Other.vbp", "Type=Exe\r\nModule=Main; Other.bas\r\nName=\"Other\"\r\n");
    test.Write("Both.vbg", "VBGROUP 5.0\r\nStartupProject=Shop.vbp\r\nProject=Other.vbp\r\n");
    EXPECT_EQ(test.Run("replace @Both.vbg --component Other.Main --find count --replace total").status, 0);
    EXPECT_EQ(test.Read("Other.bas"), "Attribute VB_Name = \"Main\"\r\nx = total\r\n");
    EXPECT_EQ(test.Read("Main.bas"), before["Main.bas"]);
}

TEST_F(ReplaceCommandLine, OfGeneratedModulesBringsEveryByteBack) {
    for (std::uint64_t seed = 1; seed <= 10; ++seed) {
        test.Write("Generated.cls", support::GenerateModule({.lines = 1000, .seed = seed}));
        const std::string original = test.Read("Generated.cls");
        const Outcome there =
            test.Run("replace @Generated.cls --component Generated --find End --replace Xyzzy --whole-word");
        EXPECT_EQ(there.status, 0) << there.err;
        EXPECT_NE(test.Read("Generated.cls"), original);
        EXPECT_EQ(
            test.Run("replace @Generated.cls --component Generated --find Xyzzy --replace End --whole-word")
                .status,
            0);
        EXPECT_EQ(test.Read("Generated.cls"), original);
    }
}

TEST_F(ReplaceCommandLine, HelpShowsExamplesAndWhatIsRefused) {
    EXPECT_THAT(test.Run("replace --help").out,
                AllOf(HasSubstr("--find Amount --replace Total --whole-word"), HasSubstr("What is refused"),
                      HasSubstr("--exact"), Not(HasSubstr("--procedure"))));
}

}  // namespace
}  // namespace lintara::cli

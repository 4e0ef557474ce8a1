// Error handlers from the command line: options, settings, what is written and printed.
#include "base/constants.h"
#include "base/settings_table.h"
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

class HandlerCommandLine : public testing::Test {
  protected:
    void SetUp() override {
        test.Write("A.bas", code);
        test.Write("handler.txt", "    Report \"{MemberName}\"\n");
    }

    [[nodiscard]] Text Setting(TextView key) const { return ReadSetting(*test.settings, *FindSetting(key)); }

    const std::string code = "Attribute VB_Name = \"A\"\r\nSub Go()\r\n    x\r\nEnd Sub\r\n";
    const std::string handled =
        "Attribute VB_Name = \"A\"\r\nSub Go()\r\n    On Error GoTo Failed\r\n    x\r\n"
        "' TWErrorHandler begin - please do not modify or remove this line\r\nExit Sub\r\nFailed:\r\n"
        "    Report \"Go\"\r\nEnd Sub\r\n";
    CommandTest test;
};

TEST_F(HandlerCommandLine, InsertsAndRemoves) {
    const Outcome in = test.Run("insert @A.bas --error-handlers --label Failed --template @handler.txt");
    EXPECT_EQ(in.err, "");
    EXPECT_EQ(in.status, 0);
    EXPECT_EQ(in.out, "Inserted error handlers into 1 procedure in 1 file, 5 lines.\n");
    EXPECT_EQ(test.Read("A.bas"), handled);
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers --label Failed --template @handler.txt").out,
              "Nothing to change.\n");

    const Outcome wrong = test.Run("remove @A.bas --error-handlers");
    EXPECT_THAT(wrong.err, HasSubstr("give --label Failed [label-mismatch]"));
    EXPECT_EQ(test.Read("A.bas"), handled);

    const Outcome out = test.Run("remove @A.bas --error-handlers --label Failed --template @handler.txt");
    EXPECT_EQ(out.err, "");
    EXPECT_EQ(out.out, "Removed the error handlers of 1 procedure in 1 file, 5 lines.\n");
    EXPECT_EQ(test.Read("A.bas"), Replaced(code, "    x", "    On Error GoTo 0\r\n    x"));
}

TEST_F(HandlerCommandLine, TakesTheTemplateFromStandardInput) {
    test.input = "    Report \"{MemberName}\"\n";
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers --label Failed --template -").status, 0);
    EXPECT_EQ(test.Read("A.bas"), handled);
}

TEST_F(HandlerCommandLine, TakesTheBuiltInTemplate) {
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers").status, 0);
    EXPECT_THAT(test.Read("A.bas"), HasSubstr("hErr:\r\n    Select Case MsgBox("));
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers --refresh --check").status, 0);
    EXPECT_EQ(test.Run("remove @A.bas --error-handlers").err, "");
}

TEST_F(HandlerCommandLine, CheckDiffAndOutputLeaveTheFileAlone) {
    const Outcome check = test.Run("insert @A.bas --error-handlers --line-numbers --check");
    EXPECT_EQ(check.status, 1);
    EXPECT_THAT(check.out, HasSubstr("Would insert error handlers and numbers into 1 procedure"));
    EXPECT_THAT(test.Run("insert @A.bas --error-handlers --diff").out, HasSubstr("+hErr:"));
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers --label Failed --template @handler.txt --output @copy")
                  .status,
              0);
    EXPECT_EQ(test.Read("A.bas"), code);
    EXPECT_EQ(test.Read("copy/A.bas"), handled);
}

TEST_F(HandlerCommandLine, TellsOfBoth) {
    EXPECT_THAT(test.Run("insert @A.bas --error-handlers --line-numbers").out,
                HasSubstr("Inserted error handlers and numbers into 1 procedure"));
    EXPECT_THAT(test.Run("remove @A.bas --error-handlers --line-numbers --check").out,
                HasSubstr("Would remove the error handlers and numbers of 1 procedure"));
    EXPECT_THAT(test.Run("remove @A.bas --error-handlers --line-numbers").out,
                HasSubstr("Removed the error handlers and numbers of 1 procedure"));
    EXPECT_EQ(test.Read("A.bas"), Replaced(code, "    x", "    On Error GoTo 0\r\n    x"));
}

TEST_F(HandlerCommandLine, KeepsWhatWasUsedAsSettings) {
    test.Run("insert @A.bas --error-handlers --label Failed --template @handler.txt --save-settings --check");
    EXPECT_EQ(Setting(constants::ErrorHandlerLabelKey), u"hErr");
    const Outcome saved =
        test.Run("insert @A.bas --error-handlers --label Failed --template @handler.txt --save-settings");
    EXPECT_EQ(saved.status, 0);
    EXPECT_EQ(Setting(constants::InsertErrorHandlersKey), u"1");
    EXPECT_EQ(Setting(constants::InsertLineNumbersKey), u"0");
    EXPECT_EQ(Setting(constants::ErrorHandlerLabelKey), u"Failed");
    EXPECT_EQ(Setting(constants::ErrorHandlerCodeKey), u"    Report \"{MemberName}\"");
    EXPECT_EQ(Setting(constants::LineNumberBaseKey), u"10000");

    // The next runs need no options.
    EXPECT_EQ(test.Run("remove @A.bas --error-handlers").err, "");
    EXPECT_EQ(test.Run("insert @A.bas --line-numbers --base 20000 --step 7 --save-settings").status, 0);
    EXPECT_EQ(Setting(constants::InsertErrorHandlersKey), u"0");
    EXPECT_EQ(Setting(constants::InsertLineNumbersKey), u"1");
    EXPECT_EQ(Setting(constants::LineNumberBaseKey), u"20000");
    EXPECT_EQ(Setting(constants::LineNumberStepKey), u"7");
    EXPECT_EQ(Setting(constants::ErrorHandlerLabelKey), u"Failed");
}

struct UsageCase {
    const char* name;
    const char* line;
    const char* complaint;
};

void PrintTo(const UsageCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerUsage : public testing::TestWithParam<UsageCase> {};

TEST_P(HandlerUsage, IsRefusedAndNothingIsWritten) {
    CommandTest test;
    const std::string code = "Sub Go()\r\n    x\r\nEnd Sub\r\n";
    test.Write("A.bas", code);
    test.Write("header", "Sub X()\n");
    test.Write("closing", "    x: End Sub\n");
    test.Write("open", "    x _\n");
    test.Write("empty", "");
    test.Write("marker", "' TWErrorHandler begin - please do not modify or remove this line\n");
    test.Write("long", "x _\n" + Replaced(std::string(24, '.'), ".", " + 1 _\n") + "+ 1\n");
    const Outcome outcome = test.Run(GetParam().line);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr(GetParam().complaint));
    EXPECT_EQ(test.Read("A.bas"), code);
}

const UsageCase usageCases[] = {
    {"LabelWithoutHandlers", "insert @A.bas --line-numbers --label x", "--label is about error handlers"},
    {"TemplateWithoutHandlers", "insert @A.bas --line-numbers --template x", "--template is about"},
    {"RefreshWithoutHandlers", "insert @A.bas --line-numbers --refresh", "--refresh is about"},
    {"LabelWithoutHandlersInRemove", "remove @A.bas --line-numbers --label x", "--label is about"},
    {"BaseWithoutNumbers", "insert @A.bas --error-handlers --base 20000", "--base is about line numbers"},
    {"StepWithoutNumbers", "insert @A.bas --error-handlers --step 7", "--step is about line numbers"},
    {"RenumberWithoutNumbers", "insert @A.bas --error-handlers --renumber", "--renumber is about"},
    {"LabelWithADigitFirst", "insert @A.bas --error-handlers --label 1x", "--label: '1x' is no label"},
    {"LabelWithAHyphen", "insert @A.bas --error-handlers --label a-b", "--label: 'a-b' is no label"},
    {"ReservedLabel", "insert @A.bas --error-handlers --label Next", "it is a word of the language"},
    {"ReservedLabelInRemove", "remove @A.bas --error-handlers --label Next", "--label: 'Next' is no label"},
    {"NoSuchTemplate", "insert @A.bas --error-handlers --template @none", "--template: DIR/none"},
    {"EmptyTemplate", "insert @A.bas --error-handlers --template @empty",
     "--template: the template is empty"},
    {"Header", "insert @A.bas --error-handlers --template @header", "--template: line 1 is the header"},
    {"ClosingStatement", "insert @A.bas --error-handlers --template @closing", "--template: line 1 closes"},
    {"Continued", "insert @A.bas --error-handlers --template @open", "--template: its last line"},
    {"Marker", "insert @A.bas --error-handlers --template @marker", "--template: line 1 holds the text of a"},
    {"Continuations", "insert @A.bas --error-handlers --template @long",
     "--template: line 1 has more than 24"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerUsage, testing::ValuesIn(usageCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HandlerUsageExactly, TakesAnyLabel) {
    CommandTest test;
    test.Write("A.bas", "Sub Go()\r\n    x\r\nEnd Sub\r\n");
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers --label Next --exact").status, 0);
    EXPECT_THAT(test.Read("A.bas"), HasSubstr("\r\nNext:\r\n"));
}

TEST(HandlerMessages, TellLinesOfTheInput) {
    CommandTest test;
    test.Write(
        "A.bas",
        "Attribute VB_Name = \"A\"\r\nSub Go()\r\n    x\r\nEnd Sub\r\nSub B()\r\nhErr:\r\nEnd Sub\r\n");
    EXPECT_EQ(test.Run("insert @A.bas --error-handlers").err,
              "DIR/A.bas:6: warning: Sub B in A was skipped: line 5 (line 6 of the file) has the label hErr "
              "already [label-exists]\n");
}

}  // namespace
}  // namespace lintara::cli

// Templates from standard input to standard output, for the member under a caret.
#include "cli/command.h"
#include "tests/cli/command_run.h"
#include "tests/support/fixed_clock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class KnownIdentity : public Identity {
  public:
    Result<Text> ComputerName() override { return u"DESK7"; }
    Result<Text> UserName() override { return u"ada"; }
};

class TemplateCommand : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        test.Write(
            "Start.frm",
            "VERSION 5.00\r\nBegin VB.Form Start \r\n   Begin VB.CommandButton cmdOK \r\n   End\r\nEnd\r\n"
            "Attribute VB_Name = \"Start\"\r\nPrivate Sub cmdOK_Click()\r\n    Hide\r\nEnd Sub\r\n");
    }

    // Runs with a clock that stands still.
    Outcome Run(const std::vector<std::string>& arguments, std::string_view input) const {
        StringSink out;
        StringSink err;
        StringSource in;
        in.text = input;
        Environment environment{.streams = {.in = in, .out = out, .err = err}};
        environment.platform.clock = std::make_shared<support::FixedClock>();
        environment.platform.regional = std::make_shared<support::FixedRegionalTexts>();
        environment.identity = std::make_shared<KnownIdentity>();
        const ExitStatus status = cli::Run(arguments, environment);
        return {static_cast<int>(status), out.text, err.text};
    }
    [[nodiscard]] std::string Expanded(const std::string& at, std::string_view input) const {
        return Run({"template", "expand", test.Path("Shop.vbp"), "--at", at}, input).out;
    }
    [[nodiscard]] std::string Generated(const std::string& at, std::string_view input) const {
        return Run({"template", "generate", test.Path("Shop.vbp"), "--at", at}, input).out;
    }

    CommandTest test;
};

TEST_F(TemplateCommand, ExpandsForTheMemberUnderTheCaret) {
    EXPECT_EQ(Expanded("Main:6", "{ProjectName}.{ComponentName}.{MemberName} {MemberType}"),
              "Shop.Main.Main Sub");
    EXPECT_EQ(Expanded("Main:10:5", "{MemberName}"), "Sell");
    EXPECT_EQ(Expanded("Main:1", "{ComponentName} {MemberName}"), "Main {MemberName}");
    EXPECT_EQ(Expanded("Stock:2", "{MemberName} {MemberType}"), "Size Property");
}

TEST_F(TemplateCommand, ExpandsWhatTheMachineKnows) {
    EXPECT_EQ(Expanded("Main:6", "{Date} {Time} {ComputerName} {UserName}"), "5/11/2026 17:4:9 DESK7 ada");
}

TEST_F(TemplateCommand, ExpandsTheControlOfAnEvent) {
    EXPECT_EQ(Run({"template", "expand", test.Path("Start.frm"), "--at", "Start:2"}, "{ControlName}").out,
              "cmdOK");
}

TEST_F(TemplateCommand, GeneratesWhatExpandsBack) {
    test.Write("Tools.bas",
               "Attribute VB_Name = \"Tools\"\r\nFunction Sum()\r\n    Sum = 1\r\nEnd Function\r\n");
    test.Write("Office.vbp", "Type=Exe\r\nModule=Tools; Tools.bas\r\nName=\"Office\"\r\n");
    const auto run = [&](const char* direction, const std::string& input) {
        return Run({"template", direction, test.Path("Office.vbp"), "--at", "Tools:2"}, input).out;
    };
    const std::string code = "Debug.Print \"Tools.Sum\" ' by ada\r\nExit Function";
    const std::string made = run("generate", code);
    EXPECT_EQ(made, "Debug.Print \"{ComponentName}.{MemberName}\" ' by {UserName}\r\nExit {MemberType}");
    EXPECT_EQ(run("expand", made), code);
}

TEST_F(TemplateCommand, KeepsLineEndingsAndTheirAbsence) {
    for (const char* input : {"", "x", "a\nb\n", "a\r\nb\r\n", "a\nb", "a\r\nb", "\n", "a\r\nb\nc"}) {
        EXPECT_EQ(Expanded("Main:6", input), input);
        EXPECT_EQ(Generated("Main:6", input), input);
    }
    EXPECT_EQ(Expanded("Main:6", "{MemberName}\n{MemberName}\n"), "Main\nMain\n");
    EXPECT_EQ(Expanded("Main:6", "{MemberName}\r\n"), "Main\r\n");
}

TEST_F(TemplateCommand, WritesUtf8WhateverItReads) {
    EXPECT_EQ(Expanded("Main:6", "\xC3\xA4{MemberName}"), "\xC3\xA4Main");
    EXPECT_EQ(Expanded("Main:6", "\xE4{MemberName}"), "\xC3\xA4Main") << "windows-1252";
    EXPECT_EQ(Expanded("Main:6", std::string_view("\xFF\xFE\xE4\x00\n\x00", 6)), "\xC3\xA4\n") << "UTF-16";
}

TEST_F(TemplateCommand, WritesNothing) {
    const auto before = test.Files();
    EXPECT_EQ(Run({"template", "expand", test.Path("Shop.vbp"), "--at", "Main:6"}, "x").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(TemplateCommand, RefusesWhatMakesNoSense) {
    struct Case {
        std::vector<std::string> arguments;
        int status;
        const char* complaint;
    };
    const Case cases[] = {
        {{"template", "expand", test.Path("Shop.vbp")}, 2, "--at"},
        {{"template", "expand", test.Path("Shop.vbp"), "--at", "Main"}, 2, "--at"},
        {{"template", "expand", test.Path("Shop.vbp"), "--at", "Mian:1"}, 2, "there is no component 'Mian'"},
        {{"template", "generate", test.Path("Shop.vbp"), "--at", "Main:99"}, 2, "--at: there is no line 99"},
        {{"template", "generate", test.Path("None.vbp"), "--at", "Main:1"}, 3, "None.vbp"},
        {{"template"}, 2, ""},
        {{"template", "exband"}, 2, "there is no command 'exband'"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = Run(c.arguments, "x");
        EXPECT_EQ(outcome.status, c.status) << c.complaint;
        EXPECT_THAT(outcome.err, HasSubstr(c.complaint));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST_F(TemplateCommand, HelpShowsExamplesAndPlaceholders) {
    EXPECT_THAT(
        test.Run("template expand --help").out,
        AllOf(HasSubstr("lintara template expand Invoicing.vbp --at Totals:42"), HasSubstr("{Time}")));
    EXPECT_THAT(test.Run("template generate --help").out,
                AllOf(HasSubstr("lintara template generate Invoicing.vbp --at Totals:42 < trace.txt"),
                      HasSubstr("{MemberType}")));
}

}  // namespace
}  // namespace lintara::cli

#include "transform/templates.h"

#include "base/utf8.h"
#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"
#include "tests/support/fixed_clock.h"
#include "tests/support/random.h"
#include "tests/support/scripted_module.h"

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using hostmodel::ComponentType;
using support::CodeFixture;
using support::Random;

constexpr std::string_view ClickSource = R"(
Option Explicit
Private Sub cmdOK_Click()
    x = 1^
End Sub
)";

// A form with the control cmdOK, the caret in its event procedure, on a machine with known names.
class FormFixture : public CodeFixture {
  public:
    explicit FormFixture(std::string_view source = ClickSource) : CodeFixture(source) {
        SetDesigner({{u"cmdOK", u"CommandButton"}});
        globals()->SetComputerName(u"BOX7");
        globals()->SetUserName(u"ann");
    }
};

// The three operations on a fixture's host, in UTF-8, at a known time.
class Templates {
  public:
    explicit Templates(CodeFixture& fixture) : Templates(*fixture.globals()) {}
    explicit Templates(hostmodel::Globals& globals) : globals_(globals) {}

    support::FixedClock clock;
    support::FixedRegionalTexts regional;

    [[nodiscard]] std::string Parse(std::string_view pseudoCode) {
        return ToUtf8(ParsePseudoCode(Sources(), FromUtf8(pseudoCode)));
    }
    [[nodiscard]] std::string ParseEx(std::string_view pseudoCode, TextView componentName = u"Module1",
                                      TextView memberName = u"cmdOK_Click") {
        return ToUtf8(ParsePseudoCodeEx(Sources(), FromUtf8(pseudoCode), componentName, memberName));
    }
    [[nodiscard]] std::string Generate(std::string_view code) {
        return ToUtf8(GeneratePseudoCode(Sources(), FromUtf8(code)));
    }

  private:
    [[nodiscard]] TemplateSources Sources() { return {globals_, &clock, &regional}; }

    hostmodel::Globals& globals_;
};

constexpr std::string_view AllPlaceholders =
    "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|{UserName}|{Date}|{Time}|"
    "{MemberType}";
constexpr std::string_view AllValues = "Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|5/11/2026|17:4:9|Sub";

struct Replacement {
    TextView text;
    TextView find;
    TextView replacement;
    TextView result;
};

TEST(ReplaceAllTest, ReplacesEveryOccurrenceFromLeftToRight) {
    for (const Replacement& c : std::vector<Replacement>{
             {u"a-a-a", u"a", u"bc", u"bc-bc-bc"},
             {u"abab", u"ab", u"x", u"xx"},
             {u"none", u"x", u"y", u"none"},
             {u"x", u"x", u"y", u"y"},
             {u"subSub", u"Sub", u"_", u"sub_"},
             {u"cat category", u"cat", u"dog", u"dog dogegory"},
             {u"ab", u"abc", u"x", u"ab"},
         }) {
        EXPECT_EQ(ReplaceAll(c.text, c.find, c.replacement), c.result) << ToUtf8(c.text);
    }
}

TEST(ReplaceAllTest, OccurrencesDoNotOverlap) {
    EXPECT_EQ(ReplaceAll(u"aaaaa", u"aa", u"b"), u"bba");
}

TEST(ReplaceAllTest, TheReplacementIsNotSearchedAgain) {
    EXPECT_EQ(ReplaceAll(u"aa", u"a", u"aba"), u"abaaba");
    EXPECT_EQ(ReplaceAll(u"{UserName}", u"{UserName}", u"<{UserName}>"), u"<{UserName}>");
}

TEST(ReplaceAllTest, NothingIsDoneWithAnEmptyArgument) {
    EXPECT_EQ(ReplaceAll(u"", u"a", u"b"), u"");
    EXPECT_EQ(ReplaceAll(u"text", u"", u"b"), u"text");
    EXPECT_EQ(ReplaceAll(u"text", u"e", u""), u"text");
}

TEST(ReplaceAllTest, AgreesWithAScanCharacterByCharacter) {
    Random random(22);
    const std::array<char16_t, 3> letters = {u'a', u'b', u'A'};
    const auto word = [&](std::size_t longest) {
        Text text;
        for (std::size_t length = random.Below(longest + 1); length > 0; --length) {
            text += random.Pick(letters);
        }
        return text;
    };
    for (int round = 0; round < 5000; ++round) {
        const Text text = word(12);
        const Text find = word(3);
        const Text replacement = word(3);
        Text expected;
        for (std::size_t at = 0; at < text.size();) {
            if (!find.empty() && !replacement.empty() && text.compare(at, find.size(), find) == 0) {
                expected += replacement;
                at += find.size();
            } else {
                expected += text[at++];
            }
        }
        EXPECT_EQ(ReplaceAll(text, find, replacement), expected)
            << ToUtf8(text) << " " << ToUtf8(find) << " " << ToUtf8(replacement);
    }
}

TEST(ParsePseudoCodeTest, EveryPlaceholderBecomesItsValueAtTheCaret) {
    FormFixture form;
    EXPECT_EQ(Templates(form).Parse(AllPlaceholders), AllValues);
}

TEST(ParsePseudoCodeTest, EveryPlaceholderBecomesItsValueForAMemberByName) {
    FormFixture form;
    form.CloseCodeWindow();
    EXPECT_EQ(Templates(form).ParseEx(AllPlaceholders), AllValues);
}

TEST(ParsePseudoCodeTest, APlaceholderIsReplacedWhereverItStandsAndHoweverOften) {
    FormFixture form;
    EXPECT_EQ(Templates(form).Parse("x{UserName}{UserName}y\r\n' {UserName}"), "xannanny\r\n' ann");
    EXPECT_EQ(Templates(form).Parse("{{UserName}}"), "{ann}");
}

TEST(ParsePseudoCodeTest, TextWithoutBracesStaysAsItIs) {
    FormFixture form;
    constexpr std::string_view Code = "    Exit Sub\r\nProjectName ann\r\n\r\n";
    EXPECT_EQ(Templates(form).Parse(Code), Code);
    EXPECT_EQ(Templates(form).ParseEx(Code), Code);
    EXPECT_EQ(Templates(form).Parse(""), "");
}

TEST(ParsePseudoCodeTest, APlaceholderInOtherLetterCaseIsNone) {
    FormFixture form;
    constexpr std::string_view Code = "{projectname} {PROJECTNAME} {Username} {date} {Membertype}";
    EXPECT_EQ(Templates(form).Parse(Code), Code);
}

TEST(ParsePseudoCodeTest, OtherTextInBracesIsNoPlaceholder) {
    FormFixture form;
    constexpr std::string_view Code = "{Nothing} { UserName} {UserName {} }{ {ModuleName}";
    EXPECT_EQ(Templates(form).Parse(Code), Code);
}

TEST(ParsePseudoCodeTest, WithoutACodeWindowTheTemplateComesBack) {
    FormFixture form;
    form.CloseCodeWindow();
    EXPECT_EQ(Templates(form).Parse(AllPlaceholders), AllPlaceholders);
}

TEST(ParsePseudoCodeTest, InTheDeclarationsThereIsNoMember) {
    FormFixture form("Option Explicit^\nPrivate Sub cmdOK_Click()\nEnd Sub");
    EXPECT_EQ(Templates(form).Parse("{ComponentName} {MemberName} {ControlName} {MemberType}"),
              "Module1 {MemberName} {ControlName} {MemberType}");
}

TEST(ParsePseudoCodeTest, WithoutAMemberNameItsPlaceholdersStay) {
    FormFixture form;
    EXPECT_EQ(Templates(form).ParseEx(AllPlaceholders, u"Module1", u""),
              "Project1|Module1|{MemberName}|{ControlName}|BOX7|ann|5/11/2026|17:4:9|{MemberType}");
}

TEST(ParsePseudoCodeTest, WithoutAComponentNameItsPlaceholdersStay) {
    FormFixture form;
    EXPECT_EQ(Templates(form).ParseEx(AllPlaceholders, u"", u"cmdOK_Click"),
              "Project1|{ComponentName}|cmdOK_Click|{ControlName}|BOX7|ann|5/11/2026|17:4:9|{MemberType}");
}

TEST(ParsePseudoCodeTest, NamesAreInsertedAsGivenThoughNothingBearsThem) {
    FormFixture form;
    EXPECT_EQ(
        Templates(form).ParseEx("{ComponentName}.{MemberName} {ControlName} {MemberType}", u"No", u"a_b"),
        "No.a_b {ControlName} Property");
}

TEST(ParsePseudoCodeTest, TheProjectIsTheActiveOneWhateverTheWindowShows) {
    FormFixture form;
    form.AddComponent(u"Other", u"Module2", "Function Twice()\nEnd Function");
    form.workspace().SetActiveProject(*form.workspace().Find(u"Other"));
    EXPECT_EQ(Templates(form).ParseEx("{ProjectName} {MemberType}", u"Module2", u"Twice"), "Other Function");
    EXPECT_EQ(Templates(form).Parse("{ProjectName} {ComponentName}"), "Other Module1");
}

TEST(ParsePseudoCodeTest, NamesThatTheMachineDoesNotHaveLeaveTheirPlaceholders) {
    FormFixture form;
    form.globals()->SetComputerName(u"");
    form.globals()->SetUserName(u"");
    EXPECT_EQ(Templates(form).Parse("{ComputerName} {UserName} {ProjectName}"),
              "{ComputerName} {UserName} Project1");
}

TEST(ParsePseudoCodeTest, WithoutAClockDateAndTimeStay) {
    FormFixture form;
    support::FixedClock clock;
    support::FixedRegionalTexts regional;
    const Text pseudoCode = u"{Date} {Time} {UserName}";
    const Text expected = u"{Date} {Time} ann";
    for (const TemplateSources& sources : {TemplateSources{*form.globals(), nullptr, nullptr},
                                           TemplateSources{*form.globals(), &clock, nullptr},
                                           TemplateSources{*form.globals(), nullptr, &regional}}) {
        EXPECT_EQ(ParsePseudoCodeEx(sources, pseudoCode, u"", u""), expected);
    }
}

TEST(ParsePseudoCodeTest, AClockThatFailsLeavesDateAndTime) {
    FormFixture form;
    Templates templates(form);
    templates.clock.fails = true;
    EXPECT_EQ(templates.Parse("{Date} {Time} {MemberType}"), "{Date} {Time} Sub");
}

TEST(ParsePseudoCodeTest, DateAndTimeFailEachOnItsOwn) {
    FormFixture form;
    Templates templates(form);
    templates.regional.datesFail = true;
    EXPECT_EQ(templates.Parse("{Date} {Time}"), "{Date} 17:4:9");
    templates.regional = {};
    templates.regional.timesFail = true;
    EXPECT_EQ(templates.Parse("{Date} {Time}"), "5/11/2026 {Time}");
}

TEST(ParsePseudoCodeTest, DateAndTimeAreThoseOfOneMoment) {
    FormFixture form;
    Templates templates(form);
    EXPECT_EQ(templates.Parse("{Date} {Time} {Date}"), "5/11/2026 17:4:9 5/11/2026");
    EXPECT_EQ(templates.clock.questions, 1U);
    templates.clock.time = {.year = 2027, .month = 1, .day = 2, .hour = 3, .minute = 40, .second = 50};
    EXPECT_EQ(templates.Parse("{Date} {Time}"), "2/1/2027 3:40:50");
}

// Each row's replacement works on what the rows before it have left.
TEST(ParsePseudoCodeTest, AValueWithAPlaceholderIsExpandedByTheRowsBelowItsOwnOnly) {
    FormFixture form;
    form.globals()->SetComputerName(u"{ProjectName}+{ComputerName}+{UserName}");
    EXPECT_EQ(Templates(form).Parse("{ComputerName}"), "{ProjectName}+{ComputerName}+ann");
}

TEST(ParsePseudoCodeTest, TheRowsAreReplacedInTheirOrder) {
    // A value that holds all placeholders keeps those of its own row and of the rows above.
    FormFixture form;
    form.globals()->SetComputerName(FromUtf8(AllPlaceholders));
    EXPECT_EQ(
        Templates(form).Parse("{ComputerName}"),
        "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|ann|5/11/2026|17:4:9|Sub");
    form.globals()->SetComputerName(u"BOX7");
    form.globals()->SetUserName(FromUtf8(AllPlaceholders));
    EXPECT_EQ(Templates(form).Parse("{UserName}"),
              "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|{UserName}|5/11/2026|"
              "17:4:9|Sub");
    form.globals()->SetUserName(u"ann");
    EXPECT_EQ(Templates(form).ParseEx("{ComponentName}", FromUtf8(AllPlaceholders), u"M"),
              "{ProjectName}|{ComponentName}|M|{ControlName}|BOX7|ann|5/11/2026|17:4:9|Property");
    EXPECT_EQ(Templates(form).ParseEx("{MemberName}", u"C", FromUtf8(AllPlaceholders)),
              "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|BOX7|ann|5/11/2026|17:4:9|Property");
}

TEST(ParsePseudoCodeTest, ControlNamesComeAfterMemberNamesAndBeforeUserNames) {
    FormFixture form;
    form.SetDesigner({{u"{MemberName}{UserName}", u"Label"}});
    EXPECT_EQ(Templates(form).ParseEx("{ControlName}", u"Module1", u"{MemberName}{UserName}_Click"),
              "{MemberName}ann");
}

// Date and time as a template.
class PlaceholderTexts : public RegionalTexts {
  public:
    Result<Text> Date(const LocalTime&) override { return Text(u"{UserName}{Date}{Time}{MemberType}"); }
    Result<Text> Time(const LocalTime&) override { return Text(u"{Date}{Time}{MemberType}"); }
};

TEST(ParsePseudoCodeTest, DatesComeBeforeTimesAndTimesBeforeKinds) {
    FormFixture form;
    support::FixedClock clock;
    PlaceholderTexts regional;
    const TemplateSources sources{*form.globals(), &clock, &regional};
    EXPECT_EQ(ParsePseudoCodeEx(sources, u"{Date}", u"Module1", u"cmdOK_Click"),
              u"{UserName}{Date}{Date}{Time}SubSub");
}

TEST(ParsePseudoCodeTest, TheHostIsAskedForNoValueThatWouldReplaceNothing) {
    FormFixture form;
    const auto plan = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals(form.globals(), plan);
    Templates templates(globals);
    EXPECT_EQ(templates.ParseEx("On Error Resume Next"), "On Error Resume Next");
    EXPECT_TRUE(plan->calls.empty());
    EXPECT_EQ(templates.ParseEx("{UserName}"), "ann");
    EXPECT_EQ(plan->calls, std::vector<std::string>{"Globals.UserName"});
    EXPECT_EQ(templates.clock.questions, 0U);
}

struct ControlCase {
    ComponentType type;
    TextView member;
    std::string_view control;
};

TEST(ControlNameTest, IsThePartOfTheMembersNameThatAControlBears) {
    FormFixture form;
    form.SetDesigner({{u"cmdOK", u"CommandButton"}, {u"txt_Name", u"TextBox"}, {u"odd", u""}});
    for (const ControlCase& c : std::vector<ControlCase>{
             {ComponentType::Form, u"cmdOK_Click", "cmdOK"},
             {ComponentType::Form, u"CMDok_Click", "CMDok"},
             {ComponentType::Form, u"cmdOK_", "cmdOK"},
             {ComponentType::Form, u"txt_Name_Change", "txt_Name"},
             {ComponentType::Form, u"cmdCancel_Click", "{ControlName}"},
             {ComponentType::Form, u"cmdOK", "{ControlName}"},
             {ComponentType::Form, u"_Click", "{ControlName}"},
             {ComponentType::Form, u"odd_Click", "{ControlName}"},
         }) {
        EXPECT_EQ(Templates(form).ParseEx("{ControlName}", u"Module1", c.member), c.control)
            << ToUtf8(c.member);
    }
}

TEST(ControlNameTest, IsTheKindWordForTheObjectsOwnEvents) {
    for (const ControlCase& c : std::vector<ControlCase>{
             {ComponentType::Class, u"Class_Initialize", "Class"},
             {ComponentType::Form, u"Form_Load", "Form"},
             {ComponentType::MDIForm, u"MDIForm_Load", "MDIForm"},
             {ComponentType::PropertyPage, u"PropertyPage_Initialize", "PropertyPage"},
             {ComponentType::UserControl, u"UserControl_Resize", "UserControl"},
             {ComponentType::UserDocument, u"UserDocument_Show", "UserDocument"},
             {ComponentType::MDIForm, u"Form_Load", "{ControlName}"},
             {ComponentType::Form, u"form_Load", "{ControlName}"},
             {ComponentType::Form, u"FORM_Load", "{ControlName}"},
             {ComponentType::Form, u"Form", "{ControlName}"},
             {ComponentType::Form, u"Form_Load_Twice", "{ControlName}"},
             {ComponentType::Module, u"Module_Load", "{ControlName}"},
             {ComponentType::OfficeForm, u"UserForm_Initialize", "{ControlName}"},
             {ComponentType::Designer, u"Designer_Load", "{ControlName}"},
         }) {
        FormFixture form;
        form.SetDesigner({}, c.type);
        EXPECT_EQ(Templates(form).ParseEx("{ControlName}", u"Module1", c.member), c.control)
            << ToUtf8(c.member);
    }
}

TEST(ControlNameTest, IsMissingWithoutADesignerOrAComponent) {
    CodeFixture fixture(ClickSource);
    fixture.AddComponent(support::ProjectName, u"Class1", "", ComponentType::Class);
    EXPECT_EQ(Templates(fixture).ParseEx("{ControlName}", u"Module1", u"cmdOK_Click"), "{ControlName}");
    EXPECT_EQ(Templates(fixture).ParseEx("{ControlName}", u"Class1", u"Class_Initialize"), "{ControlName}");
    EXPECT_EQ(Templates(fixture).ParseEx("{ControlName}", u"Nothing", u"cmdOK_Click"), "{ControlName}");
}

TEST(GeneratePseudoCodeTest, EveryCurrentValueBecomesItsPlaceholder) {
    FormFixture form;
    EXPECT_EQ(Templates(form).Generate("Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|Sub"),
              "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|{UserName}|"
              "{MemberType}");
}

TEST(GeneratePseudoCodeTest, DateAndTimeAreNotSought) {
    FormFixture form;
    Templates templates(form);
    EXPECT_EQ(templates.Generate("5/11/2026 17:4:9"), "5/11/2026 17:4:9");
    EXPECT_EQ(templates.clock.questions, 0U);
}

TEST(GeneratePseudoCodeTest, WithoutACodeWindowTheCodeComesBack) {
    FormFixture form;
    form.CloseCodeWindow();
    EXPECT_EQ(Templates(form).Generate("Project1 ann Property"), "Project1 ann Property");
}

TEST(GeneratePseudoCodeTest, ValuesAreFoundInsideLongerWordsInTheirLetterCase) {
    FormFixture form;
    EXPECT_EQ(Templates(form).Generate("GoSub MyProject1Path project1 channel"),
              "Go{MemberType} My{ProjectName}Path project1 ch{UserName}el");
}

TEST(GeneratePseudoCodeTest, EmptyValuesAreSkipped) {
    FormFixture form("Option Explicit^\nPrivate Sub cmdOK_Click()\nEnd Sub");
    form.globals()->SetComputerName(u"");
    form.globals()->SetUserName(u"");
    EXPECT_EQ(Templates(form).Generate("cmdOK_Click on BOX7 by ann in Module1, a Property"),
              "cmdOK_Click on BOX7 by ann in {ComponentName}, a {MemberType}");
    EXPECT_EQ(Templates(form).Generate(""), "");
}

// Each value is sought in what the values before it have left, their placeholders included.
TEST(GeneratePseudoCodeTest, TheOrderDecidesWhoseNameAnAmbiguousTextIs) {
    FormFixture form;
    form.globals()->SetComputerName(u"Project1");
    form.globals()->SetUserName(u"cmdOK");
    EXPECT_EQ(Templates(form).Generate("Project1 cmdOK"), "{ProjectName} {ControlName}");
    form.globals()->SetComputerName(u"Name");
    EXPECT_EQ(Templates(form).Generate("Project1"), "{Project{ComputerName}}");
    form.globals()->SetUserName(u"Computer");
    EXPECT_EQ(Templates(form).Generate("Project1"), "{Project{{UserName}Name}}");
}

TEST(GeneratePseudoCodeTest, TheKindIsThatOfTheMemberAtTheCaret) {
    FormFixture form("Option Explicit\n' comment\nFunction Twice()\n^\nEnd Function");
    EXPECT_EQ(Templates(form).Generate("Function ?"), "Function {MemberType}");
}

TEST(GeneratePseudoCodeTest, TheControlIsThatOfTheComponentInTheWindow) {
    FormFixture form;
    form.AddComponent(u"Other", u"Module1", "");
    form.workspace().SetActiveProject(*form.workspace().Find(u"Other"));
    EXPECT_EQ(Templates(form).Generate("Other cmdOK"), "{ProjectName} {ControlName}");
}

TEST(GeneratePseudoCodeTest, TakesBackWhatWasExpanded) {
    Random random(23);
    const std::array<std::string_view, 12> pieces = {"{ProjectName}",
                                                     "{ComponentName}",
                                                     "{MemberName}",
                                                     "{ControlName}",
                                                     "{ComputerName}",
                                                     "{UserName}",
                                                     "{MemberType}",
                                                     " = ",
                                                     "\r\n",
                                                     "_12",
                                                     "{}",
                                                     "\xC3\xA9"};
    FormFixture form;
    Templates templates(form);
    for (int round = 0; round < 500; ++round) {
        std::string pseudoCode;
        for (std::size_t length = random.Below(12); length > 0; --length) {
            pseudoCode += random.Pick(pieces);
        }
        EXPECT_EQ(templates.Generate(templates.Parse(pseudoCode)), pseudoCode);
    }
}

// What comes out when the call alone fails: in a run without faults the calls are these, in this order.
struct FaultyCall {
    std::string_view call;
    std::string_view result;
};

template <class Use>
void CheckEveryFault(const std::vector<FaultyCall>& calls, std::string_view expected, Use use) {
    std::string result;
    auto expectation = calls.begin();
    support::WithEveryCallFaulty(
        support::Fault::Fails, [] { return std::make_unique<FormFixture>(); },
        [&](const auto& globals) {
            Templates templates(*globals);
            result = use(templates);
        },
        [&](FormFixture& form, const support::FaultPlan& plan, std::string_view faulty) {
            EXPECT_EQ(form.globals()->liveHandles(), 0U) << faulty;
            EXPECT_EQ(plan.liveHandles, 1U) << faulty;
            EXPECT_FALSE(form.module().edited());
            if (faulty == "no fault") {
                EXPECT_EQ(result, expected);
                return;
            }
            ASSERT_NE(expectation, calls.end()) << faulty << " is one call too many";
            EXPECT_EQ(faulty, expectation->call);
            EXPECT_EQ(result, expectation->result) << faulty;
            ++expectation;
        });
    EXPECT_EQ(expectation, calls.end()) << "fewer calls than expected";
}

TEST(FaultyTemplatesTest, AFailingCallLeavesItsPlaceholderAlone) {
    constexpr std::string_view NoProject = "{ProjectName}|Module1|cmdOK_Click|cmdOK|BOX7|ann|Sub";
    constexpr std::string_view NoControl = "Project1|Module1|cmdOK_Click|{ControlName}|BOX7|ann|Sub";
    constexpr std::string_view NoHeader = "Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|Property";
    const std::vector<FaultyCall> calls = {
        {"Globals.VBE", NoProject},
        {"VBE.ActiveVBProject", NoProject},
        {"VBProject.Name", NoProject},
        {"Globals.TokenBefore", NoControl},
        {"Globals.VBE", NoControl},
        {"VBE.ActiveVBProject", NoControl},
        {"VBProject.VBComponents", NoControl},
        {"VBComponents.Item", NoControl},
        {"VBComponent.Designer", NoControl},
        {"Dispatch.VBControls", NoControl},
        {"Dispatch.Count", NoControl},
        {"Dispatch.", NoControl},
        {"Dispatch.ClassName", NoControl},
        {"Globals.ComputerName", "Project1|Module1|cmdOK_Click|cmdOK|{ComputerName}|ann|Sub"},
        {"Globals.UserName", "Project1|Module1|cmdOK_Click|cmdOK|BOX7|{UserName}|Sub"},
        {"Globals.VBE", NoHeader},
        {"VBE.ActiveVBProject", NoHeader},
        {"VBProject.VBComponents", NoHeader},
        {"VBComponents.Item", NoHeader},
        {"VBComponent.CodeModule", NoHeader},
        {"CodeModule.ProcBodyLine", NoHeader},
        {"CodeModule.Lines", "Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|?"},
    };
    CheckEveryFault(calls, "Project1|Module1|cmdOK_Click|cmdOK|BOX7|ann|Sub", [](Templates& templates) {
        return templates.ParseEx(
            "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}|{ComputerName}|"
            "{UserName}|{MemberType}");
    });
}

TEST(FaultyTemplatesTest, AFailingCallOnTheWayToTheCaretLeavesItsNameUnknown) {
    constexpr std::string_view Unexpanded = "{ComponentName}|{MemberName}";
    constexpr std::string_view NoComponent = "{ComponentName}|cmdOK_Click";
    constexpr std::string_view NoMember = "Module1|{MemberName}";
    const std::vector<FaultyCall> calls = {
        {"Globals.VBE", Unexpanded},
        {"VBE.ActiveCodePane", Unexpanded},
        {"CodePane.CountOfVisibleLines", Unexpanded},
        {"Globals.VBE", NoComponent},
        {"VBE.ActiveCodePane", NoComponent},
        {"CodePane.CodeModule", NoComponent},
        {"CodeModule.Parent", NoComponent},
        {"VBComponent.Name", NoComponent},
        {"Globals.VBE", NoMember},
        {"VBE.ActiveCodePane", NoMember},
        {"CodePane.TopLine", NoMember},
        {"CodePane.GetSelection", NoMember},
        {"Globals.VBE", NoMember},
        {"VBE.ActiveCodePane", NoMember},
        {"CodePane.CodeModule", NoMember},
        // The name is asked for again as that of a property.
        {"CodeModule.ProcOfLine", "Module1|cmdOK_Click"},
    };
    CheckEveryFault(calls, "Module1|cmdOK_Click",
                    [](Templates& templates) { return templates.Parse("{ComponentName}|{MemberName}"); });
}

TEST(FaultyTemplatesTest, AFailingCallLeavesItsValueInTheCode) {
    constexpr std::string_view Code = "Project1|Module1|cmdOK_Click|cmdOK-|BOX7|ann|Sub";
    constexpr std::string_view NoProject =
        "Project1|{ComponentName}|{MemberName}|{ControlName}-|{ComputerName}|{UserName}|{MemberType}";
    constexpr std::string_view NoComponent =
        "{ProjectName}|Module1|{MemberName}|{ControlName}-|{ComputerName}|{UserName}|{MemberType}";
    constexpr std::string_view NoMember =
        "{ProjectName}|{ComponentName}|{ControlName}_Click|{ControlName}-|{ComputerName}|{UserName}|"
        "{MemberType}";
    constexpr std::string_view NoControl =
        "{ProjectName}|{ComponentName}|{MemberName}|cmdOK-|{ComputerName}|{UserName}|{MemberType}";
    constexpr std::string_view NoComputer =
        "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}-|BOX7|{UserName}|{MemberType}";
    constexpr std::string_view NoUser =
        "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}-|{ComputerName}|ann|{MemberType}";
    constexpr std::string_view NoKind =
        "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}-|{ComputerName}|{UserName}|Sub";
    constexpr std::string_view All =
        "{ProjectName}|{ComponentName}|{MemberName}|{ControlName}-|{ComputerName}|{UserName}|{MemberType}";
    const std::vector<FaultyCall> calls = {
        {"Globals.VBE", Code},
        {"VBE.ActiveCodePane", Code},
        {"CodePane.CountOfVisibleLines", Code},
        {"Globals.VBE", NoProject},
        {"VBE.ActiveVBProject", NoProject},
        {"VBProject.Name", NoProject},
        {"Globals.VBE", NoComponent},
        {"VBE.ActiveCodePane", NoComponent},
        {"CodePane.CodeModule", NoComponent},
        {"CodeModule.Parent", NoComponent},
        {"VBComponent.Name", NoComponent},
        {"Globals.VBE", NoMember},
        {"VBE.ActiveCodePane", NoMember},
        {"CodePane.TopLine", NoMember},
        {"CodePane.GetSelection", NoMember},
        {"Globals.VBE", NoMember},
        {"VBE.ActiveCodePane", NoMember},
        {"CodePane.CodeModule", NoMember},
        {"CodeModule.ProcOfLine", All},
        {"Globals.VBE", NoControl},
        {"VBE.ActiveCodePane", NoControl},
        {"CodePane.TopLine", NoControl},
        {"CodePane.GetSelection", NoControl},
        {"Globals.VBE", NoControl},
        {"VBE.ActiveCodePane", NoControl},
        {"CodePane.CodeModule", NoControl},
        {"CodeModule.ProcOfLine", All},
        {"Globals.TokenBefore", NoControl},
        {"Globals.VBE", NoControl},
        {"VBE.ActiveCodePane", NoControl},
        {"CodePane.CodeModule", NoControl},
        {"CodeModule.Parent", NoControl},
        {"VBComponent.Designer", NoControl},
        {"Dispatch.VBControls", NoControl},
        {"Dispatch.Count", NoControl},
        {"Dispatch.", NoControl},
        {"Dispatch.ClassName", NoControl},
        {"Globals.ComputerName", NoComputer},
        {"Globals.UserName", NoUser},
        {"Globals.VBE", NoKind},
        {"VBE.ActiveCodePane", NoKind},
        {"CodePane.TopLine", NoKind},
        {"CodePane.GetSelection", NoKind},
        {"Globals.VBE", NoKind},
        {"VBE.ActiveCodePane", NoKind},
        {"CodePane.CodeModule", NoKind},
        {"CodeModule.ProcOfLine", NoKind},
        // Without the first line of its block the caret's line is read, which does not name the member.
        {"CodeModule.ProcStartLine", NoKind},
        {"CodeModule.Lines", NoKind},
    };
    CheckEveryFault(calls, All, [&](Templates& templates) { return templates.Generate(Code); });
}

// A designer, its collection and its only control in one, which answers with what a test tells it.
class OddDesigner : public hostmodel::Dispatch, public std::enable_shared_from_this<OddDesigner> {
  public:
    hostmodel::Value count = 1;
    hostmodel::Value className = Text(u"CommandButton");

    Result<hostmodel::Value> Invoke(TextView name, std::span<const hostmodel::Value>) override {
        if (name == u"Count") {
            return count;
        }
        return name == u"ClassName" ? className : std::static_pointer_cast<Dispatch>(shared_from_this());
    }
    Result<void> Put(TextView, const hostmodel::Value&) override { return {}; }
};

TEST(ControlNameTest, AnswersOfTheDesignerOfTheWrongTypeAreFailures) {
    struct Case {
        hostmodel::Value count;
        hostmodel::Value className;
        std::string_view control;
    };
    for (const Case& c : std::vector<Case>{
             {1, Text(u"CommandButton"), "cmdOK"},
             {0, Text(u"CommandButton"), "cmdOK"},
             {-1, Text(u"CommandButton"), "{ControlName}"},
             {Text(u"many"), Text(u"CommandButton"), "{ControlName}"},
             {1, Text(), "{ControlName}"},
             {1, std::shared_ptr<hostmodel::Dispatch>(), "{ControlName}"},
             {1, 17, "{ControlName}"},
         }) {
        const auto module = std::make_shared<support::ScriptedModule>();
        const auto designer = std::make_shared<OddDesigner>();
        designer->count = c.count;
        designer->className = c.className;
        module->designer = designer;
        module->tokenBefore = [](TextView text, TextView separator) {
            EXPECT_EQ(text, u"cmdOK_Click");
            EXPECT_EQ(separator, u"_");
            return Result<Text>(u"cmdOK");
        };
        EXPECT_EQ(Templates(*support::GlobalsOver(module)).ParseEx("{ControlName}"), c.control);
    }
}

TEST(ControlNameTest, IsNotLookedForWithoutBothNames) {
    const auto module = std::make_shared<support::ScriptedModule>();
    module->designer = std::make_shared<OddDesigner>();
    module->tokenBefore = [](TextView, TextView) { return Result<Text>(u"cmdOK"); };
    const auto globals = support::GlobalsOver(module);
    Templates templates(*globals);
    EXPECT_EQ(templates.ParseEx("{ControlName}", u"Component", u"cmdOK_Click"), "cmdOK");
    EXPECT_EQ(templates.ParseEx("{ControlName}", u"", u"cmdOK_Click"), "{ControlName}");
    EXPECT_EQ(templates.ParseEx("{ControlName}", u"Component", u""), "{ControlName}");
}

TEST(FaultyTemplatesTest, AnEmptyAnswerOfTheDesignerIsTakenAsTheLanguageTakesIt) {
    struct Case {
        std::string_view call;
        std::string_view result;
    };
    for (const Case& c : std::vector<Case>{
             {"Dispatch.Count", "cmdOK"},  // Empty is 0, and 0 controls are a designer
             {"Dispatch.VBControls", "{ControlName}"},
             {"Dispatch.", "{ControlName}"},
             {"Dispatch.ClassName", "{ControlName}"},
             {"VBComponent.Designer", "{ControlName}"},
         }) {
        FormFixture form;
        const auto plan = std::make_shared<support::FaultPlan>();
        plan->fault = [&](std::size_t, std::string_view call) {
            return call == c.call ? support::Fault::Empty : support::Fault::None;
        };
        support::FaultyGlobals globals(form.globals(), plan);
        EXPECT_EQ(Templates(globals).ParseEx("{ControlName}"), c.result) << c.call;
    }
}

TEST(FaultyTemplatesTest, AnUnknownComponentTypeHasNoKindWord) {
    for (const std::string_view call : {"VBComponent.Type", "Dispatch."}) {
        FormFixture form;
        const auto plan = std::make_shared<support::FaultPlan>();
        plan->fault = [&](std::size_t, std::string_view made) {
            return made == call ? support::Fault::Fails : support::Fault::None;
        };
        support::FaultyGlobals globals(form.globals(), plan);
        EXPECT_EQ(Templates(globals).ParseEx("{ControlName}", u"Module1", u"Form_Load"),
                  call == "Dispatch." ? "Form" : "{ControlName}");
    }
}

}  // namespace
}  // namespace lintara::transform

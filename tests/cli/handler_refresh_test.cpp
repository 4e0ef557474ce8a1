// Handlers that a changed label or template, or a procedure's new name, have made out of date.
#include "tests/cli/command_run.h"
#include "tests/cli/handler_edits.h"
#include "workspace/encoding.h"
#include "workspace/object_model.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* Marker = "' TWErrorHandler begin - please do not modify or remove this line\n";

HandlerCommand Refresh(Text label, Text code) {
    return {.handler = {std::move(label), std::move(code)}, .refresh = true};
}

HandlerCommand RefreshWithNumbers(Text label, Text code) {
    HandlerCommand command = Refresh(std::move(label), std::move(code));
    command.numbers = NumberOptions{};
    return command;
}

std::string Handled(const std::string& label, const std::string& code) {
    return "Sub A()\n    On Error GoTo " + label + "\n    x\n" + Marker + "Exit Sub\n" + label + ":\n" +
           code + "\nEnd Sub\n";
}

TEST(HandlerRefresh, LeavesWhatIsUpToDate) {
    EditedModule module(Handled("hErr", "    DEBUG.print \"A\"") + "Sub B()\n    y\nEnd Sub\n");
    const HandlerCommand refresh{.refresh = true};
    EXPECT_THAT(EditedIn(InsertHandlers(module, refresh)), ElementsAre("B"));
    EXPECT_THAT(EditedIn(InsertHandlers(module, refresh)), IsEmpty());
}

TEST(HandlerRefresh, BringsTheTemplateUpToDate) {
    EditedModule module(Handled("hErr", "    old"));
    EXPECT_THAT(EditedIn(InsertHandlers(module)), IsEmpty()) << "without --refresh";
    EXPECT_THAT(EditedIn(InsertHandlers(module, Refresh(u"hErr", u"    Report \"{MemberName}\""))),
                ElementsAre("A"));
    EXPECT_EQ(module.Code(), Handled("hErr", "    Report \"A\""));
}

TEST(HandlerRefresh, ChangesTheLabelAndLeavesOneFirstStatement) {
    EditedModule module(Handled("old", "    y"));
    const ComponentReport report = InsertHandlers(module, Refresh(u"hNew", u"    y"));
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(RemarksIn(report), IsEmpty());
    EXPECT_EQ(module.Code(), Handled("hNew", "    y"));
}

TEST(HandlerRefresh, LeavesOneFirstStatementWithACommentBehindIt) {
    EditedModule module("Sub A()\n    On Error GoTo old ' on\n" + std::string(Marker) +
                        "Exit Sub\nold:\n    y\nEnd Sub\n");
    EXPECT_THAT(EditedIn(InsertHandlers(module, Refresh(u"hNew", u"    y"))), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\n    On Error GoTo hNew ' on\n" + std::string(Marker) +
                                 "Exit Sub\nhNew:\n    y\nEnd Sub\n");
}

TEST(HandlerRefresh, FollowsARenamedProcedure) {
    EditedModule module("Sub B()\n    x\n" + UsualBlock("Sub", "A") + "End Sub\n");
    EXPECT_THAT(EditedIn(InsertHandlers(module, {.refresh = true})), ElementsAre("B"));
    EXPECT_EQ(module.Code(),
              "Sub B()\n    On Error GoTo hErr\n    x\n" + UsualBlock("Sub", "B") + "End Sub\n");
}

TEST(HandlerRefresh, TreatsAllProceduresOfAProperty) {
    EditedModule module("Property Get P()\n    P = 1\n" + UsualBlock("Property", "P") +
                        "End Property\nProperty Let P(v)\n    x = v\n" + UsualBlock("Property", "old") +
                        "End Property\nProperty Set P(v)\n    x = v\nEnd Property\n");
    EXPECT_THAT(EditedIn(InsertHandlers(module, {.refresh = true})), ElementsAre("P"));
    const std::string block = UsualBlock("Property", "P");
    EXPECT_EQ(module.Code(), "Property Get P()\n    On Error GoTo hErr\n    P = 1\n" + block +
                                 "End Property\nProperty Let P(v)\n    On Error GoTo hErr\n    x = v\n" +
                                 block +
                                 "End Property\nProperty Set P(v)\n    On Error GoTo hErr\n    x = v\n" +
                                 block + "End Property\n");
}

TEST(HandlerRefresh, ToleratesJumpsToALabelThatComesBack) {
    EditedModule module("Sub A()\n    If x Then GoTo hErr\n" + UsualBlock("Sub", "old") + "End Sub\n");
    EXPECT_THAT(EditedIn(InsertHandlers(module, {.refresh = true})), ElementsAre("A"));
}

TEST(HandlerRefresh, DisregardsWhoAndWhen) {
    EditedModule module(Handled("hErr", "    ' ada, 1/2/2003 10:11: A"));
    const HandlerCommand refresh = Refresh(u"hErr", u"    ' {UserName}, {Date} {Time}: {MemberName}");
    EXPECT_THAT(EditedIn(InsertHandlers(module, refresh)), IsEmpty());
    EXPECT_THAT(EditedIn(InsertHandlers(module, Refresh(u"hErr", u"    ' {UserName}, {Date} {Time}: B"))),
                ElementsAre("A"));
}

struct SkipCase {
    const char* name;
    const char* code;
    const char* skipped;
};

void PrintTo(const SkipCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerRefreshSkips : public testing::TestWithParam<SkipCase> {};

TEST_P(HandlerRefreshSkips, TheProcedureAndLeavesItAsItWas) {
    EditedModule module(Replaced(GetParam().code, "[marker]\n", Marker));
    const ComponentReport report = InsertHandlers(module, Refresh(u"hNew", u"    y"));
    EXPECT_THAT(EditedIn(report), IsEmpty());
    EXPECT_THAT(SkippedIn(report), ElementsAre(GetParam().skipped));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

const SkipCase skipCases[] = {
    {"Numbers", "Sub A()\n10000: x\n10005: [marker]\n10010: Exit Sub\nold:\n10020: y\nEnd Sub\n",
     "already-numbered A"},
    {"ForeignNumbers", "Sub A()\n10 x\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n", "foreign-numbers A"},
    {"NothingButTheHandler", "Sub A()\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n", "empty-body A"},
    {"JumpToTheOldLabel", "Sub A()\n    GoTo old\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n",
     "jump-target A"},
    {"JumpToTheNewLabel", "Sub A()\n    GoTo hNew\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n",
     "jump-target A"},
    {"NewLabelExists", "Sub A()\nhNew:\n    x\n[marker]\nExit Sub\nold:\n    y\nEnd Sub\n", "label-exists A"},
    {"DifferentLabels",
     "Property Get A()\n    x\n[marker]\nExit Property\nold:\n    y\nEnd Property\n"
     "Property Let A(v)\n    x\n[marker]\nExit Property\nolder:\n    y\nEnd Property\n",
     "label-mismatch A"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerRefreshSkips, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(HandlerRefresh, WritesNumbersAnewWhenAskedFor) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    InsertHandlers(module, {.handler = {u"old", u"    y"}, .numbers = NumberOptions{}});
    EditedModule reloaded = EditedModule::FromFile(module.Bytes());
    const ComponentReport report = InsertHandlers(reloaded, RefreshWithNumbers(u"hNew", u"    y\r\n    z"));
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), IsEmpty());
    EXPECT_EQ(reloaded.Code(),
              "Sub A()\n10000:     On Error GoTo hNew\n10005:     x\n10010: " + std::string(Marker) +
                  "10015: Exit Sub\nhNew:\n10025:     y\n10030:     z\nEnd Sub\n");
    EXPECT_THAT(EditedIn(InsertHandlers(reloaded, RefreshWithNumbers(u"hNew", u"    y\r\n    z"))),
                IsEmpty());
}

TEST(HandlerRefresh, PutsNumbersBackWhenTheHandlerStays) {
    EditedModule module("Sub A()\n10000: GoTo old\n10005: " + std::string(Marker) +
                        "10010: Exit Sub\nold:\n10020: y\nEnd Sub\n");
    const ComponentReport report = InsertHandlers(module, RefreshWithNumbers(u"hNew", u"    y"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("jump-target A"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(HandlerRefresh, PutsEverythingBackWhenTheNewHandlerMisleadsTheLibrary) {
    const std::string block = std::string(Marker) + "Exit Property\nhErr:\n    old\nEnd Property\n";
    EditedModule module("Property Get A()\n    On Error GoTo hErr ' one\n" + block +
                        "Property Let A(v)\n    x = v\n" + block);
    const ComponentReport report = InsertHandlers(module, Refresh(u"hErr", u"' Property Let A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("breaks-procedure A"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

struct StateCase {
    const char* name;
    const char* code;
    HandlerState state;
    const char* why;
};

void PrintTo(const StateCase& c, std::ostream* out) {
    *out << c.name;
}

class HandlerStates : public testing::TestWithParam<StateCase> {};

TEST_P(HandlerStates, AreToldWithTheReason) {
    workspace::Workspace workspace;
    auto& project = workspace.Add(std::make_unique<workspace::Project>(u"Project1", ""));
    auto added = std::make_unique<workspace::Component>();
    added->name = u"Module1";
    added->module = workspace::Module::FromText(
        workspace::FromUtf8(Replaced(Replaced(GetParam().code, "[marker]\n", Marker), "\n", "\r\n")));
    workspace::Component& component = project.Add(std::move(added));
    workspace.SetActiveProject(project);
    Lintara lintara;
    lintara.oG = std::make_shared<workspace::WorkspaceGlobals>(workspace);
    const auto groups = GroupProcedures(component.module->Procedures());
    const HandlerFinding finding =
        StateOfHandler({lintara, project, component, *component.module}, groups.front(),
                       {u"hErr", u"    y \"{MemberName}\"\r\n    z"});
    EXPECT_EQ(finding.state, GetParam().state);
    EXPECT_THAT(finding.why, HasSubstr(GetParam().why));
}

const StateCase stateCases[] = {
    {"None", "Sub A()\n    x\nEnd Sub\n", HandlerState::None, ""},
    {"UpToDate", "Sub A()\n    x\n[marker]\nExit Sub\nhErr:\n    y \"A\"\n    z\nEnd Sub\n",
     HandlerState::UpToDate, ""},
    {"Numbered",
     "Sub A()\n10000: x\n10005: [marker]\n10010: exit sub\nhErr:\n10020:     y \"A\"\n           z\n\nEnd "
     "Sub\n",
     HandlerState::UpToDate, ""},
    {"CaseInQuotesCounts", "Sub A()\n    x\n[marker]\nExit Sub\nhErr:\n    y \"a\"\n    z\nEnd Sub\n",
     HandlerState::OutOfDate, "line 6 (line 6 of the file) is not what the template gives"},
    {"Label", "Sub A()\n    x\n[marker]\nExit Sub\nold:\n    y \"A\"\n    z\nEnd Sub\n",
     HandlerState::OutOfDate, "its label at line 5 (line 5 of the file) is old, not hErr"},
    {"TooShort", "Sub A()\n    x\n[marker]\nExit Sub\nhErr:\n    y \"A\"\nEnd Sub\n", HandlerState::OutOfDate,
     "ends at line 6"},
    {"TooLong", "Sub A()\n    x\n[marker]\nExit Sub\nhErr:\n    y \"A\"\n    z\n    more\nEnd Sub\n",
     HandlerState::OutOfDate, "line 8"},
    {"OneOfAProperty",
     "Property Get A()\n    x\n[marker]\nExit Property\nhErr:\n    y \"A\"\n    z\nEnd Property\n"
     "Property Let A(v)\n    x\nEnd Property\n",
     HandlerState::OutOfDate, "the procedure at line 9 (line 9 of the file) has none"},
};

INSTANTIATE_TEST_SUITE_P(Cases, HandlerStates, testing::ValuesIn(stateCases),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace lintara::cli

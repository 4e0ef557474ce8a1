#include "workspace/object_model.h"

#include "tests/support/code_fixture.h"
#include "workspace/encoding.h"

#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::ComponentType;
using hostmodel::Dispatch;
using hostmodel::MemberKind;
using hostmodel::MemberType;
using hostmodel::Selection;
using hostmodel::Value;
using support::CodeFixture;

constexpr std::string_view Source = R"(
Dim total
Sub A()
  x = 1
End Sub
)";

std::shared_ptr<hostmodel::VBE> VbeOf(const CodeFixture& fixture) {
    return *fixture.globals()->VBE();
}

std::shared_ptr<hostmodel::CodeModule> ModuleOf(const CodeFixture& fixture, TextView project = u"Project1",
                                                TextView component = u"Module1") {
    const auto found = (*(*(*VbeOf(fixture)->VBProjects())->Item(project))->VBComponents())->Item(component);
    return *(*found)->CodeModule();
}

TEST(ObjectModel, LeadsFromTheRootToTheCode) {
    const CodeFixture fixture(Source);
    const auto projects = *VbeOf(fixture)->VBProjects();
    const auto project = *projects->Item(u"Project1");
    EXPECT_EQ(project->Name(), u"Project1");
    const auto component = *(*project->VBComponents())->Item(u"Module1");
    EXPECT_EQ(component->Name(), u"Module1");
    EXPECT_EQ(component->Type(), ComponentType::Module);
    const auto module = *component->CodeModule();
    EXPECT_EQ(module->Lines(Line{2}, 2), u"Sub A()\r\n  x = 1");
    EXPECT_EQ((*module->Parent())->Name(), u"Module1");
}

TEST(ObjectModel, NamesAreMatchedWithoutRegardToCase) {
    CodeFixture fixture(Source);
    fixture.AddComponent(u"\u00C4rger", u"\u00DCbung", "x");
    EXPECT_EQ(ModuleOf(fixture, u"PROJECT1", u"module1")->Lines(Line{1}, 1), u"Dim total");
    EXPECT_EQ(ModuleOf(fixture, u"\u00E4RGER", u"\u00FCBUNG")->Lines(Line{1}, 1), u"x");
    const auto projects = *VbeOf(fixture)->VBProjects();
    EXPECT_FALSE(projects->Item(u"Project"));
    EXPECT_FALSE(projects->Item(u""));
    const auto components = *(*projects->Item(u"Project1"))->VBComponents();
    EXPECT_FALSE(components->Item(u"Module2"));
    EXPECT_FALSE(components->Item(u""));
    // A component of another project is none of this one.
    EXPECT_FALSE(components->Item(u"\u00DCbung"));
}

TEST(ObjectModel, OfTwoOfOneNameTheFirstAnswers) {
    CodeFixture fixture("first");
    fixture.AddComponent(u"Project1", u"MODULE1", "second");
    EXPECT_EQ(ModuleOf(fixture)->Lines(Line{1}, 1), u"first");
    fixture.workspace().Add(std::make_unique<Project>(u"PROJECT1", std::filesystem::path()));
    EXPECT_EQ(fixture.workspace().Find(u"project1"), fixture.workspace().projects()[0].get());
}

TEST(ObjectModel, TheCodeModuleIsTheComponentsOwn) {
    const CodeFixture fixture(Source);
    const auto module = ModuleOf(fixture);
    EXPECT_EQ(module->CountOfDeclarationLines(), 1);
    EXPECT_EQ(module->ProcStartLine(u"a", MemberKind::vbext_pk_Proc), Line{2});
    EXPECT_EQ(module->ProcBodyLine(u"a", MemberKind::vbext_pk_Proc), Line{2});
    EXPECT_EQ(module->ProcCountLines(u"a", MemberKind::vbext_pk_Proc), 3);
    auto kind = MemberKind::vbext_pk_Get;
    EXPECT_EQ(module->ProcOfLine(Line{3}, kind), u"A");
    EXPECT_EQ(kind, MemberKind::vbext_pk_Proc);
    Position start{Line{1}, Column{1}};
    Position end{Line{0}, Column{0}};
    EXPECT_EQ(module->Find(u"x", start, end, {}), true);
    EXPECT_EQ(start, (Position{Line{3}, Column{3}}));
    EXPECT_EQ(end, (Position{Line{3}, Column{4}}));
    EXPECT_EQ(module->Find(u"y", start, end, {}), false);

    ASSERT_TRUE(module->InsertLines(Line{3}, u"dim y"));
    ASSERT_TRUE(module->ReplaceLine(Line{4}, u"  y = 2"));
    ASSERT_TRUE(module->DeleteLines(Line{1}, 1));
    EXPECT_EQ(fixture.text(), "Sub A()\nDim y\n  y = 2\nEnd Sub");
    // Every handle shows the same module.
    EXPECT_EQ(ModuleOf(fixture)->Lines(Line{2}, 1), u"Dim y");
}

TEST(ObjectModel, MembersByNameAndByIndex) {
    const CodeFixture fixture(Source);
    const auto members = *ModuleOf(fixture)->Members();
    const auto variable = *members->Item(u"TOTAL");
    EXPECT_EQ(variable->Type(), MemberType::Variable);
    EXPECT_EQ(variable->CodeLocation(), Line{1});
    const auto method = *members->Item(2);
    EXPECT_EQ(method->Type(), MemberType::Method);
    EXPECT_EQ(method->CodeLocation(), Line{2});
    EXPECT_FALSE(members->Item(u"x"));
    for (const std::int32_t index :
         {0, -1, 3, std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_FALSE(members->Item(index)) << index;
    }
    // The list is the module's own and follows its edits.
    ASSERT_TRUE(fixture.module().DeleteLines(Line{1}, 1));
    EXPECT_EQ((*members->Item(1))->CodeLocation(), Line{1});
    EXPECT_FALSE(members->Item(2));
}

using Controls = std::vector<DesignerControl>;

// A component with a designer, and the collection of its controls.
struct DesignerFixture {
    CodeFixture fixture{""};

    explicit DesignerFixture(std::optional<Controls> controls) {
        auto component = std::make_unique<Component>();
        component->name = u"Form1";
        component->type = ComponentType::Form;
        component->designer = std::move(controls);
        component->module = Module::FromText(u"");
        fixture.workspace().Find(u"Project1")->Add(std::move(component));
    }

    [[nodiscard]] Result<std::shared_ptr<Dispatch>> Designer() const {
        const auto components = *(*VbeOf(fixture)->ActiveVBProject())->VBComponents();
        return (*components->Item(u"Form1"))->Designer();
    }
};

std::shared_ptr<Dispatch> ObjectOf(const Result<Value>& value) {
    return value ? std::get<std::shared_ptr<Dispatch>>(*value) : nullptr;
}

TEST(Designer, ListsItsControls) {
    const DesignerFixture form(
        Controls{{u"cmdSave", u"CommandButton"}, {u"opt", u"OptionButton"}, {u"OPT", u"Other"}});
    const auto controls = ObjectOf((*form.Designer())->Invoke(u"VBControls", {}));
    ASSERT_NE(controls, nullptr);
    EXPECT_EQ(controls->Invoke(u"Count", {}), Value(3));
    const auto classOf = [&](const Value& key) -> Result<Value> {
        const auto control = controls->Invoke(u"Item", std::vector{key});
        return control ? ObjectOf(control)->Invoke(u"ClassName", {})
                       : Result<Value>(std::unexpect, control.error());
    };
    EXPECT_EQ(classOf(Text(u"CMDSAVE")), Value(Text(u"CommandButton")));
    // The name of a control array finds its first element.
    EXPECT_EQ(classOf(Text(u"Opt")), Value(Text(u"OptionButton")));
    EXPECT_EQ(classOf(3), Value(Text(u"Other")));
    for (const Value& missing :
         {Value(Text(u"cmd")), Value(Text()), Value(0), Value(4), Value(-1), Value(), Value(true)}) {
        EXPECT_FALSE(classOf(missing));
    }
    // "Item" is the collection's default member.
    EXPECT_EQ(ObjectOf(controls->Invoke(u"", std::vector{Value(1)}))->Invoke(u"name", {}),
              Value(Text(u"cmdSave")));
}

TEST(Designer, HasNoOtherMembers) {
    const DesignerFixture form(Controls{{u"cmdSave", u"CommandButton"}});
    const auto designer = *form.Designer();
    const auto controls = ObjectOf(designer->Invoke(u"vbcontrols", {}));
    const auto control = ObjectOf(controls->Invoke(u"Item", std::vector{Value(1)}));
    const std::vector<Value> one{Value(1)};
    EXPECT_FALSE(designer->Invoke(u"Count", {}));
    EXPECT_FALSE(designer->Invoke(u"VBControls", one));
    EXPECT_FALSE(designer->Put(u"VBControls", Value()));
    EXPECT_FALSE(controls->Invoke(u"Count", one));
    EXPECT_FALSE(controls->Invoke(u"Item", {}));
    EXPECT_FALSE(controls->Invoke(u"Add", one));
    EXPECT_FALSE(controls->Put(u"Count", Value(2)));
    EXPECT_FALSE(control->Invoke(u"Caption", {}));
    EXPECT_FALSE(control->Invoke(u"ClassName", one));
    EXPECT_FALSE(control->Put(u"ClassName", Value()));
}

TEST(Designer, ComponentsWithoutOneFail) {
    EXPECT_FALSE(DesignerFixture(std::nullopt).Designer());
    const DesignerFixture empty(Controls{});
    const auto controls = ObjectOf((*empty.Designer())->Invoke(u"VBControls", {}));
    EXPECT_EQ(controls->Invoke(u"Count", {}), Value(0));
}

TEST(CodePane, NoneIsActiveUntilOneIsChosen) {
    Workspace workspace;
    workspace.Add(std::make_unique<Project>(u"P", std::filesystem::path()));
    WorkspaceGlobals globals(workspace);
    EXPECT_FALSE((*globals.VBE())->ActiveCodePane());
}

TEST(CodePane, ShowsItsComponentAndSelection) {
    const CodeFixture fixture("Sub A()\n  {{x = 1\nE}}nd Sub");
    const auto pane = *VbeOf(fixture)->ActiveCodePane();
    EXPECT_EQ((*pane->CodeModule())->Lines(Line{2}, 1), u"  x = 1");
    EXPECT_EQ(pane->GetSelection(), (Selection{{Line{2}, Column{3}}, {Line{3}, Column{2}}}));
    EXPECT_EQ(pane->TopLine(), Line{1});
    EXPECT_EQ(pane->CountOfVisibleLines(), 25);
}

TEST(CodePane, TopLineAndVisibleLinesCanBeChosen) {
    CodeFixture fixture("x");
    ActivePane pane = *fixture.workspace().activePane();
    pane.topLine = Line{7};
    pane.visibleLines = 40;
    fixture.workspace().SetActivePane(pane);
    EXPECT_EQ((*VbeOf(fixture)->ActiveCodePane())->TopLine(), Line{7});
    EXPECT_EQ((*VbeOf(fixture)->ActiveCodePane())->CountOfVisibleLines(), 40);
    fixture.CloseCodeWindow();
    EXPECT_FALSE(VbeOf(fixture)->ActiveCodePane());
}

Selection Selected(CodeFixture& fixture, Position start, Position end) {
    ActivePane pane = *fixture.workspace().activePane();
    pane.selection = {start, end};
    fixture.workspace().SetActivePane(pane);
    return *(*VbeOf(fixture)->ActiveCodePane())->GetSelection();
}

TEST(CodePane, PositionsBeyondTheModuleAreReadAsItsEnd) {
    CodeFixture fixture("abc\nde");
    constexpr Position end{Line{2}, Column{3}};
    constexpr Position second{Line{2}, Column{2}};
    EXPECT_EQ(Selected(fixture, second, end), (Selection{second, end}));
    EXPECT_EQ(Selected(fixture, {Line{2}, Column{4}}, {Line{2}, Column{99}}), (Selection{end, end}));
    EXPECT_EQ(Selected(fixture, second, {Line{3}, Column{1}}), (Selection{second, end}));
    EXPECT_EQ(Selected(fixture, {Line{99}, Column{1}}, {Line{99}, Column{2}}), (Selection{end, end}));
    // Past the end of a line that is not the last is inside the module.
    constexpr Position past{Line{1}, Column{99}};
    EXPECT_EQ(Selected(fixture, past, past), (Selection{past, past}));
}

TEST(CodePane, TheEndOfAnEmptyModuleIsItsFirstPosition) {
    CodeFixture fixture("x");
    ASSERT_TRUE(fixture.module().DeleteLines(Line{1}, 1));
    constexpr Position first{Line{1}, Column{1}};
    EXPECT_EQ(Selected(fixture, first, first), (Selection{first, first}));
    EXPECT_EQ(Selected(fixture, {Line{1}, Column{2}}, {Line{5}, Column{5}}), (Selection{first, first}));
}

TEST(CodePane, TheSelectionIsNotMovedByEdits) {
    const CodeFixture fixture("a\nb{{c}}d\ne");
    const auto pane = *VbeOf(fixture)->ActiveCodePane();
    const Selection before{{Line{2}, Column{2}}, {Line{2}, Column{3}}};
    ASSERT_TRUE(fixture.module().InsertLines(Line{1}, u"x\r\ny"));
    EXPECT_EQ(pane->GetSelection(), before);
    ASSERT_TRUE(fixture.module().DeleteLines(Line{1}, 4));
    // What lies beyond the module now is its end, and comes back with the lines.
    EXPECT_EQ(pane->GetSelection(), (Selection{{Line{1}, Column{2}}, {Line{1}, Column{2}}}));
    ASSERT_TRUE(fixture.module().InsertLines(Line{1}, u"x\r\nyyyy"));
    EXPECT_EQ(pane->GetSelection(), before);
}

TEST(ActiveProject, TheFirstIsActiveUntilAnotherIsChosen) {
    Workspace workspace;
    WorkspaceGlobals globals(workspace);
    const auto vbe = *globals.VBE();
    EXPECT_FALSE(vbe->ActiveVBProject());
    workspace.Add(std::make_unique<Project>(u"One", std::filesystem::path()));
    Project& two = workspace.Add(std::make_unique<Project>(u"Two", std::filesystem::path()));
    EXPECT_EQ((*vbe->ActiveVBProject())->Name(), u"One");
    workspace.SetActiveProject(two);
    EXPECT_EQ((*vbe->ActiveVBProject())->Name(), u"Two");
    workspace.Clear();
    EXPECT_FALSE(vbe->ActiveVBProject());
    EXPECT_FALSE((*vbe->VBProjects())->Item(u"One"));
}

TEST(ActiveProject, MakingAPaneActiveMakesItsProjectActive) {
    CodeFixture fixture("x");
    fixture.AddComponent(u"Project2", u"Other", "y");
    EXPECT_EQ((*VbeOf(fixture)->ActiveVBProject())->Name(), u"Project1");
    ActivePane pane;
    pane.project = fixture.workspace().Find(u"Project2");
    pane.component = pane.project->Find(u"Other");
    fixture.workspace().SetActivePane(pane);
    EXPECT_EQ((*VbeOf(fixture)->ActiveVBProject())->Name(), u"Project2");
}

TEST(Services, TokenBeforeIsThePartBeforeTheLastSeparator) {
    const CodeFixture fixture("");
    struct Case {
        TextView text;
        TextView separator;
        TextView token;
    };
    const Case cases[]{
        {u"a.b.c", u".", u"a.b"}, {u"a.b", u".", u"a"}, {u"abc", u".", u""},   {u"", u".", u""},
        {u".a", u".", u""},       {u"a.", u".", u"a"},  {u"a..", u".", u"a."}, {u"a||b||c", u"||", u"a||b"},
        {u"a|||b", u"||", u"a|"}, {u"aXb", u"x", u""},  {u"abc", u"", u""},    {u"a", u"abc", u""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(fixture.globals()->TokenBefore(c.text, c.separator), c.token)
            << ToUtf8(c.text) << " " << ToUtf8(c.separator);
    }
}

class KnownIdentity : public Identity {
  public:
    Result<Text> ComputerName() override { return u"SERVER"; }
    Result<Text> UserName() override { return u"Grace"; }
};

TEST(Services, ComputerAndUserAreTheIdentitysUnlessSet) {
    Workspace workspace;
    WorkspaceGlobals globals(workspace, std::make_shared<KnownIdentity>());
    EXPECT_EQ(globals.ComputerName(), u"SERVER");
    EXPECT_EQ(globals.UserName(), u"Grace");
    globals.SetComputerName(u"DESK");
    globals.SetUserName(u"Ada");
    EXPECT_EQ(globals.ComputerName(), u"DESK");
    EXPECT_EQ(globals.UserName(), u"Ada");
    globals.SetUserName(u"");
    EXPECT_EQ(globals.UserName(), u"");
}

TEST(Services, WithoutAnIdentityOnlyNamesThatWereSetAreKnown) {
    Workspace workspace;
    WorkspaceGlobals globals(workspace);
    EXPECT_FALSE(globals.ComputerName());
    EXPECT_FALSE(globals.UserName());
    globals.SetComputerName(u"DESK");
    EXPECT_EQ(globals.ComputerName(), u"DESK");
    EXPECT_FALSE(globals.UserName());
}

class NoDatabase : public hostmodel::Database {
  public:
    Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView) override {
        return Failure(ErrorNumber::HostFailure, "there is no table");
    }
};

TEST(Services, TheCodeDatabaseStartsEmpty) {
    const CodeFixture fixture("");
    hostmodel::Globals& globals = *fixture.globals();
    EXPECT_EQ(globals.CodeDbPath(), u"");
    EXPECT_EQ(globals.CodeDb(), nullptr);
    const auto database = std::make_shared<NoDatabase>();
    ASSERT_TRUE(globals.SetCodeDb(database));
    ASSERT_TRUE(globals.SetCodeDbPath(u"/data"));
    EXPECT_EQ(globals.CodeDb(), database);
    EXPECT_EQ(globals.CodeDbPath(), u"/data");
    ASSERT_TRUE(globals.SetCodeDb(nullptr));
    EXPECT_EQ(globals.CodeDb(), nullptr);
}

TEST(Services, ThereIsNoHistoryWithoutItsWindow) {
    const CodeFixture fixture("");
    hostmodel::Globals& globals = *fixture.globals();
    EXPECT_FALSE(globals.HostForm());
    EXPECT_FALSE(globals.ProjectsData());
    EXPECT_FALSE(globals.AddInHost());
    EXPECT_FALSE(globals.HistSeparator());
    EXPECT_FALSE(globals.HistCurrentKey());
    EXPECT_FALSE(globals.HistSelKey());
    EXPECT_FALSE(globals.SetHistSelKey(u"x"));
    EXPECT_FALSE(globals.HistSelObject());
    EXPECT_FALSE(globals.SetHistSelObject(u""));
}

TEST(Handles, AreCountedWhileTheyLive) {
    const DesignerFixture form(Controls{{u"cmdSave", u"CommandButton"}});
    const WorkspaceGlobals& globals = *form.fixture.globals();
    EXPECT_EQ(globals.liveHandles(), 0U);
    {
        const auto vbe = VbeOf(form.fixture);
        EXPECT_EQ(globals.liveHandles(), 1U);
        const auto pane = *vbe->ActiveCodePane();
        const auto module = *pane->CodeModule();
        const auto parent = *module->Parent();
        const auto members = *module->Members();
        EXPECT_EQ(globals.liveHandles(), 5U);
        const auto designer = *form.Designer();
        const auto controls = ObjectOf(designer->Invoke(u"VBControls", {}));
        const auto control = ObjectOf(controls->Invoke(u"Item", std::vector{Value(1)}));
        EXPECT_EQ(globals.liveHandles(), 8U);
    }
    EXPECT_EQ(globals.liveHandles(), 0U);
}

}  // namespace
}  // namespace lintara::workspace

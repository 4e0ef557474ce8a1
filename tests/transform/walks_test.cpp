#include "transform/walks.h"

#include "tests/support/code_fixture.h"
#include "tests/support/faulty_host.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::transform {
namespace {

using support::CodeFixture;
using support::ModuleName;
using support::ProjectName;

class WalksTest : public testing::Test {
  protected:
    WalksTest() { fixture_.AddComponent(u"Other", u"Module2", "' other"); }

    CodeFixture fixture_{"' module 1^"};
    std::shared_ptr<support::FaultPlan> plan_ = std::make_shared<support::FaultPlan>();
    support::FaultyGlobals globals_{fixture_.globals(), plan_};
};

Text FirstLine(const Result<CodeModulePtr>& module) {
    return module.value()->Lines(Line{1}, 1).value();
}

TEST_F(WalksTest, ByNamesGoesThroughAllProjects) {
    EXPECT_EQ(FirstLine(CodeModuleByNames(globals_, u"Other", u"Module2")), u"' other");
    EXPECT_EQ(plan_->calls, (std::vector<std::string>{"Globals.VBE", "VBE.VBProjects", "VBProjects.Item",
                                                      "VBProject.VBComponents", "VBComponents.Item",
                                                      "VBComponent.CodeModule", "CodeModule.Lines"}));
}

TEST_F(WalksTest, ByComponentNameStaysInTheActiveProject) {
    EXPECT_EQ(FirstLine(CodeModuleInActiveProject(globals_, ModuleName)), u"' module 1");
    EXPECT_EQ(plan_->calls,
              (std::vector<std::string>{"Globals.VBE", "VBE.ActiveVBProject", "VBProject.VBComponents",
                                        "VBComponents.Item", "VBComponent.CodeModule", "CodeModule.Lines"}));
    EXPECT_FALSE(CodeModuleInActiveProject(globals_, u"Module2"));
}

TEST_F(WalksTest, TheActiveCodeWindowLeadsToItsModule) {
    EXPECT_EQ(FirstLine(ActiveCodeModule(globals_)), u"' module 1");
    EXPECT_EQ(plan_->calls, (std::vector<std::string>{"Globals.VBE", "VBE.ActiveCodePane",
                                                      "CodePane.CodeModule", "CodeModule.Lines"}));
}

TEST_F(WalksTest, TheActiveCodeWindowLeadsToItsComponent) {
    EXPECT_EQ(ActiveComponent(globals_).value()->Name(), Text(ModuleName));
    EXPECT_EQ(plan_->calls,
              (std::vector<std::string>{"Globals.VBE", "VBE.ActiveCodePane", "CodePane.CodeModule",
                                        "CodeModule.Parent", "VBComponent.Name"}));
}

TEST_F(WalksTest, TheActiveProjectIsTheOneOfTheIde) {
    EXPECT_EQ(ActiveProject(globals_).value()->Name(), Text(ProjectName));
    fixture_.workspace().SetActiveProject(*fixture_.workspace().Find(u"Other"));
    EXPECT_EQ(ActiveProject(globals_).value()->Name(), u"Other");
}

TEST_F(WalksTest, WithoutACodeWindowTheWalkFails) {
    fixture_.CloseCodeWindow();
    EXPECT_FALSE(ActiveCodePane(globals_));
    EXPECT_FALSE(ActiveCodeModule(globals_));
}

TEST_F(WalksTest, UnknownNamesFail) {
    EXPECT_FALSE(CodeModuleByNames(globals_, u"Nowhere", ModuleName));
    EXPECT_FALSE(CodeModuleByNames(globals_, ProjectName, u"Nothing"));
    EXPECT_FALSE(ComponentInActiveProject(globals_, u"Nothing"));
}

TEST_F(WalksTest, NamesAreFoundInAnyLetterCase) {
    EXPECT_TRUE(CodeModuleByNames(globals_, u"PROJECT1", u"module1"));
}

TEST_F(WalksTest, NothingOfTheWayIsKept) {
    { const auto module = CodeModuleByNames(globals_, ProjectName, ModuleName); }
    EXPECT_EQ(plan_->liveHandles, 1U);
    const auto module = CodeModuleByNames(globals_, ProjectName, ModuleName);
    EXPECT_EQ(plan_->liveHandles, 2U);
}

// A step that fails, or that answers with no object, ends the walk there.
TEST_F(WalksTest, TheFirstFaultEndsTheWalk) {
    for (const support::Fault fault : {support::Fault::Fails, support::Fault::Empty}) {
        for (std::size_t step = 0; step < 6; ++step) {
            plan_->calls.clear();
            plan_->fault = [=](std::size_t index, std::string_view) {
                return index == step ? fault : support::Fault::None;
            };
            EXPECT_FALSE(CodeModuleByNames(globals_, ProjectName, ModuleName));
            EXPECT_EQ(plan_->calls.size(), step + 1);
        }
        for (std::size_t step = 0; step < 3; ++step) {
            plan_->calls.clear();
            plan_->fault = [=](std::size_t index, std::string_view) {
                return index == step ? fault : support::Fault::None;
            };
            EXPECT_FALSE(ActiveCodeModule(globals_));
            EXPECT_EQ(plan_->calls.size(), step + 1);
        }
    }
}

}  // namespace
}  // namespace lintara::transform

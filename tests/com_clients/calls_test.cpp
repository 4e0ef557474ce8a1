// How often the host is called: every line of a procedure is read once and written once, whatever else is
// asked.
#include "tests/com/late_bound_host.h"
#include "tests/com_clients/component_client.h"
#include "tests/support/code_fixture.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace lintara::support {
namespace {

class CallsTest : public testing::Test {
  protected:
    static constexpr std::size_t Lines = 500;
    // What does not grow with the procedure: the walks, the search for its ends.
    static constexpr std::size_t Fixed = 40;

    CallsTest() : fixture_(Source()) {
        client_->SetServices(LateBoundGlobals(*fixture_.globals(), host_).get());
    }

    static std::string Source() {
        std::string source = "Option Explicit\nSub Work()\n";
        for (std::size_t line = 0; line < Lines; ++line) {
            source += "    x = x + 1\n";
        }
        return source + "End Sub";
    }

    void CheckCalls() {
        EXPECT_EQ(host_->callsByName["CodeModule.ReplaceLine"], Lines);
        EXPECT_GE(host_->callsByName["CodeModule.Lines"], Lines);
        EXPECT_LE(host_->callsByName["CodeModule.Lines"], Lines + 10);
        EXPECT_LE(host_->invokes, 2 * Lines + Fixed);
        EXPECT_LE(host_->nameLookups, Fixed);
        EXPECT_EQ(host_->liveObjects, 1);
        host_->invokes = 0;
        host_->nameLookups = 0;
        host_->callsByName.clear();
    }

    CodeFixture fixture_;
    LateBoundHostPtr host_ = std::make_shared<LateBoundHost>();
    std::unique_ptr<ComponentClient> client_ = MakeComponentClient();
};

TEST_F(CallsTest, NumbersGoInAndOutWithOneReadAndOneWriteALine) {
    client_->LineNumbersInserter(ProjectName, ModuleName, u"Work", 10000, 5);
    EXPECT_NE(fixture_.text().find("12495: "), std::string::npos);
    CheckCalls();
    client_->LineNumbersRemover(ProjectName, ModuleName, u"Work");
    EXPECT_EQ(fixture_.text(), Source());
    CheckCalls();
}

TEST_F(CallsTest, DateAndTimeAreTheMachines) {
    const Text expanded = client_->ParsePseudoCode(u"<{Date}>{Time}<");
    EXPECT_EQ(expanded.find(u'{'), Text::npos);
    EXPECT_GE(expanded.size(), 10U);
    EXPECT_TRUE(expanded.starts_with(u"<") && expanded.ends_with(u"<"));
}

}  // namespace
}  // namespace lintara::support

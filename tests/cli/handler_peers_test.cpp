// Handlers of another template are told from those that somebody typed into; and what a replacement keeps.
#include "tests/cli/handler_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string Handled(const std::string& name, const std::string& typed = "") {
    return "Sub " + name + "()\n    On Error GoTo hErr\n    x\n" + UsualBlock("Sub", name) + typed +
           "End Sub\n";
}

const HandlerCommand Other{.handler = {u"hErr", u"    Report \"{MemberName}\""}};
const HandlerCommand Refresh{.handler = {u"hErr", u"    Report \"{MemberName}\""}, .refresh = true};

TEST(HandlerPeers, AreOneRemarkOfTheRemoval) {
    EditedModule module(Handled("Load") + Handled("Save", "    typed\n") + Handled("cmdOk_Click") +
                        Handled("D"));
    const ComponentReport report = RemoveHandlers(module, Other);
    EXPECT_EQ(report.edited.size(), 4U);
    EXPECT_THAT(RemarksIn(report), ElementsAre("handler-edited 15", "other-template 32"));
    ASSERT_EQ(report.remarks.size(), 2U);
    EXPECT_THAT(report.remarks[1].message, HasSubstr("3 error handlers of the project are alike"));
}

TEST(HandlerPeers, AreNoRemarkOfTheReplacement) {
    EditedModule module(Handled("Load") + Handled("Save", "    typed\n") + Handled("D"));
    const ComponentReport report = InsertHandlers(module, Refresh);
    EXPECT_EQ(report.edited.size(), 3U);
    EXPECT_THAT(RemarksIn(report), ElementsAre("handler-edited 15"));
}

TEST(HandlerPeers, AreToldWithTheNumbersOut) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub B()\n    y\n    z\nEnd Sub\n");
    InsertHandlers(module, {.numbers = NumberOptions{}});
    EditedModule reloaded = EditedModule::FromFile(module.Bytes());
    HandlerCommand command = Refresh;
    command.numbers = NumberOptions{};
    const ComponentReport report = InsertHandlers(reloaded, command);
    EXPECT_THAT(EditedIn(report), ElementsAre("A", "B"));
    EXPECT_THAT(RemarksIn(report), IsEmpty());
}

TEST(HandlerRemoval, RemarksInTheOrderOfTheLines) {
    EditedModule module(Handled("A", "    one\n") + Handled("B", "    two\n"));
    EXPECT_THAT(RemarksIn(RemoveHandlers(module)), ElementsAre("handler-edited 8", "handler-edited 17"));
}

TEST(HandlerReplacement, LeavesAHandlerWithABlockOfCustomCodeInIt) {
    EditedModule module(Handled("A",
                                "' TWCustomCode begin - please do not modify or remove this line 5\n    t\n"
                                "' TWCustomCode end - please do not modify or remove this line 5\n"));
    const ComponentReport report = InsertHandlers(module, Refresh);
    EXPECT_THAT(SkippedIn(report), ElementsAre("marker-mismatch A"));
    ASSERT_FALSE(report.skipped.empty());
    EXPECT_THAT(report.skipped[0].message, HasSubstr("block 5 of custom code at line 8"));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(HandlerReplacement, LeavesOneFirstStatementBelowABlockOfCustomCode) {
    const std::string block =
        "' TWCustomCode begin - please do not modify or remove this line 5\n    t\n"
        "' TWCustomCode end - please do not modify or remove this line 5\n";
    for (const Text label : {u"hErr", u"hNew"}) {
        EditedModule module("Sub A()\n" + block + "    On Error GoTo hErr\n    x\n" + UsualBlock("Sub", "A") +
                            "End Sub\n");
        EXPECT_THAT(EditedIn(InsertHandlers(module, {.handler = {label, u"    y"}, .refresh = true})),
                    ElementsAre("A"));
        const std::string name(label.begin(), label.end());
        EXPECT_EQ(module.Code(), "Sub A()\n" + block + "    On Error GoTo " + name +
                                     "\n    x\n' TWErrorHandler begin - please do not modify or remove this "
                                     "line\nExit Sub\n" +
                                     name + ":\n    y\nEnd Sub\n");
    }
}

TEST(HandlerInsertion, RemarksOnOtherHandlersHoweverTheyAreWritten) {
    for (const char* statement : {"    On Local Error GoTo other", "    On Error _\n      GoTo other",
                                  "    If a Then on  error goto other"}) {
        EditedModule module("Sub A()\n    x\n" + std::string(statement) + "\nother:\nEnd Sub\n");
        EXPECT_THAT(RemarksIn(InsertHandlers(module)), ElementsAre("other-handler 3"));
    }
    EditedModule none(
        "Sub A()\n    s = \"On Local Error GoTo other\" ' On Error GoTo other\n    On Local Error GoTo 0\n"
        "    On Error Resume Next\nEnd Sub\n");
    EXPECT_THAT(RemarksIn(InsertHandlers(none)), IsEmpty());
}

}  // namespace
}  // namespace lintara::cli

// Text inside one procedure that looks like the header of another one of a property: the library takes it for
// that, and would edit there, too.
#include "tests/cli/command_run.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

// What looks like Property Get Item stands in Property Set Total, and has no lines.
constexpr const char* Code =
    "Attribute VB_Name = \"Mod\"\r\n"
    "Property Set Item(v): x = 1\r\n"
    "    y\r\n"
    "End Property\r\n"
    "Property Set Total(v)\r\n"
    "    z\r\n"
    "Public Property Get Item(a As Long)\r\n"
    "End Property ' done\r\n";

TEST(StrayRange, NothingIsInsertedThere) {
    for (const std::string line :
         {"custom insert @Mod.bas --id 5 --code @code.txt --procedure Item",
          "insert @Mod.bas --error-handlers --template @code.txt --procedure Item"}) {
        CommandTest test;
        test.Write("Mod.bas", Code);
        test.Write("code.txt", "    Beep\r\n");
        const Outcome outcome = test.Run(line);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(test.Read("Mod.bas"), Code) << line;
        EXPECT_THAT(outcome.err, HasSubstr("Property Item in Mod was skipped: text that looks like another "
                                           "procedure of its name, above line 7 (line 8 of the file), would "
                                           "be edited, too [range-mismatch]"));
    }
}

}  // namespace
}  // namespace lintara::cli

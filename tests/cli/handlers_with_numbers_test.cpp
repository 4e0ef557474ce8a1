// Handlers that are brought up to date together with the line numbers in them: both or neither.
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

constexpr const char* Refresh =
    "insert @A.bas --error-handlers --line-numbers --refresh --template @new.txt --label hErr";

// Sub A of the body, with numbers and a handler that is out of date from line `next` on.
std::string Numbered(const std::string& name, const std::string& body) {
    return Replaced("Sub " + name + "()\n" + body +
                        "12000: ' TWErrorHandler begin - please do not modify or remove this line\n"
                        "12005: Exit Sub\nhErr:\n12015:     old\nEnd Sub\n",
                    "\n", "\r\n");
}

class HandlersWithNumbers : public testing::Test {
  protected:
    HandlersWithNumbers() { test.Write("new.txt", "    fresh\n    fresh\n"); }

    CommandTest test;
};

TEST_F(HandlersWithNumbers, KeepBothWhenNoNewNumbersCanBeWritten) {
    const std::string kept = Numbered("A", "11000: GoTo 10005\n11005: x\n                deep\n");
    test.Write("A.bas", kept + Numbered("B", "11000: x\n"));
    const Outcome outcome = test.Run(Refresh);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.err,
        "DIR/A.bas:2: warning: Sub A in A keeps its error handler and its numbers: line 2 (line 2 of the "
        "file) jumps to 10005, a number that a line would get now [jump-target]\n");
    EXPECT_THAT(outcome.out, HasSubstr("1 procedure in 1 file"));
    EXPECT_THAT(outcome.out, HasSubstr("skipped 1 procedure"));
    const std::string code = test.Read("A.bas");
    EXPECT_EQ(code.substr(0, kept.size()), kept);
    EXPECT_THAT(code.substr(kept.size()), HasSubstr("\r\n10025:     fresh\r\n10030:     fresh\r\nEnd Sub"));
}

// The new handler stands among numbered lines when these get other numbers, but was not shifted with them.
TEST_F(HandlersWithNumbers, KeepTheTemplatesIndentsWhenCodeIsRenumbered) {
    test.Write("deep.txt", "    Select Case Err\n        Case 1\n            Resume\n    End Select\n");
    test.Write("A.bas",
               "Sub A()\r\n11000: x\r\n11005: x _\r\n           y\r\n11015: x\r\n11020: x\r\nEnd Sub\r\n");
    EXPECT_EQ(
        test.Run("insert @A.bas --error-handlers --line-numbers --renumber --template @deep.txt --label hErr")
            .status,
        0);
    EXPECT_EQ(
        test.Read("A.bas"),
        Replaced("Sub A()\n10000:     On Error GoTo hErr\n10005: x\n10010: x _\n           y\n10020: x\n"
                 "10025: x\n10030: ' TWErrorHandler begin - please do not modify or remove this line\n"
                 "10035: Exit Sub\nhErr:\n10045:     Select Case Err\n               Case 1\n"
                 "10055:             Resume\n10060:     End Select\nEnd Sub\n",
                 "\n", "\r\n"));
}

TEST_F(HandlersWithNumbers, KeepLineEndingsThatAreNotThoseOfTheFile) {
    const std::string code =
        Replaced(Numbered("A", "11000: GoTo 10005\n11005: x\n"), "12005: Exit Sub\r\n", "12005: Exit Sub\n");
    test.Write("A.bas", code);
    EXPECT_THAT(test.Run(Refresh).err, HasSubstr("keeps its error handler and its numbers"));
    EXPECT_EQ(test.Read("A.bas"), code);
}

// A procedure that is kept moves those below it, and one of them jumps to a number that it would get only
// then.
TEST_F(HandlersWithNumbers, TryNumbersOfTheModuleAgainWhenSomethingIsKept) {
    const std::string a = Numbered("A", "11000: GoTo 10002\n");
    const std::string b = Numbered("B", "11000: GoTo 10009\n");
    test.Write("A.bas", a + b);
    const Outcome outcome = test.Run(std::string(Refresh) + " --numbering module");
    EXPECT_THAT(outcome.err, HasSubstr("Sub A in A keeps its error handler and its numbers"));
    EXPECT_THAT(outcome.err, HasSubstr("Sub B in A keeps its error handler and its numbers"));
    EXPECT_EQ(test.Read("A.bas"), a + b);
}

TEST_F(HandlersWithNumbers, AreKeptInAPropertyAsAWhole) {
    std::string code = Numbered("P", "11000: x\n") + Numbered("P", "11000: GoTo 10005\n");
    code = Replaced(Replaced(code, "End Sub", "End Property"), "Exit Sub", "Exit Property");
    const std::size_t second = code.rfind("Sub P()");
    code.replace(second, 7, "Property Let P(v)");
    code.replace(0, 7, "Property Get P()");
    test.Write("A.bas", code);
    EXPECT_THAT(test.Run(Refresh).err, HasSubstr("Property P in A keeps its error handler and its numbers"));
    EXPECT_EQ(test.Read("A.bas"), code);
}

TEST_F(HandlersWithNumbers, TellWhichLinesKeepTheirBlanks) {
    test.Write("A.bas",
               Numbered("A", "    x\n    y\n    z\n    Select Case a\n    Case 1\n            deep\n"));
    const Outcome outcome = test.Run(Refresh);
    EXPECT_THAT(
        outcome.err,
        HasSubstr("DIR/A.bas:7: warning: Sub A has too few numbers to tell that line 7, which has none, was "
                  "shifted; it keeps its blanks [kept-blanks]\n"));
    EXPECT_THAT(test.Read("A.bas"), HasSubstr(":             deep\r\n"));
}

// A template out of numbered code brings numbers of its own.
TEST_F(HandlersWithNumbers, KeepBothWhenTheTemplatesNumberStandsInTheWay) {
    const std::string kept = Numbered("A", "11000: x\n");
    for (const char* line : {"10: Resume Next\n", "20000: Resume Next\n"}) {
        test.Write("A.bas", kept);
        test.Write("new.txt", line);
        const Outcome outcome = test.Run(Refresh);
        EXPECT_EQ(outcome.status, 0) << line;
        EXPECT_THAT(outcome.err, HasSubstr("Sub A in A keeps its error handler and its numbers")) << line;
        EXPECT_EQ(test.Read("A.bas"), kept) << line;
    }
}

TEST_F(HandlersWithNumbers, AreNumberedAnewWithTheTemplatesNumbers) {
    test.Write("A.bas", "Sub A()\r\n    x\r\nEnd Sub\r\n");
    test.Write("new.txt", "20000:     fresh\n");
    const Outcome outcome =
        test.Run("insert @A.bas --error-handlers --line-numbers --renumber --template @new.txt --label hErr");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(test.Read("A.bas"),
              Replaced("Sub A()\n10000:     On Error GoTo hErr\n10005:     x\n"
                       "10010: ' TWErrorHandler begin - please do not modify or remove this line\n"
                       "10015: Exit Sub\nhErr:\n10025:     fresh\nEnd Sub\n",
                       "\n", "\r\n"));
}

TEST_F(HandlersWithNumbers, AreCheckedAsTheyWouldBeInserted) {
    test.Write("A.bas", Numbered("A", "11000: GoTo 10005\n11005: x\n"));
    const Outcome outcome =
        test.Run("check @A.bas --error-handlers --line-numbers --template @new.txt --label hErr");
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("jumps to 10005"));
}

}  // namespace
}  // namespace lintara::cli

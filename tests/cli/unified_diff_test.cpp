#include "cli/output/unified_diff.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string Diff(std::string_view before, std::string_view after, DiffStyle style = {},
                 std::string_view codePage = "windows-1252", std::string_view label = "A.bas") {
    const auto encoding = *workspace::FindEncoding(codePage);
    const FileLines old = SplitFile(before, *encoding);
    const FileLines now = SplitFile(after, *encoding);
    std::string out;
    AppendUnifiedDiff(label, old, now, CompareLines(old, now), *encoding, style, out);
    return out;
}

std::string Lines(int first, int last) {
    std::string text;
    for (int i = first; i <= last; ++i) {
        text += std::to_string(i) + "\n";
    }
    return text;
}

TEST(UnifiedDiff, OfEqualFilesIsEmpty) {
    EXPECT_EQ(Diff("a\n", "a\n"), "");
}

TEST(UnifiedDiff, ShowsThreeLinesAroundAChange) {
    EXPECT_EQ(Diff(Lines(1, 20), Lines(1, 9) + "x\n" + Lines(11, 20)),
              "--- a/A.bas\n+++ b/A.bas\n"
              "@@ -7,7 +7,7 @@\n 7\n 8\n 9\n-10\n+x\n 11\n 12\n 13\n");
}

TEST(UnifiedDiff, JoinsChangesThatShareContext) {
    std::string after = "x\n" + Lines(2, 7) + "y\n" + Lines(9, 20);
    EXPECT_EQ(Diff(Lines(1, 20), after),
              "--- a/A.bas\n+++ b/A.bas\n"
              "@@ -1,11 +1,11 @@\n-1\n+x\n 2\n 3\n 4\n 5\n 6\n 7\n-8\n+y\n 9\n 10\n 11\n");
    after = "x\n" + Lines(2, 8) + "y\n" + Lines(10, 20);
    EXPECT_EQ(Diff(Lines(1, 20), after),
              "--- a/A.bas\n+++ b/A.bas\n"
              "@@ -1,4 +1,4 @@\n-1\n+x\n 2\n 3\n 4\n"
              "@@ -6,7 +6,7 @@\n 6\n 7\n 8\n-9\n+y\n 10\n 11\n 12\n");
}

TEST(UnifiedDiff, WritesNeighbouringChangesAsOneBlock) {
    EXPECT_EQ(Diff("a\nb\n", "c\nd\n"), "--- a/A.bas\n+++ b/A.bas\n@@ -1,2 +1,2 @@\n-a\n-b\n+c\n+d\n");
}

TEST(UnifiedDiff, OmitsTheCountOfOneLine) {
    EXPECT_EQ(Diff("a\n", "b\n"), "--- a/A.bas\n+++ b/A.bas\n@@ -1 +1 @@\n-a\n+b\n");
}

TEST(UnifiedDiff, CountsNoLinesFromTheLineBefore) {
    EXPECT_EQ(Diff("", "b\n"), "--- a/A.bas\n+++ b/A.bas\n@@ -0,0 +1 @@\n+b\n");
    EXPECT_EQ(Diff("a\nb\nc\n", "a\nc\n"), "--- a/A.bas\n+++ b/A.bas\n@@ -1,3 +1,2 @@\n a\n-b\n c\n");
}

TEST(UnifiedDiff, TellsOfAMissingLastLineEnding) {
    EXPECT_EQ(Diff("a\nb", "a\nc"),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1,2 +1,2 @@\n a\n"
              "-b\n\\ No newline at end of file\n+c\n\\ No newline at end of file\n");
    EXPECT_EQ(Diff("a\nb", "x\nb"),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1,2 +1,2 @@\n-a\n+x\n b\n\\ No newline at end of file\n");
}

TEST(UnifiedDiff, KeepsLineEndingsForPatch) {
    EXPECT_EQ(Diff("a\r\nb\r\n", "a\r\nc\r\n"),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1,2 +1,2 @@\n a\r\n-b\r\n+c\r\n");
}

TEST(UnifiedDiff, HoldsTheFilesOwnBytesAndIsReadableOnATerminal) {
    EXPECT_THAT(Diff("\xe4\n", "\xf6\n"), HasSubstr("-\xe4\n+\xf6\n"));
    EXPECT_THAT(Diff("\xe4\n", "\xf6\n", {.color = false, .printable = true}), HasSubstr("-ä\n+ö\n"));
}

TEST(UnifiedDiff, DecodesUtf16) {
    using namespace std::string_view_literals;
    EXPECT_THAT(Diff("a\0\r\0\n\0"sv, "b\0\r\0\n\0"sv, {}, "utf-16le"), HasSubstr("-a\r\n+b\r\n"));
}

TEST(UnifiedDiff, ShowsNoRawControlCharacterOnATerminal) {
    const std::string out = Diff("a\x1b[2J\r\n", "b\x9b\x07\r\n", {.color = false, .printable = true});
    EXPECT_THAT(out, HasSubstr("-a\\x1b[2J\n"));
    EXPECT_THAT(out, Not(HasSubstr("\r")));
    EXPECT_THAT(out, Not(HasSubstr("\x07")));
    EXPECT_THAT(Diff("a\rb\r", "a\rc\r", {.color = false, .printable = true}), HasSubstr(" a\n-b\n+c\n"));
}

TEST(UnifiedDiff, ColorsLinesAsAWhole) {
    EXPECT_EQ(Diff("a\nb\n", "a\nc\n", {.color = true, .printable = true}),
              "\x1b[1m--- a/A.bas\x1b[m\n\x1b[1m+++ b/A.bas\x1b[m\n\x1b[36m@@ -1,2 +1,2 @@\x1b[m\n a\n"
              "\x1b[31m-b\x1b[m\n\x1b[32m+c\x1b[m\n");
}

TEST(UnifiedDiff, QuotesPathsThatWouldBreakTheHeader) {
    EXPECT_THAT(Diff("a\n", "b\n", {}, "windows-1252", "x\n\"y\x1b.bas"),
                HasSubstr("--- \"a/x\\012\\\"y\\033.bas\"\n"));
    EXPECT_THAT(Diff("a\n", "b\n", {}, "windows-1252", "my file.bas"), HasSubstr("--- a/my file.bas\t\n"));
}

TEST(UnifiedDiff, ShowsLinesThatEndInCrAloneAsPatchReadsThem) {
    EXPECT_EQ(Diff("a\rb\rc\nd\n", "a\rx\rc\nd\n"),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1,2 +1,2 @@\n-a\rb\rc\n+a\rx\rc\n d\n");
    EXPECT_EQ(Diff("a\r", "b\r"),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1 +1 @@\n"
              "-a\r\n\\ No newline at end of file\n+b\r\n\\ No newline at end of file\n");
}

}  // namespace
}  // namespace lintara::cli

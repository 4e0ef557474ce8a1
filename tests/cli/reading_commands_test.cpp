// list, member and recover.
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

TEST(ListCommand, PrintsProjectsComponentsAndMembers) {
    CommandTest test;
    test.WriteShop();
    test.Write("Main.bas",
               "Attribute VB_Name = \"Main\"\r\n"
               "Private count As Long\r\n"
               "Public Event Sold()\r\n"
               "Const Größe = 3\r\n"
               "Declare Sub Beep Lib \"kernel32\" ()\r\n"
               "Sub Main()\r\n"
               "End Sub\r\n");
    const Outcome outcome = test.Run("list @Shop.vbp --code-page utf-8");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "project Shop  (DIR/Shop.vbp)\n"
              "  module Main  (DIR/Main.bas, 6 lines)\n"
              "    Variable  count  1\n"
              "    Event     Sold   2\n"
              "    Const     Größe  3\n"
              "    Declare   Beep   4\n"
              "    Sub       Main   5-6\n"
              "  module Stock  (DIR/lib/Stock.bas, 9 lines)\n"
              "    Property Get  Size  1-3\n"
              "    Property Let  Size  4-6\n"
              "    Sub           Odd   7-9\n");
}

TEST(ListCommand, PrintsOneJsonObject) {
    CommandTest test;
    test.WriteShop();
    const Outcome outcome = test.Run("list @Shop.vbp --json");
    EXPECT_EQ(outcome.status, 0);
    const auto expected = nlohmann::ordered_json::parse(R"json({
        "projects": [{
            "name": "Shop", "file": "DIR/Shop.vbp", "startup": true,
            "components": [
                {"name": "Main", "kind": "module", "file": "DIR/Main.bas", "lines": 12, "members": [
                    {"name": "count", "kind": "Variable", "firstLine": 2, "lastLine": 2, "fileLine": 3},
                    {"name": "Main", "kind": "Sub", "firstLine": 4, "lastLine": 7, "fileLine": 5},
                    {"name": "Sell", "kind": "Function", "firstLine": 10, "lastLine": 12, "fileLine": 11}]},
                {"name": "Stock", "kind": "module", "file": "DIR/lib/Stock.bas", "lines": 9, "members": [
                    {"name": "Size", "kind": "Property Get", "firstLine": 1, "lastLine": 3, "fileLine": 2},
                    {"name": "Size", "kind": "Property Let", "firstLine": 4, "lastLine": 6, "fileLine": 5},
                    {"name": "Odd", "kind": "Sub", "firstLine": 7, "lastLine": 9, "fileLine": 8}]}]}],
        "warnings": []})json");
    EXPECT_EQ(nlohmann::ordered_json::parse(outcome.out).dump(), expected.dump());
}

TEST(ListCommand, MarksTheStartupProjectOfAGroup) {
    CommandTest test;
    test.WriteShop();
    test.Write("B.vbp", "Name=\"B\"\r\n");
    test.Write("All.vbg", "Project=B.vbp\r\nStartupProject=Shop.vbp\r\n");
    EXPECT_THAT(test.Run("list @All.vbg").out, HasSubstr("project Shop  (DIR/Shop.vbp)  startup\n"));
}

TEST(ListCommand, SkipsMissingComponentsWhenTold) {
    CommandTest test;
    test.WriteShop();
    std::filesystem::remove(test.Path("Main.bas"));
    const Outcome strict = test.Run("list @Shop.vbp");
    EXPECT_EQ(strict.status, 3);
    EXPECT_THAT(strict.err, HasSubstr("Main.bas"));
    const Outcome lenient = test.Run("list @Shop.vbp --skip-missing --json");
    EXPECT_EQ(lenient.status, 0);
    EXPECT_THAT(lenient.err, HasSubstr("Main.bas"));
    EXPECT_EQ(nlohmann::json::parse(lenient.out)["warnings"].size(), 1U);
}

TEST(MemberCommand, AsksTheLibraryAboutTheCaret) {
    CommandTest test;
    test.WriteShop();
    const Outcome outcome = test.Run("member @Shop.vbp --at main:11:5");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "project    Shop\n"
              "component  Main\n"
              "line       11\n"
              "name       Sell\n"
              "type       ?\n"
              "typeEx     Function\n");
}

TEST(MemberCommand, PrintsOneJsonObject) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(
        nlohmann::ordered_json::parse(test.Run("member @Shop.vbp --at Stock:5 --json").out).dump(),
        R"({"project":"Shop","component":"Stock","line":5,"name":"Size","type":"?","typeEx":"Property"})");
    EXPECT_EQ(nlohmann::ordered_json::parse(test.Run("member @Shop.vbp --at Main:1 --json").out).dump(),
              R"({"project":"Shop","component":"Main","line":1,"name":"","type":"Property","typeEx":""})");
}

TEST(MemberCommand, RefusesPlacesThatAreNone) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("member @Shop.vbp --at Nowhere:1").status, 2);
    const Outcome outcome = test.Run("member @Shop.vbp --at Main:13");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("there is no line 13 of Main; it has 12 lines"));
}

TEST(RecoverCommand, HasNothingToDoAfterAnUndisturbedRun) {
    CommandTest test;
    test.WriteShop();
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --quiet").status, 0);
    const Outcome outcome = test.Run("recover @Shop.vbp");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "Nothing to recover.\n");
    EXPECT_EQ(test.Run("recover @nothing.vbp").status, 3);
}

}  // namespace
}  // namespace lintara::cli

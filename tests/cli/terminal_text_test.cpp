#include "cli/output/terminal_text.h"

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

std::string Shown(std::string_view utf8) {
    return Printable(utf8);
}

TEST(Printable, KeepsTextsInAllScripts) {
    EXPECT_EQ(Shown("Größe \t 日本 😀"), "Größe \t 日本 😀");
    EXPECT_EQ(Printable(TextView(u"Größe")), "Größe");
}

TEST(Printable, EscapesWhatSteersATerminal) {
    EXPECT_EQ(Shown("a\x1b[31mb"), "a\\x1b[31mb");
    EXPECT_EQ(Shown("a\nb\rc\x7f"), "a\\x0ab\\x0dc\\x7f");
    EXPECT_EQ(Shown("a\xc2\x9b"
                    "2Jb"),
              "a\\x9b2Jb");
    EXPECT_EQ(Shown("a\u202e"
                    "b\u2066"),
              "a\\u202eb\\u2066");
    EXPECT_EQ(Shown(std::string_view("a\0b", 3)), "a\\x00b");
}

TEST(Printable, EscapesBytesThatAreNoUtf8) {
    EXPECT_EQ(Shown("a\xff"
                    "b"),
              "a\\xffb");
    EXPECT_EQ(Shown("a\xe4\xb8"), "a\\xe4\\xb8");
    EXPECT_EQ(Shown("\xe4"
                    "bc"),
              "\\xe4bc");
    EXPECT_EQ(Shown("a\x80"
                    "b"),
              "a\\x80b");
    EXPECT_EQ(Shown("\xc0\x9b"), "\\xc0\\x9b");
}

TEST(ForReader, IsTheTextItselfForAProgram) {
    EXPECT_EQ(ForReader("a\x1b\r\nb\r", false), "a\x1b\r\nb\r");
}

TEST(ForReader, KeepsTheLinesForATerminalAndNothingThatSteersIt) {
    EXPECT_EQ(ForReader("a\x1b\r\n\tb\rc\n\nd", true), "a\\x1b\n\tb\\x0dc\n\nd\n");
    EXPECT_EQ(ForReader("", true), "");
}

TEST(PrintableJson, EscapesWhatJsonItselfDoesNot) {
    EXPECT_EQ(PrintableJson("{\"a\": \"\\u001b\"}\n"), "{\"a\": \"\\u001b\"}\n");
    EXPECT_EQ(PrintableJson("\"ä\xc2\x9b"
                            "2J\x7f\xe2\x80\xae日本\"\n"),
              "\"ä\\u009b2J\\u007f\\u202e日本\"\n");
}

TEST(ColumnsOf, CountsCharactersNotBytes) {
    EXPECT_EQ(ColumnsOf("Größe"), 5U);
}

}  // namespace
}  // namespace lintara::cli

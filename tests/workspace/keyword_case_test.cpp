#include "workspace/keyword_case.h"

#include "tests/support/module_text.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::ModuleOf;
using support::TextOf;

std::string Inserted(std::string_view text) {
    const auto module = Module::FromText(u"");
    Text withBreaks;
    for (const char16_t c : FromUtf8(text)) {
        withBreaks += c == u'\n' ? u"\r\n" : Text(1, c);
    }
    EXPECT_TRUE(module->InsertLines(Line{1}, withBreaks));
    return TextOf(*module);
}

// The line, which is put there as it is, after it was replaced by `text`.
std::string Replaced(std::string_view line, std::string_view text) {
    const auto module = Module::FromText(FromUtf8(line) + u"\r\n");
    Text withBreaks;
    for (const char16_t c : FromUtf8(text)) {
        withBreaks += c == u'\n' ? u"\r\n" : Text(1, c);
    }
    EXPECT_TRUE(module->ReplaceLine(Line{1}, withBreaks));
    return TextOf(*module);
}

constexpr std::string_view keywords =
    "AddressOf And Any As Boolean ByRef Byte ByVal Call Case CBool CByte CCur CDate CDbl CDec CInt CLng "
    "Close "
    "Const CSng CStr Currency CVar CVErr Date Debug Declare Dim Do Double Each Else ElseIf Empty End Enum "
    "Eqv "
    "Erase Erl Err Error Event Exit Explicit False For Friend Function Get Global GoSub GoTo If Imp "
    "Implements In Input Integer Is LBound Let Lib Like Long Loop LSet Me Mod New Next Not Nothing Null "
    "Object On Open Option Optional Or ParamArray Preserve Print Private Property Public Put RaiseEvent "
    "ReDim "
    "Resume Return RSet Seek Select Set Single Static Step Stop String Sub Then To True Type TypeOf UBound "
    "Unlock Until Variant Wend While With WithEvents Write Xor";

TEST(KeywordCase, EveryKeywordTakesItsForm) {
    std::string lower(keywords);
    std::string upper(keywords);
    for (std::size_t i = 0; i < keywords.size(); ++i) {
        const char c = keywords[i];
        lower[i] = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
        upper[i] = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    }
    EXPECT_EQ(Inserted(lower), keywords);
    EXPECT_EQ(Inserted(upper), keywords);
    EXPECT_EQ(Inserted(keywords), keywords);
}

TEST(KeywordCase, OtherWordsAreLeftAlone) {
    for (const std::string_view words :
         {"x Lock lock redimm asx x_as 1as as1 _as d_im Andrew endsub ALIAS ptrsafe",
          "x access append binary output random len mid name spc tab width debugger rem"}) {
        EXPECT_EQ(Inserted(words), words);
    }
}

TEST(KeywordCase, InEveryInsertedLine) {
    EXPECT_EQ(Inserted("dim x as long\n\tif x then y\n' if\nend if"),
              "Dim x As Long\n\tIf x Then y\n' if\nEnd If");
}

struct Case {
    std::string_view text;
    std::string_view result;
};

TEST(KeywordCase, WhatIsLeftAsItIs) {
    const Case cases[]{
        // text between quotes
        {"if s = \"if then\" then", "If s = \"if then\" Then"},
        {"s = \"a \"\" if\" & if", "s = \"a \"\" if\" & If"},
        {"s = \"open if", "s = \"open if"},
        // comments
        {"if x ' if", "If x ' if"},
        {"'if", "'if"},
        {"rem if", "rem if"},
        {"  rem if", "  rem if"},
        {"if x: rem if", "If x: rem if"},
        {"if x:rem: if", "If x:rem: if"},
        {"remif if", "remif If"},
        {"x = \"'\" and y", "x = \"'\" And y"},
        // directly after a dot or an exclamation mark
        {"x.end: x!if: x.print: .open", "x.end: x!if: x.print: .open"},
        {"x. end", "x. End"},
        {"debug.print x", "Debug.print x"},
        // a label at the start of the line
        {"next: next", "next: Next"},
        {"  next: next", "  next: Next"},
        {"10 next: next", "10 next: Next"},
        {"10: next: next", "10: next: Next"},
        {"10next: next", "10next: Next"},
        {"next :next", "Next :Next"},
        {"x: next: next", "x: Next: Next"},
        {"date:=1", "Date:=1"},
        {"f date:=1, string:=2", "f Date:=1, String:=2"},
        {"else: x", "else: x"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Inserted(c.text), c.result) << c.text;
    }
}

TEST(KeywordCase, EachPhysicalLineIsLookedAtByItself) {
    EXPECT_EQ(Inserted("s = \"open _\nif x ' _\nthen: y\nrem _\nif x"),
              "s = \"open _\nIf x ' _\nthen: y\nrem _\nIf x");
}

TEST(KeywordCase, WordsAreRunsOfLettersDigitsAndUnderscores) {
    EXPECT_EQ(Inserted("(if)+if-if\u00E4 if\u0660 #if \u20ACif if\U0001F600if"),
              "(If)+If-if\u00E4 if\u0660 #If \u20ACIf If\U0001F600If");
    EXPECT_EQ(Inserted("l\u0130ke"), "l\u0130ke");
}

struct ReplaceCase {
    std::string_view before;
    std::string_view text;
    std::string_view after;
};

TEST(KeywordCase, OnlyTheChangedPartOfALineIsRecased) {
    const ReplaceCase cases[]{
        // A number in front of a line recases nothing behind it.
        {"dim x as long", "10000: dim x as long", "10000: dim x as long"},
        {"dim x", "10:dim x", "10:dim x"},
        {"10000: dim x as long", "dim x as long", "dim x as long"},
        // The cut falls inside a word: the word is part of the change, and nowhere else.
        {"dim x", "10dim x", "10dim x"},
        {"di x as y", "dim x as y", "Dim x as y"},
        {"diM x as y", "dim x as y", "Dim x as y"},
        {"x as lonh", "x as long", "x as Long"},
        {"if x then", "if y then", "if y then"},
        {"if x then", "if x or y then", "if x Or y then"},
        {"if x or y then", "if then", "if then"},
        {"foo bar and", "fooand", "fooand"},
        {"is not", "isnot", "isnot"},
        {"to do", "todo", "todo"},
        {"i f", "if", "If"},
        {"xif", "if", "if"},
        {"ifx", "if", "if"},
        {"i.f x", "if x", "If x"},
        // The longest common beginning is set aside first.
        {"if if", "if if if", "if if If"},
        {"aa", "aaa", "aaa"},
        {"", "dim x", "Dim x"},
        {"dim x", "", ""},
        {"dim x", "dim x", "dim x"},
        {"dim x", "DIM X", "Dim X"},
        // What is left alone is so wherever the change begins.
        {"s = \"a", "s = \"a if", "s = \"a if"},
        {"x ' a", "x ' a if", "x ' a if"},
        {"x.", "x.end", "x.end"},
        {"x", "next: x", "next: x"},
        {"s = \"a\"", "s = \"a\" and b", "s = \"a\" And b"},
    };
    for (const ReplaceCase& c : cases) {
        EXPECT_EQ(Replaced(c.before, c.text), c.after) << c.before << " -> " << c.text;
    }
}

TEST(KeywordCase, WithSeveralLinesTheChangeIsSoughtInTheWholeText) {
    const ReplaceCase cases[]{
        {"dim x", "if y\ndim x", "If y\ndim x"},
        {"dim x", "dim x\nif y", "dim x\nIf y"},
        {"dim x as long", "dim x\nif y as long", "dim x\nIf y as long"},
        // "dim " is the common beginning, so the one of the last line is new.
        {"dim x", "dim y\nnext\ndim x", "dim y\nNext\nDim x"},
        {"dim x as long", "dim x \nas long", "dim x \nas long"},
        {"next x", "next\nnext x", "next\nNext x"},
    };
    for (const ReplaceCase& c : cases) {
        EXPECT_EQ(Replaced(c.before, c.text), c.after) << c.before << " -> " << c.text;
    }
}

TEST(KeywordCase, ChangedParts) {
    struct PartCase {
        TextView before;
        TextView after;
        std::size_t begin;
        std::size_t end;
    };
    const PartCase cases[]{
        {u"", u"", 0, 0},         {u"abc", u"abc", 3, 3},
        {u"abc", u"", 0, 0},      {u"", u"abc", 0, 3},
        {u"a b", u"a x b", 2, 4}, {u"a b", u"ab", 0, 2},
        {u"a-b", u"a+b", 1, 2},   {u"(a)", u"(ab)", 1, 3},
        {u"aXb", u"aYb", 0, 3},   {u"x aXb y", u"x aYb y", 2, 5},
        {u"aa", u"aaa", 0, 3},
    };
    for (const PartCase& c : cases) {
        const TextPart part = ChangedPart(c.before, c.after);
        EXPECT_EQ(part.begin, c.begin) << ToUtf8(c.before) << " -> " << ToUtf8(c.after);
        EXPECT_EQ(part.end, c.end) << ToUtf8(c.before) << " -> " << ToUtf8(c.after);
    }
}

TEST(KeywordCase, RestoredLinesAreNotRecased) {
    const auto module = ModuleOf("x");
    ASSERT_TRUE(module->RestoreLine(Line{1}, u"dim x as long"));
    EXPECT_EQ(TextOf(*module), "dim x as long");
}

TEST(KeywordCase, CodeThatIsOnlyReadIsNotRecased) {
    const auto module = ModuleOf("dim x\nend sub");
    ASSERT_TRUE(module->InsertLines(Line{2}, u"next"));
    ASSERT_TRUE(module->DeleteLines(Line{2}, 1));
    EXPECT_EQ(TextOf(*module), "dim x\nend sub");
}

}  // namespace
}  // namespace lintara::workspace

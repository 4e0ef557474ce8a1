#include "workspace/syntax.h"

#include "workspace/characters.h"
#include "workspace/encoding.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::MemberKind;

TEST(Characters, ABlankIsASpaceOrATab) {
    EXPECT_TRUE(IsBlank(u' '));
    EXPECT_TRUE(IsBlank(u'\t'));
    for (const char16_t c : {u'\0', u'\r', u'\n', u'\v', u'\f', u'\u00A0', u'\u2003', u'\u3000', u'x'}) {
        EXPECT_FALSE(IsBlank(c)) << static_cast<unsigned>(c);
    }
}

TEST(Characters, ALetterIsOfTheCategoriesL) {
    for (const char16_t c : {u'a', u'z', u'A', u'Z', u'\u00E9', u'\u00DF', u'\u00AA', u'\u01C5', u'\u02B0',
                             u'\u03A9', u'\u05D0', u'\u4E2D', u'\uFF21'}) {
        EXPECT_TRUE(IsLetter(c)) << static_cast<unsigned>(c);
        EXPECT_TRUE(IsWordCharacter(c)) << static_cast<unsigned>(c);
    }
    for (const char16_t c :
         {u'@', u'[', u'`', u'{', u'_', u'0', u'\u00D7', u'\u2160', u'\u0301', u'\u20AC'}) {
        EXPECT_FALSE(IsLetter(c)) << static_cast<unsigned>(c);
    }
}

TEST(Characters, ADigitIsOfTheCategoryNd) {
    for (const char16_t c : {u'0', u'9', u'\u0660', u'\u0967', u'\uFF15'}) {
        EXPECT_TRUE(IsDigit(c)) << static_cast<unsigned>(c);
        EXPECT_TRUE(IsWordCharacter(c)) << static_cast<unsigned>(c);
    }
    for (const char16_t c : {u'/', u':', u'a', u'\u00B2', u'\u00BD', u'\u2160', u'\u2460'}) {
        EXPECT_FALSE(IsDigit(c)) << static_cast<unsigned>(c);
    }
}

TEST(Characters, AHalfOfASurrogatePairIsNeither) {
    // A letter and a digit beyond the basic plane, half by half.
    for (const char16_t c : TextView(u"\U00010400\U0001D7CE")) {
        EXPECT_FALSE(IsLetter(c) || IsDigit(c) || IsWordCharacter(c));
    }
}

TEST(Characters, FoldingIsSimple) {
    EXPECT_EQ(FoldCase(u"ABC xyz_09[@`{"), u"abc xyz_09[@`{");
    EXPECT_EQ(FoldCase(u"\u00C4\u00D6\u0391\u03A3\u0416"), u"\u00E4\u00F6\u03B1\u03C3\u0436");
    EXPECT_TRUE(SameName(u"\u03C3", u"\u03C2"));         // both sigmas
    EXPECT_TRUE(SameName(u"\u212A", u"k"));              // the sign for kelvin
    EXPECT_FALSE(SameName(u"stra\u00DFe", u"strasse"));  // one character stays one
    EXPECT_FALSE(SameName(u"\u0130", u"i"));             // no language's own rules
    EXPECT_FALSE(SameName(u"name", u"names"));
    EXPECT_EQ(FoldCase(u"\U00010400"), u"\U00010400");
}

TEST(Characters, NamesThatAreTheSameHashTheSame) {
    EXPECT_EQ(HashName(u"Gr\u00D6\u00DFe_1"), HashName(u"gR\u00F6\u00DFE_1"));
    EXPECT_NE(HashName(u"Item1"), HashName(u"Item2"));
}

TEST(Syntax, ALineContinuesWhenItEndsInBlankUnderscore) {
    for (const TextView line : {u" _", u"\t_", u"x = 1 _", u"' comment _", u"\"open _", u"x _ _"}) {
        EXPECT_TRUE(Continues(line)) << ToUtf8(line);
    }
    for (const TextView line :
         {u"", u"_", u" ", u"x_", u"x = 1_", u" _ ", u" _\t", u" __", u"_ ", u"\u00A0_"}) {
        EXPECT_FALSE(Continues(line)) << ToUtf8(line);
    }
}

struct HeaderCase {
    TextView line;
    TextView name;
    MemberKind kind;
    ProcedureWord word;
};

TEST(Syntax, Headers) {
    using enum MemberKind;
    using enum ProcedureWord;
    const std::vector<HeaderCase> cases{
        {u"Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"Sub A", u"A", vbext_pk_Proc, Sub},
        {u"  \t Sub \t A ()", u"A", vbext_pk_Proc, Sub},
        {u"sUB a_1()", u"a_1", vbext_pk_Proc, Sub},
        {u"Function F$(x)", u"F", vbext_pk_Proc, Function},
        {u"FUNCTION f As Long", u"f", vbext_pk_Proc, Function},
        {u"Public Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"private Function B()", u"B", vbext_pk_Proc, Function},
        {u"Friend Property Get P()", u"P", vbext_pk_Get, Property},
        {u"Global Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"Static Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"Public Static Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"Static\tPrivate Global Friend Public Public Sub A()", u"A", vbext_pk_Proc, Sub},
        {u"Property Get P()", u"P", vbext_pk_Get, Property},
        {u"Property Let P(v)", u"P", vbext_pk_Let, Property},
        {u"property  SET \u00C4\u0660(v)", u"\u00C4\u0660", vbext_pk_Set, Property},
        {u"Sub Sub()", u"Sub", vbext_pk_Proc, Sub},
        {u"Sub Get()", u"Get", vbext_pk_Proc, Sub},
        {u"Property Get Get()", u"Get", vbext_pk_Get, Property},
        {u"Sub As Long", u"As", vbext_pk_Proc, Sub},
        {u"Sub A 'End Sub", u"A", vbext_pk_Proc, Sub},
    };
    for (const HeaderCase& c : cases) {
        const auto header = ParseHeader(c.line);
        ASSERT_TRUE(header) << ToUtf8(c.line);
        EXPECT_EQ(header->name, c.name) << ToUtf8(c.line);
        EXPECT_EQ(header->kind, c.kind) << ToUtf8(c.line);
        EXPECT_EQ(header->word, c.word) << ToUtf8(c.line);
        EXPECT_FALSE(header->closesItself) << ToUtf8(c.line);
    }
}

TEST(Syntax, WhatIsNoHeader) {
    for (const TextView line : {u"",
                                u"  ",
                                u"Sub",
                                u"Sub ",
                                u"Sub(",
                                u"Sub 1()",
                                u"Sub _a()",
                                u"Sub \U00010400()",
                                u"SubA()",
                                u"Function()",
                                u"Property P()",
                                u"Property Get",
                                u"Property Get 1",
                                u"Property Getter()",
                                u"PropertyGet P()",
                                u"Public",
                                u"Public x",
                                u"Public Type T",
                                u"Dim Sub As Long",
                                u"Dim Static Sub A",
                                u"Declare Sub A Lib \"x\" ()",
                                u"Public Declare Function F Lib \"x\" ()",
                                u"Private Declare PtrSafe Sub A Lib \"x\" ()",
                                u"Event Sub()",
                                u"Public Event Function1()",
                                u"End Sub",
                                u"End Function",
                                u"End Property",
                                u"Exit Sub",
                                u"Exit Property",
                                u"' Sub A()",
                                u"Rem Sub A()",
                                u"10 Sub A()",
                                u"x: Sub A()",
                                u"x = 1: Sub A()",
                                u"Call Sub A()",
                                u"\u00A0Sub A()",
                                u"Public.Sub A()",
                                u"Sub.A()",
                                u"Private-Sub A()"}) {
        EXPECT_FALSE(ParseHeader(line)) << ToUtf8(line);
    }
}

TEST(Syntax, HeadersThatCloseThemselves) {
    for (const TextView line :
         {u"Sub A(): End Sub", u"Sub A():End Sub", u"Sub A() :End Sub", u"Sub A() : End Sub",
          u"Sub A()\t:\tEnd Sub", u"Sub A(): x = 1: End Sub", u"Sub A(): s = \":\": End Sub ' done",
          u"Sub A(): END  sub", u"Sub A(): End Sub: x = 1", u"Sub A(): End Sub'",
          u"Sub A(Optional s = \"'\"): End Sub", u"Function A(): End Sub: End Function",
          u"Property Let A(v): m = v: End Property", u"Sub A(Remark): End Sub"}) {
        const auto header = ParseHeader(line);
        ASSERT_TRUE(header) << ToUtf8(line);
        EXPECT_TRUE(header->closesItself) << ToUtf8(line);
    }
    for (const TextView line :
         {u"Sub A() End Sub", u"Sub A() ' : End Sub", u"Sub A(): ' End Sub", u"Sub A(): Rem : End Sub",
          u"Sub A(s = \": End Sub\")", u"Sub A(s = \": End Sub", u"Sub A(): EndSub", u"Sub A(): End Function",
          u"Sub A(): End SubX", u"Sub A(): End Sub_", u"Sub A(): End Sub(", u"Sub A(): Exit Sub",
          u"Function F(): End Sub", u"Property Get P(): End Get", u"Sub A(): 10 End Sub",
          u"Sub A(): x = End Sub"}) {
        const auto header = ParseHeader(line);
        ASSERT_TRUE(header) << ToUtf8(line);
        EXPECT_FALSE(header->closesItself) << ToUtf8(line);
    }
}

TEST(Syntax, ClosingLines) {
    for (const TextView line : {u"End Sub",           u"end sub",
                                u"  End Sub",         u"\tEnd\tSub",
                                u"End    Sub",        u"End Sub ",
                                u"End Sub\t' done",   u"End Sub'",
                                u"End Sub:",          u"End Sub: x = 1",
                                u"End Sub x",         u"10 End Sub",
                                u"10: End Sub",       u"10:End Sub",
                                u"  10\tEnd Sub",     u"last: End Sub",
                                u"last:End Sub",      u"10 last: End Sub",
                                u"10: last: End Sub", u"10:last:End Sub",
                                u"\u00E4_1: End Sub", u"\u0661\u0662 End Sub",
                                u"End: End Sub"}) {
        EXPECT_TRUE(ClosesProcedure(line, ProcedureWord::Sub)) << ToUtf8(line);
        EXPECT_FALSE(ClosesProcedure(line, ProcedureWord::Function)) << ToUtf8(line);
    }
    EXPECT_TRUE(ClosesProcedure(u"End Function", ProcedureWord::Function));
    EXPECT_TRUE(ClosesProcedure(u"End Property", ProcedureWord::Property));
    for (const TextView line : {u"",
                                u"End",
                                u"End ",
                                u"EndSub",
                                u"End SubX",
                                u"End Sub_",
                                u"End Sub1",
                                u"End Sub(",
                                u"End Sub.",
                                u"End Sub,",
                                u"Exit Sub",
                                u"' End Sub",
                                u"Rem End Sub",
                                u"x = 1: End Sub",
                                u"a: b: End Sub",
                                u"last: 10 End Sub",
                                u"last:= End Sub",
                                u"10End Sub",
                                u"10.5 End Sub",
                                u"-10 End Sub",
                                u"\"End Sub\"",
                                u"End\u00A0Sub",
                                u"If x Then End Sub",
                                u"Sub A(): End Sub",
                                u"1a: End Sub"}) {
        EXPECT_FALSE(ClosesProcedure(line, ProcedureWord::Sub)) << ToUtf8(line);
    }
}

TEST(Syntax, LineNumberAndLabelAreSkipped) {
    const std::vector<std::pair<TextView, TextView>> cases{
        {u"x = 1", u"x = 1"},
        {u"  x = 1", u"x = 1"},
        {u"10 x = 1", u"x = 1"},
        {u"10: x = 1", u"x = 1"},
        {u"10:x = 1", u"x = 1"},
        {u"10:: x", u": x"},
        {u"10", u"10"},
        {u"10x", u"10x"},
        {u"10 ", u""},
        {u"10:", u""},
        {u"here: x = 1", u"x = 1"},
        {u"here:x = 1", u"x = 1"},
        {u"here:", u""},
        {u"here :x", u"here :x"},
        {u"10 here: x = 1", u"x = 1"},
        {u"10: here: there: x", u"there: x"},
        {u"named:=1", u"named:=1"},
        {u"_x: y", u"_x: y"},
        {u"", u""},
    };
    for (const auto& [line, rest] : cases) {
        EXPECT_EQ(ToUtf8(line.substr(SkipLineNumberAndLabel(line))), ToUtf8(rest)) << ToUtf8(line);
    }
}

TEST(Syntax, WhereACommentBegins) {
    const std::vector<std::pair<TextView, TextView>> cases{
        {u"x = 1 ' why", u"' why"},
        {u"' why", u"' why"},
        {u"x = \"it's\" ' why", u"' why"},
        {u"x = \"a\"\"b'\" ' why", u"' why"},
        {u"x = \"open ' not", u""},
        {u"Rem why", u"Rem why"},
        {u"  rem", u"rem"},
        {u"x = 1: REM why", u"REM why"},
        {u"x = 1:rem'", u"rem'"},
        {u"Remark = 1", u""},
        {u"x = Rem", u""},
        {u"x.Rem", u""},
        {u"s = \":\" & Rem", u""},
        {u"x = 1", u""},
        {u"", u""},
    };
    for (const auto& [line, comment] : cases) {
        EXPECT_EQ(ToUtf8(line.substr(CommentStart(line))), ToUtf8(comment)) << ToUtf8(line);
    }
}

TEST(Syntax, LinesOfBlanksOrCommentOnly) {
    for (const TextView line : {u"", u" \t", u"'", u"  ' x", u"Rem", u" rem x", u"Rem: x = 1"}) {
        EXPECT_TRUE(IsBlankOrComment(line)) << ToUtf8(line);
    }
    for (const TextView line : {u"x", u"Remark", u":", u"10 ' x", u"\u00A0", u"x ' y", u"\"'\""}) {
        EXPECT_FALSE(IsBlankOrComment(line)) << ToUtf8(line);
    }
}

TEST(Syntax, StatementsAreSplitAtColons) {
    const std::vector<std::pair<TextView, std::vector<TextView>>> cases{
        {u"x = 1", {u"x = 1"}},
        {u" x = 1 : y = 2 ", {u"x = 1", u"y = 2"}},
        {u"here: x", {u"here", u"x"}},
        {u"F a:=1: G b := 2", {u"F a:=1", u"G b := 2"}},
        {u"s = \"a:b\": t", {u"s = \"a:b\"", u"t"}},
        {u"x ' a: b", {u"x"}},
        {u"x: Rem a: b", {u"x"}},
        {u"::: x ::", {u"x"}},
        {u"", {}},
        {u" ' x", {}},
    };
    for (const auto& [line, statements] : cases) {
        EXPECT_EQ(SplitStatements(line), statements) << ToUtf8(line);
    }
}

}  // namespace
}  // namespace lintara::workspace

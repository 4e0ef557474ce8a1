#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using enum hostmodel::MemberKind;
using hostmodel::MemberKind;
using support::Code;
using support::ModuleOf;

std::string KindName(MemberKind kind) {
    switch (kind) {
        case vbext_pk_Proc:
            return "Proc";
        case vbext_pk_Let:
            return "Let";
        case vbext_pk_Set:
            return "Set";
        case vbext_pk_Get:
            return "Get";
    }
    return "none";
}

// A line for each procedure: "Proc Name: start, header, closing line".
std::string Procedures(const Module& module) {
    std::string all;
    for (const ProcedureInfo& p : module.Procedures()) {
        all += (all.empty() ? "" : "\n") + KindName(p.kind) + " " + ToUtf8(p.name) + ": " +
               std::to_string(p.start.value()) + ", " + std::to_string(p.header.value()) + ", " +
               std::to_string(p.closing.value()) + (p.closed ? "" : " open");
    }
    return all;
}

std::string ProceduresOf(std::string_view source) {
    return Procedures(*ModuleOf(source));
}

std::string OwnerOf(const Module& module, std::int32_t line) {
    MemberKind kind{99};
    const auto name = module.ProcOfLine(Line{line}, kind);
    return name ? KindName(kind) + " " + ToUtf8(*name) : "fails";
}

TEST(Procedures, EveryKindIsFound) {
    EXPECT_EQ(ProceduresOf(R"(
Option Explicit

Private Sub A()
End Sub
' about F
Public Static Function F(x) As Long

    F = 1
End Function

Property Get P()
End Property
Friend Property Let P(v)
End Property
Property Set P(v)
End Property
)"),
              Code(R"(
Proc A: 2, 3, 4
Proc F: 5, 6, 9
Get P: 10, 11, 12
Let P: 13, 13, 14
Set P: 15, 15, 16
)"));
}

TEST(Procedures, AHeaderMayBeContinued) {
    const auto module = ModuleOf(R"(
Private _
  Sub _
  A(x, _
  y)
End Sub
)");
    EXPECT_EQ(Procedures(*module), "Proc A: 1, 1, 5");
    EXPECT_EQ(module->Procedures()[0].bodyBegin, Line{5});
    EXPECT_EQ(module->Procedures()[0].body(), (LineRange{Line{5}, Line{5}}));
}

TEST(Procedures, ACommentContinuesToo) {
    EXPECT_EQ(ProceduresOf(R"(
' see _
Sub A()
Sub B() ' _
End Sub
x = 1 ' _
End Sub
End Sub
)"),
              "Proc B: 1, 3, 7");
}

TEST(Procedures, AnUnderscoreThatNoBlankPrecedesContinuesNothing) {
    EXPECT_EQ(ProceduresOf(R"(
x = name_
Sub A()
_
End Sub
)"),
              "Proc A: 2, 2, 4");
}

TEST(Procedures, ASecondHeaderIsPartOfTheBody) {
    EXPECT_EQ(ProceduresOf(R"(
Sub A()
Function B()
Sub C(): End Sub
End Function
End Sub
Sub D()
End Sub
)"),
              "Proc A: 1, 1, 5\nProc D: 6, 6, 7");
}

TEST(Procedures, TheClosingLineHasTheKindWordOfTheHeader) {
    EXPECT_EQ(ProceduresOf(R"(
Property Get P()
End Sub
End Function
End Property
Function F()
End Property
End Function
)"),
              "Get P: 1, 1, 4\nProc F: 5, 5, 7");
}

TEST(Procedures, ClosingLines) {
    for (const std::string closing :
         {"End Sub", "end sub", "  End   Sub  ", "End Sub ' done", "End Sub'", "End Sub: x = 1", "10 End Sub",
          "10: End Sub", "10: last: End Sub", "last: End Sub"}) {
        EXPECT_EQ(ProceduresOf("Sub A()\n" + closing + "\nSub B()\nEnd Sub"),
                  "Proc A: 1, 1, 2\nProc B: 3, 3, 4")
            << closing;
    }
    for (const std::string other : {"End SubX", "EndSub", "' End Sub", "x: y: End Sub", "End", "Exit Sub"}) {
        EXPECT_EQ(ProceduresOf("Sub A()\n" + other + "\nSub B()\nEnd Sub"), "Proc A: 1, 1, 4") << other;
    }
}

TEST(Procedures, AContinuedClosingStatementClosesOnItsLastLine) {
    EXPECT_EQ(ProceduresOf(R"(
Sub A()
End _
  Sub
Sub B()
End Sub _
  ' done _
  and over
Sub C()
End Sub
)"),
              "Proc A: 1, 1, 3\nProc B: 4, 4, 7\nProc C: 8, 8, 9");
}

TEST(Procedures, AHeaderLineMayCloseItself) {
    EXPECT_EQ(ProceduresOf(R"(
Sub A(): End Sub
Function B() :End Function
Sub C(x, _
  y) : x = 1:End Sub
Sub D() ' : End Sub
End Sub
Sub E(s = ": End Sub")
End Sub
)"),
              Code(R"(
Proc A: 1, 1, 1
Proc B: 2, 2, 2
Proc C: 3, 3, 4
Proc D: 5, 5, 6
Proc E: 7, 7, 8
)"));
    EXPECT_EQ(ModuleOf("Sub A(): End Sub")->Procedures()[0].body().count(), 0);
}

TEST(Procedures, OneThatNeverClosesReachesToTheEnd) {
    const auto module = ModuleOf(R"(
Sub A()
End Sub
Sub B()
x = 1
Sub C()
)");
    EXPECT_EQ(Procedures(*module), "Proc A: 1, 1, 2\nProc B: 3, 3, 5 open");
    EXPECT_EQ(module->ProcCountLines(u"B", vbext_pk_Proc), 3);
    EXPECT_EQ(module->Procedures()[1].body(), (LineRange{Line{4}, Line{6}}));
    ASSERT_TRUE(module->InsertLines(Line{6}, u"y"));
    EXPECT_EQ(module->ProcCountLines(u"B", vbext_pk_Proc), 4);
}

TEST(Procedures, CountOfDeclarationLines) {
    struct Case {
        std::string_view source;
        std::int32_t count;
    };
    const Case cases[]{
        {"Sub A()\nEnd Sub", 0},
        {"\n' about A\nSub A()\nEnd Sub", 0},
        {"Option Explicit\nSub A()\nEnd Sub", 1},
        {"Option Explicit\n\n' about A\n\nSub A()\nEnd Sub", 1},
        {"' head\n\nDim x\n\n' y\nDim z ' z\n  \nRem about A\nSub A()\nEnd Sub", 6},
        {"Dim x As _\n  Long\n' c _\n  c\nSub A()\nEnd Sub", 2},
        {"#If D Then\nSub A()\nEnd Sub\n#End If", 1},
        {"End Sub\nSub A()\nEnd Sub", 1},
        {":\nSub A()\nEnd Sub", 1},
        // Without procedures all lines are declarations.
        {"Dim x\n\n' y", 3},
        {"' y", 1},
        {"", 0},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ModuleOf(c.source)->CountOfDeclarationLines(), c.count) << c.source;
    }
}

constexpr std::string_view TwoProcedures = R"(
Option Explicit

' about A
Sub A()
End Sub

' about P
Property Get P(x, _
  y)
End Property
' the end
)";

TEST(Procedures, StartBodyAndCount) {
    const auto module = ModuleOf(TwoProcedures);
    EXPECT_EQ(module->ProcStartLine(u"A", vbext_pk_Proc), Line{2});
    EXPECT_EQ(module->ProcBodyLine(u"A", vbext_pk_Proc), Line{4});
    EXPECT_EQ(module->ProcCountLines(u"A", vbext_pk_Proc), 4);
    EXPECT_EQ(module->ProcStartLine(u"P", vbext_pk_Get), Line{6});
    EXPECT_EQ(module->ProcBodyLine(u"P", vbext_pk_Get), Line{8});
    // The last one reaches to the end of the module.
    EXPECT_EQ(module->ProcCountLines(u"P", vbext_pk_Get), 6);
}

TEST(Procedures, ANameIsMatchedWithoutRegardToCase) {
    const auto module = ModuleOf("Sub \u00C4rger()\nEnd Sub\nSub b()\nEnd Sub");
    EXPECT_EQ(module->ProcBodyLine(u"\u00E4RGER", vbext_pk_Proc), Line{1});
    EXPECT_EQ(module->ProcBodyLine(u"B", vbext_pk_Proc), Line{3});
}

TEST(Procedures, TheKindTellsThemApart) {
    const auto module = ModuleOf(R"(
Property Let P(v)
End Property
Property Get P()
End Property
Sub P()
End Sub
)");
    EXPECT_EQ(module->ProcBodyLine(u"P", vbext_pk_Proc), Line{5});
    EXPECT_EQ(module->ProcBodyLine(u"P", vbext_pk_Get), Line{3});
    EXPECT_EQ(module->ProcBodyLine(u"P", vbext_pk_Let), Line{1});
    EXPECT_FALSE(module->ProcBodyLine(u"P", vbext_pk_Set));
    EXPECT_FALSE(module->ProcBodyLine(u"P", MemberKind{77}));
    EXPECT_FALSE(module->ProcStartLine(u"P", vbext_pk_Set));
    EXPECT_FALSE(module->ProcCountLines(u"P", vbext_pk_Set));
}

TEST(Procedures, OfTwoTheFirstAnswers) {
    const auto module = ModuleOf("Sub A()\nEnd Sub\nFunction a()\nx = 1\nEnd Function");
    EXPECT_EQ(module->ProcStartLine(u"a", vbext_pk_Proc), Line{1});
    EXPECT_EQ(module->ProcCountLines(u"a", vbext_pk_Proc), 2);
    ASSERT_TRUE(module->DeleteLines(Line{1}, 2));
    EXPECT_EQ(module->ProcCountLines(u"A", vbext_pk_Proc), 3);
}

TEST(Procedures, WhatIsNotThereFails) {
    const auto module = ModuleOf(TwoProcedures);
    for (const TextView name : {u"", u"B", u"A ", u"A()", u"Option"}) {
        EXPECT_FALSE(module->ProcStartLine(name, vbext_pk_Proc));
        EXPECT_FALSE(module->ProcBodyLine(name, vbext_pk_Proc));
        EXPECT_FALSE(module->ProcCountLines(name, vbext_pk_Proc));
    }
    EXPECT_FALSE(ModuleOf("")->ProcBodyLine(u"A", vbext_pk_Proc));
}

TEST(Procedures, ProcOfLine) {
    const auto module = ModuleOf(TwoProcedures);
    const std::string owners[]{"none ", "Proc A", "Proc A", "Proc A", "Proc A", "Get P",
                               "Get P", "Get P",  "Get P",  "Get P",  "Get P"};
    for (std::int32_t line = 1; line <= 11; ++line) {
        EXPECT_EQ(OwnerOf(*module, line), owners[line - 1]) << line;
    }
    constexpr std::int32_t least = std::numeric_limits<std::int32_t>::min();
    constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
    for (const std::int32_t line : {least, -1, 0, 12, most}) {
        EXPECT_EQ(OwnerOf(*module, line), "fails") << line;
        EXPECT_FALSE(module->ProcedureAt(Line{line}));
    }
}

TEST(Procedures, ProcOfLineGivesTheNameAsTheHeaderWritesIt) {
    const auto module = ModuleOf("Sub mixedCASE()\nEnd Sub");
    EXPECT_EQ(OwnerOf(*module, 2), "Proc mixedCASE");
}

TEST(Procedures, ProcOfLineLeavesTheKindAloneInTheDeclarations) {
    const auto module = ModuleOf("Dim x\nSub A()\nEnd Sub");
    MemberKind kind = vbext_pk_Set;
    EXPECT_EQ(module->ProcOfLine(Line{1}, kind), u"");
    EXPECT_EQ(kind, vbext_pk_Set);
    EXPECT_FALSE(module->ProcOfLine(Line{9}, kind));
    EXPECT_EQ(kind, vbext_pk_Set);
    EXPECT_EQ(OwnerOf(*ModuleOf("Dim x"), 1), "none ");
    EXPECT_EQ(OwnerOf(*ModuleOf(""), 1), "fails");
}

// Edits that change what the lines around them mean.
struct EditCase {
    std::string_view name;
    std::string_view before;
    void (*edit)(Module&);
    std::string_view after;
};

TEST(Procedures, EditsAreFollowed) {
    const EditCase cases[]{
        {"a closing line comes", "Sub A()\nx\nSub B()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.InsertLines(Line{2}, u"End Sub")); },
         "Proc A: 1, 1, 2\nProc B: 3, 4, 5"},
        {"a closing line goes", "Sub A()\nEnd Sub\nSub B()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.DeleteLines(Line{2}, 1)); }, "Proc A: 1, 1, 3"},
        {"a header goes", "Sub A()\nSub B()\nEnd Sub\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.ReplaceLine(Line{1}, u"'")); }, "Proc B: 1, 2, 3"},
        {"the kind changes", "Sub A()\nEnd Function\nEnd Sub\nSub B()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.ReplaceLine(Line{1}, u"Function A()")); },
         "Proc A: 1, 1, 2\nProc B: 3, 4, 5"},
        {"a line is continued", "Sub A()\nx\nEnd Sub\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.ReplaceLine(Line{2}, u"x _")); }, "Proc A: 1, 1, 4"},
        {"a line is continued no more", "Sub A()\nx _\nEnd Sub\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.ReplaceLine(Line{2}, u"x")); }, "Proc A: 1, 1, 3"},
        {"what continued a line goes", "' _\nx\nSub A()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.DeleteLines(Line{2}, 1)); }, ""},
        {"a continued line gets a line between", "Sub A() ' _\nEnd Sub\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.InsertLines(Line{2}, u"x")); }, "Proc A: 1, 1, 3"},
        {"half a header is replaced", "Sub _\nA()\nEnd Sub\nSub B()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.ReplaceLine(Line{2}, u"1")); }, "Proc B: 4, 4, 5"},
        {"declarations come", "Sub A()\nEnd Sub",
         [](Module& m) { ASSERT_TRUE(m.InsertLines(Line{1}, u"Dim x\r\n")); }, "Proc A: 2, 3, 4"},
        {"all goes", "Sub A()\nEnd Sub", [](Module& m) { ASSERT_TRUE(m.DeleteLines(Line{1}, 2)); }, ""},
    };
    for (const EditCase& c : cases) {
        const auto module = ModuleOf(c.before);
        c.edit(*module);
        EXPECT_EQ(Procedures(*module), c.after) << c.name;
        EXPECT_EQ(Procedures(*module), ProceduresOf(support::TextOf(*module))) << c.name;
    }
}

// The declarations end at the first header, so they must be read anew when it goes by an edit below it.
TEST(Procedures, TheDeclarationsReachFurtherWhenTheFirstHeaderGoes) {
    const auto module = ModuleOf("Sub _\nA()\nx = 1\nSub B()\nEnd Sub");
    EXPECT_EQ(module->CountOfDeclarationLines(), 0);
    ASSERT_TRUE(module->ReplaceLine(Line{2}, u"()"));
    EXPECT_EQ(module->CountOfDeclarationLines(), 3);
}

}  // namespace
}  // namespace lintara::workspace

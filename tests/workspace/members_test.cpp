#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::MemberType;
using support::Code;
using support::ModuleOf;

std::string Shown(const MemberInfo& member) {
    constexpr std::string_view types[]{"?", "method", "property", "variable", "event", "constant"};
    return std::string(types[static_cast<std::size_t>(member.type)]) + " " + ToUtf8(member.name) + " " +
           std::to_string(member.codeLocation.value());
}

// A line for each member: type, name, code location.
std::string Members(const Module& module) {
    std::string all;
    for (const MemberInfo& member : module.MemberList()) {
        all += (all.empty() ? "" : "\n") + Shown(member);
    }
    return all;
}

std::string MembersOf(std::string_view source) {
    return Members(*ModuleOf(source));
}

std::string Found(const Module& module, TextView name) {
    const auto member = module.FindMember(name);
    return member ? Shown(*member) : "none";
}

TEST(Members, TypesHaveTheNumbersOfTheIde) {
    EXPECT_EQ(static_cast<int>(MemberType::Method), 1);
    EXPECT_EQ(static_cast<int>(MemberType::Property), 2);
    EXPECT_EQ(static_cast<int>(MemberType::Variable), 3);
    EXPECT_EQ(static_cast<int>(MemberType::Event), 4);
    EXPECT_EQ(static_cast<int>(MemberType::Constant), 5);
}

TEST(Members, DeclarationsThenProceduresInOrderOfAppearance) {
    EXPECT_EQ(MembersOf(R"(
Option Explicit
Private Const K = 1
Public Event Changed(x)
Dim a As Long
Private Declare Sub Beep Lib "kernel32" (ByVal f As Long)

' about P
Property Get P()
End Property
Private Sub S()
Dim no
End Sub
Function F(): End Function
)"),
              Code(R"(
constant K 2
event Changed 3
variable a 4
method Beep 5
property P 8
method S 10
method F 13
)"));
}

TEST(Members, APropertyStandsOnceAtTheFirstOfItsProcedures) {
    EXPECT_EQ(MembersOf(R"(
Property Set P(v)
End Property
Property Get Q()
End Property
Property Get p()
End Property
Property Let Q(v)
End Property
Property Get Q()
End Property
Sub P()
End Sub
Sub P()
End Sub
)"),
              Code(R"(
property P 1
property Q 3
method P 11
method P 13
)"));
}

struct Case {
    std::string_view source;
    std::string_view members;
};

TEST(Members, Variables) {
    const Case cases[]{
        {"Dim a", "variable a 1"},
        {"  public a$", "variable a 1"},
        {"Global a As Long", "variable a 1"},
        {"Private a, b As String , c%", "variable a 1\nvariable b 1\nvariable c 1"},
        {"Dim a(1 To 2, 3) As Long, b()", "variable a 1\nvariable b 1"},
        {"Dim a As New Collection, b", "variable a 1\nvariable b 1"},
        {"Dim a As String * 20, b", "variable a 1\nvariable b 1"},
        {"Private WithEvents a As Button", "variable a 1"},
        {"Public withevents a As X, b As Y", "variable a 1\nvariable b 1"},
        {"Dim a, _\n  b, _\n  c", "variable a 1\nvariable b 1\nvariable c 1"},
        {"Dim \u00C4_1 ' , b", "variable \u00C4_1 1"},
        {"Public Type As Long", "variable Type 1"},
        {"Dim", ""},
        {"Dim 1a, _b", ""},
        {"a = 1", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MembersOf(c.source), c.members) << c.source;
    }
}

TEST(Members, Constants) {
    const Case cases[]{
        {"Const a = 1", "constant a 1"},
        {"Public Const a As Long = 1, b$ = \"x, c = 2\", d = (1, 2)",
         "constant a 1\nconstant b 1\nconstant d 1"},
        {"Global Const a = \"it's\", b = 2 ' , c = 3", "constant a 1\nconstant b 1"},
        {"#Const a = 1", ""},
        {"#Const a = 1: Const b = 2", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MembersOf(c.source), c.members) << c.source;
    }
}

TEST(Members, EventsAndDeclareLines) {
    const Case cases[]{
        {"Event a()", "event a 1"},
        {"Public Event a(ByVal b As Long, c)", "event a 1"},
        {"Declare Sub a Lib \"x\" ()", "method a 1"},
        {"Private Declare Function a Lib \"x\" Alias \"b, c\" (d, e) As Long", "method a 1"},
        {"Public Declare PtrSafe Function a Lib \"x\" ()", "method a 1"},
        {"declare ptrsafe sub a lib \"x\"", "method a 1"},
        {"Public Declare Function _\n  a _\n  Lib \"x\"\nDim b", "method a 1\nvariable b 4"},
        {"Declare a", ""},
        {"Event", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MembersOf(c.source), c.members) << c.source;
    }
}

TEST(Members, BlocksAndTheirFieldsAreNone) {
    const Case cases[]{
        {"Type T\n  a As Long\nDim b\nEnd Type\nDim c", "variable c 5"},
        {"Private Type T\nConst a = 1\nEnd Enum\nEnd Type", ""},
        {"Public Enum E\n  a = 1\n  b\nEnd Enum", ""},
        {"Enum E: a = 1: Dim b: End Enum: Dim c", "variable c 1"},
        {"Type T ' x\n  Dim As Long\nEnd _\n  Type\nDim c", "variable c 5"},
        {"Type T\nDim a", ""},
        {"Option Explicit\nImplements I\nDefLng A-Z", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(MembersOf(c.source), c.members) << c.source;
    }
}

TEST(Members, AColonSeparatesDeclarations) {
    EXPECT_EQ(MembersOf("Dim a: Const b = \":\": Event c() : Declare Sub d Lib \"x\": ' Dim e"),
              "variable a 1\nconstant b 1\nevent c 1\nmethod d 1");
    EXPECT_EQ(MembersOf("Dim a: Rem Dim b: Dim c"), "variable a 1");
}

TEST(Members, TheCodeLocationIsTheFirstPhysicalLine) {
    EXPECT_EQ(MembersOf("Dim a, _\n  b: _\nDim c: Dim _\n  d\nPrivate Sub _\n  S()\nEnd Sub"),
              "variable a 1\nvariable b 1\nvariable c 3\nvariable d 3\nmethod S 5");
}

TEST(Members, ADeclarationWinsOverAProcedureOfItsName) {
    const auto module = ModuleOf(R"(
Dim Total
Const TOTAL = 1
Sub total()
End Sub
Property Get Item()
End Property
Sub item()
End Sub
)");
    EXPECT_EQ(Found(*module, u"TOTAL"), "variable Total 1");
    EXPECT_EQ(Found(*module, u"ITEM"), "property Item 5");
    EXPECT_EQ(Found(*module, u"Tota"), "none");
    EXPECT_EQ(Found(*module, u""), "none");
    ASSERT_TRUE(module->DeleteLines(Line{1}, 2));
    EXPECT_EQ(Found(*module, u"Total"), "method total 1");
}

TEST(Members, WhatEndsBelowTheFirstHeaderIsNoDeclaration) {
    EXPECT_EQ(MembersOf("Dim a\nSub S()\nEnd Sub\nDim b\nConst c = 1"), "variable a 1\nmethod S 2");
}

TEST(Members, EditsAreFollowed) {
    const auto module = ModuleOf("Dim a\nSub S()\nEnd Sub");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"Dim b, c"));
    EXPECT_EQ(Members(*module), "variable b 1\nvariable c 1\nmethod S 2");
    ASSERT_TRUE(module->InsertLines(Line{1}, u"Type T"));
    EXPECT_EQ(Members(*module), "method S 3");
    ASSERT_TRUE(module->InsertLines(Line{2}, u"End Type"));
    EXPECT_EQ(Members(*module), "variable b 3\nvariable c 3\nmethod S 4");
    ASSERT_TRUE(module->ReplaceLine(Line{4}, u"Property Let S(v)"));
    EXPECT_EQ(Members(*module), "variable b 3\nvariable c 3\nproperty S 4");
    ASSERT_TRUE(module->InsertLines(Line{1}, u"Sub First(): End Sub"));
    EXPECT_EQ(Members(*module), "method First 1\nproperty S 5");
}

}  // namespace
}  // namespace lintara::workspace

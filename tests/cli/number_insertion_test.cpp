// What insertion does to procedures, and what it leaves alone: code before and code after.
#include "cli/edits/refusal.h"
#include "tests/cli/edited_module.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct InsertionCase {
    const char* name;
    const char* before;
    const char* after;
};

void PrintTo(const InsertionCase& c, std::ostream* out) {
    *out << c.name;
}

class Insertion : public testing::TestWithParam<InsertionCase> {};

TEST_P(Insertion, WritesNumbersAndRemovalRestoresTheCode) {
    EditedModule module(GetParam().before);
    EXPECT_THAT(SkippedIn(module.Insert()), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().after);
    EXPECT_THAT(SkippedIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

const InsertionCase insertionCases[] = {
    {"Statements",
     "Option Explicit\n"
     "Private Sub A()\n"
     "    x = 1\n"
     "\n"
     "    y = 2 _\n"
     "        + 3\n"
     "done:\n"
     "    ' end\n"
     "End Sub\n",
     "Option Explicit\n"
     "Private Sub A()\n"
     "10000:     x = 1\n"
     "\n"
     "10010:     y = 2 _\n"
     "               + 3\n"
     "done:\n"
     "10025:     ' end\n"
     "End Sub\n"},
    {"DirectivesGetBlanksForTheirNumbers",
     "Sub A()\n"
     "#If Debugging Then\n"
     "  # elseif X Then\n"
     "    x = 1\n"
     "#Else\n"
     "#Const Y = 1\n"
     "#END IF\n"
     "    Print #1\n"
     "End Sub\n",
     "Sub A()\n"
     "       #If Debugging Then\n"
     "         # elseif X Then\n"
     "10010:     x = 1\n"
     "       #Else\n"
     "       #Const Y = 1\n"
     "       #END IF\n"
     "10030:     Print #1\n"
     "End Sub\n"},
    {"FirstCaseBehindACommentGetsBlanks",
     "Sub A()\n"
     "    Select Case x\n"
     "    ' which one?\n"
     "\n"
     "    Case 1\n"
     "    Case 2\n"
     "    End Select\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     Select Case x\n"
     "           ' which one?\n"
     "\n"
     "           Case 1\n"
     "10020:     Case 2\n"
     "10025:     End Select\n"
     "End Sub\n"},
    {"FirstCaseBehindALabelGetsBlanks",
     "Sub A()\n"
     "    select case x\n"
     "here:\n"
     "    rem a comment\n"
     "    CASE 1: y\n"
     "    Case Else\n"
     "    End Select\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     select case x\n"
     "here:\n"
     "10010:     rem a comment\n"
     "           CASE 1: y\n"
     "10020:     Case Else\n"
     "10025:     End Select\n"
     "End Sub\n"},
    {"FirstCaseOfASelectBehindALabelGetsBlanks",
     "Sub A()\n"
     "here: Select Case x\n"
     "    Case 1\n"
     "    x = 1: Select Case y\n"
     "    Case 3\n"
     "    End Select\n"
     "End Select\n"
     "End Sub\n",
     "Sub A()\n"
     "here: Select Case x\n"
     "           Case 1\n"
     "10010:     x = 1: Select Case y\n"
     "           Case 3\n"
     "10020:     End Select\n"
     "10025: End Select\n"
     "End Sub\n"},
    {"FirstCaseOfAContinuedSelectGetsBlanks",
     "Sub A()\n"
     "    Select _\n"
     "      Case x\n"
     "    Case 1\n"
     "    End Select\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     Select _\n"
     "             Case x\n"
     "           Case 1\n"
     "10015:     End Select\n"
     "End Sub\n"},
    {"FirstCaseInEachBranchOfADirectiveGetsBlanks",
     "Sub A()\n"
     "    Select Case x\n"
     "#If A Then\n"
     "    Case 1\n"
     "    Case 2\n"
     "#Else\n"
     "    Case 3\n"
     "#End If\n"
     "    Case 4\n"
     "    End Select\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     Select Case x\n"
     "       #If A Then\n"
     "           Case 1\n"
     "10015:     Case 2\n"
     "       #Else\n"
     "           Case 3\n"
     "       #End If\n"
     "10035:     Case 4\n"
     "10040:     End Select\n"
     "End Sub\n"},
    {"SelectInTextsAndCommentsIsNone",
     "Sub A()\n"
     "    x = \"Select Case y\"\n"
     "    Case 1 ' Select Case y\n"
     "    Case 2\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     x = \"Select Case y\"\n"
     "10005:     Case 1 ' Select Case y\n"
     "10010:     Case 2\n"
     "End Sub\n"},
    {"BodyOfLabelsAndContinuationsStays",
     "Sub A()\n"
     "first: x = 1 + _\n"
     "    2\n"
     "last:\n"
     "End Sub\n",
     "Sub A()\n"
     "first: x = 1 + _\n"
     "    2\n"
     "last:\n"
     "End Sub\n"},
    {"BodyOfDirectivesStays",
     "Sub A()\n"
     "#If X Then\n"
     "#End If\n"
     "End Sub\n",
     "Sub A()\n"
     "#If X Then\n"
     "#End If\n"
     "End Sub\n"},
    {"BlankLinesAndDeepLabelsComeBack",
     "Sub A()\n"
     "          \n"
     "here:        x = 1\n"
     ":       y = 2\n"
     "    z = 3\n"
     "                x = 4\n"
     "End Sub\n",
     "Sub A()\n"
     "          \n"
     "here:        x = 1\n"
     ":       y = 2\n"
     "10015:     z = 3\n"
     "10020:                 x = 4\n"
     "End Sub\n"},
    {"PropertyProceduresAreNumberedEach",
     "Property Get Total() As Long\n"
     "    Total = t\n"
     "End Property\n"
     "Property Let Total(ByVal v As Long)\n"
     "    t = v\n"
     "End Property\n"
     "Property Set Total(ByVal v As Object)\n"
     "    Set o = v\n"
     "End Property\n",
     "Property Get Total() As Long\n"
     "10000:     Total = t\n"
     "End Property\n"
     "Property Let Total(ByVal v As Long)\n"
     "10000:     t = v\n"
     "End Property\n"
     "Property Set Total(ByVal v As Object)\n"
     "10000:     Set o = v\n"
     "End Property\n"},
    {"EmptyProceduresStay",
     "Sub A()\nEnd Sub\n"
     "Sub B(): End Sub\n"
     "Function C()\n    C = 1\nEnd Function\n",
     "Sub A()\nEnd Sub\n"
     "Sub B(): End Sub\n"
     "Function C()\n10000:     C = 1\nEnd Function\n"},
    {"JumpsToNamesAndSmallNumbersDoNoHarm",
     "Sub A()\n"
     "    On Error GoTo 0\n"
     "    On x GoTo here, there\n"
     "    If x Then 9999\n"
     "    y = 10005 ' GoTo 10005\n"
     "    s = \"GoTo 10010\"\n"
     "    Selection.GoTo 10000\n"
     "    GoTo 10001\n"
     "here:\n"
     "there:\n"
     "End Sub\n",
     "Sub A()\n"
     "10000:     On Error GoTo 0\n"
     "10005:     On x GoTo here, there\n"
     "10010:     If x Then 9999\n"
     "10015:     y = 10005 ' GoTo 10005\n"
     "10020:     s = \"GoTo 10010\"\n"
     "10025:     Selection.GoTo 10000\n"
     "10030:     GoTo 10001\n"
     "here:\n"
     "there:\n"
     "End Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Insertion, testing::ValuesIn(insertionCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct SkipCase {
    const char* name;
    const char* code;
    const char* skipped;  // "reason name"
    int line;             // that the warning is about
};

void PrintTo(const SkipCase& c, std::ostream* out) {
    *out << c.name;
}

class InsertionSkips : public testing::TestWithParam<SkipCase> {};

TEST_P(InsertionSkips, TheProcedureAndLeavesItAsItWas) {
    EditedModule module(GetParam().code);
    const ComponentReport report = module.Insert();
    EXPECT_THAT(SkippedIn(report), ElementsAre(GetParam().skipped));
    ASSERT_FALSE(report.skipped.empty());
    EXPECT_EQ(report.skipped[0].at, Line(GetParam().line)) << report.skipped[0].message;
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
    EXPECT_THAT(SkippedIn(module.Remove()), testing::AnyOf(IsEmpty(), ElementsAre(GetParam().skipped),
                                                           ElementsAre(HasSubstr("number-width"))));
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

const SkipCase skipCases[] = {
    {"CommentBehindTheClosingLine", "Sub A()\n    x = 1\nEnd Sub ' done\n", "range-mismatch A", 2},
    {"ProcedureThatNeverCloses", "Sub A()\n    x = 1\n", "range-mismatch A", 1},
    {"LongHeaderAboveAShortProcedure",
     "Sub A( _\n    x, _\n    y)\n    x = 1\nEnd Sub\n"
     "Sub B()\nEnd Sub\n",
     "range-mismatch A", 5},
    {"CompanionFoundInAComment",
     "' see Property Let A\n"
     "Property Get A()\n    A = 1\nEnd Property\n",
     "range-mismatch A", 2},
    {"CompanionFoundInTheHeaderItself",
     "Property Get A() ' as Property Let A\n    A = 1 _\n    + 1\nEnd Property\n", "range-mismatch A", 2},
    {"CompanionWithTwoBlanksIsNotFound",
     "Property Get A()\n    A = 1\nEnd Property\n"
     "Property  Let A(x)\n    y = x\nEnd Property\n",
     "range-mismatch A", 5},
    {"VariableOfTheSameName", "Private A\nSub A()\n    x = 1\nEnd Sub\n", "range-mismatch A", 3},
    {"NumberedLine", "Sub A()\n    y = 1\n10: x = 1\nEnd Sub\n", "already-numbered A", 3},
    {"NumericTextOfAnySort", "Sub A()\n    y = 1\n1e3: x = 1\nEnd Sub\n", "already-numbered A", 3},
    {"NumberWithoutColon", "Sub A()\n    y = 1\n10 x = 1\nEnd Sub\n", "foreign-numbers A", 3},
    {"NumberAlone", "Sub A()\n    y = 1\n  10\nEnd Sub\n", "foreign-numbers A", 3},
    {"NumberBehindATab", "Sub A()\n\t10\tx = 1\nEnd Sub\n", "foreign-numbers A", 2},
    {"IndentedNumberWithColon", "Sub A()\n    10: x = 1\nEnd Sub\n", "foreign-numbers A", 2},
    {"JumpToANumberThatIsWritten", "Sub A()\n    GoTo 10005\n    x = 1\nEnd Sub\n", "jump-target A", 2},
    {"JumpInTheHeaderLine", "Sub A(): On Error GoTo 10000\n    x = 1\nEnd Sub\n", "jump-target A", 1},
};

INSTANTIATE_TEST_SUITE_P(Cases, InsertionSkips, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(InsertionGuards, EditsTheFirstProcedureOfANameAndReportsTheOthers) {
    EditedModule module(
        "#If Win64 Then\n"
        "Sub A()\n    x = 1\nEnd Sub\n"
        "#Else\n"
        "Sub A()\n    x = 2\nEnd Sub\n"
        "#End If\n");
    const ComponentReport report = module.Insert();
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), ElementsAre("duplicate-procedure A"));
    EXPECT_EQ(report.skipped[0].line, Line(6));
    EXPECT_THAT(module.Code(), HasSubstr("10000:     x = 1\n"));
    EXPECT_THAT(module.Code(), HasSubstr("\n    x = 2\n"));
    EXPECT_THAT(SkippedIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(InsertionGuards, AreOffWhenExact) {
    EditedModule module(
        "Sub A()\n"
        "#If X Then\n"
        "    GoTo 10005\n"
        "10 x = 1\n"
        "#End If\n"
        "End Sub\n");
    const ComponentReport report = module.Insert({.base = 1, .step = 1}, true);
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(SkippedIn(report), IsEmpty());
    EXPECT_EQ(module.Code(),
              "Sub A()\n"
              "1: #If X Then\n"
              "2:     GoTo 10005\n"
              "3: 10 x = 1\n"
              "4: #End If\n"
              "End Sub\n");
}

TEST(InsertionGuards, RenumberReplacesNumbersByNewOnes) {
    EditedModule module("Sub A()\n20000:     x = 1 _\n             + 2\n20020:     y = 3\nEnd Sub\n");
    const ComponentReport report = module.Insert({.renumber = true});
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\n10000:     x = 1 _\n             + 2\n10010:     y = 3\nEnd Sub\n");
    EXPECT_THAT(EditedIn(module.Insert({.renumber = true})), IsEmpty());
}

TEST(InsertionGuards, LeaveNumbersThatInsertionWouldWriteNow) {
    const std::string code =
        "Sub A()\n    x = 1 _\n      + 2\n    #If B Then\n    y\n    #End If\nlast:\nEnd Sub\n";
    EditedModule module(code);
    ASSERT_THAT(EditedIn(module.Insert()), ElementsAre("A"));
    EditedModule again = EditedModule::FromFile(module.Bytes());
    const ComponentReport report = again.Insert();
    EXPECT_THAT(EditedIn(report), IsEmpty());
    EXPECT_THAT(SkippedIn(report), IsEmpty());
    EXPECT_THAT(SkippedIn(again.Insert({.base = 20000})), ElementsAre("already-numbered A"));
    EXPECT_EQ(again.Bytes(), again.OriginalBytes());
}

TEST(InsertionGuards, RenumberKeepsTheGuardsOfRemoval) {
    const std::pair<const char*, const char*> cases[] = {
        {"Sub A()\n10: x = 1\nEnd Sub\n", "number-width A"},
        {"Sub A()\n20000: x = 1\n20005: GoTo 20000\nEnd Sub\n", "jump-target A"},
        {"Sub A()\n20000: 10 x = 1\nEnd Sub\n", "foreign-numbers A"},
        {"Sub A()\n20000: 10: x = 1\nEnd Sub\n", "already-numbered A"},
    };
    for (const auto& [code, skipped] : cases) {
        EditedModule module(code);
        EXPECT_THAT(SkippedIn(module.Insert({.renumber = true})), ElementsAre(skipped));
        EXPECT_EQ(module.Code(), code);
    }
}

TEST(InsertionGuards, RefuseNumbersThatAreWrittenWithSixDigits) {
    const char* code = "Sub A()\n    x = 1\n    y = 2\n\n\nEnd Sub\n";
    EXPECT_EQ(EditedIn(EditedModule(code).Insert({.base = 99994, .step = 5})).size(), 1U);
    try {
        EditedModule(code).Insert({.base = 99995, .step = 5});
        FAIL() << "nothing was refused";
    } catch (const Refusal& refusal) {
        EXPECT_THAT(refusal.what(), HasSubstr("--base 99995"));
        EXPECT_THAT(refusal.what(), HasSubstr("Sub A in Module1"));
        EXPECT_THAT(refusal.what(), HasSubstr("100000"));
    }
}

std::string LongProcedure(int lines, std::string_view line) {
    std::string code = "Sub A()\n";
    for (int i = 0; i < lines; ++i) {
        code += line;
        code += '\n';
    }
    return code + "End Sub\n";
}

TEST(InsertionGuards, LinesBeyondTheLimitComeBackOnRemoval) {
    // With step 20000, three lines have an offset below 55535.
    EditedModule module(LongProcedure(6, "          x = 1"));
    const ComponentReport report = module.Insert({.base = 10000, .step = 20000});
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    ASSERT_EQ(report.remarks.size(), 1U);
    EXPECT_EQ(report.remarks[0].code, "numbering-limit");
    EXPECT_EQ(report.remarks[0].at, Line(5));
    EXPECT_THAT(module.Code(), HasSubstr("\n50000:           x = 1\n          x = 1\n"));
    EXPECT_THAT(SkippedIn(module.Remove()), IsEmpty());
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

TEST(InsertionGuards, LinesThatBecomeTooLongForTheIdeAreRemarked) {
    const auto lineOf = [](std::size_t length) { return "x = " + std::string(length - 4, '1'); };
    EditedModule module("Sub A()\n" + lineOf(1016) + "\n" + lineOf(1017) + "\n" + lineOf(1024) +
                        "\nEnd Sub\n");
    const ComponentReport report = module.Insert({});
    ASSERT_EQ(report.remarks.size(), 1U);
    EXPECT_EQ(report.remarks[0].code, "line-too-long");
    EXPECT_EQ(report.remarks[0].at, Line(3));
}

TEST(InsertionGuards, AStepThatLeavesOneNumberIsSkippedWhereRemovalWouldHarm) {
    EditedModule deep(LongProcedure(3, "          x = 1"));
    EXPECT_THAT(SkippedIn(deep.Insert({.step = 60000})), ElementsAre("numbering-limit A"));
    EXPECT_EQ(deep.Bytes(), deep.OriginalBytes());

    EditedModule flat(LongProcedure(3, "    x = 1"));
    EXPECT_THAT(SkippedIn(flat.Insert({.step = 60000})), IsEmpty());
    EXPECT_NE(flat.Bytes(), flat.OriginalBytes());
    EXPECT_THAT(SkippedIn(flat.Remove()), IsEmpty());
    EXPECT_EQ(flat.Bytes(), flat.OriginalBytes());
}

TEST(InsertionGuards, AStepBeyondAllOffsetsNumbersOneLine) {
    EditedModule module(LongProcedure(3, "    x = 1"));
    EXPECT_THAT(EditedIn(module.Insert({.step = 2'000'000'000})), ElementsAre("A"));
    module.Remove();
    EXPECT_EQ(module.Bytes(), module.OriginalBytes());
}

}  // namespace
}  // namespace lintara::cli

// Blocks of custom code: where they go, what removal takes out again, and what both leave alone.
#include "cli/edits/custom_code_insertion.h"
#include "cli/edits/custom_code_removal.h"
#include "cli/guards/block_jumps.h"
#include "cli/guards/custom_code_markers.h"
#include "cli/guards/inserted_code.h"
#include "tests/cli/command_run.h"
#include "tests/cli/edited_module.h"
#include "tests/support/project_generator.h"
#include "tests/support/wild_module.h"
#include "workspace/encoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using transform::CodePlace;

std::string Begin(const std::string& id) {
    return "' TWCustomCode begin - please do not modify or remove this line " + id + "\n";
}

std::string End(const std::string& id) {
    return "' TWCustomCode end - please do not modify or remove this line " + id + "\n";
}

std::string Block(const std::string& id, const std::string& code = "    Trace\n") {
    return Begin(id) + code + End(id);
}

CustomCodeOptions Code(std::int16_t id, const std::string& code = "    Trace") {
    return {.code = workspace::FromUtf8(Replaced(code, "\n", "\r\n")), .id = id};
}

ComponentReport Insert(EditedModule& module, const CustomCodeOptions& block, bool exact = false) {
    return module.Edit(std::make_unique<CustomCodeInsertion>(block), false, exact);
}

ComponentReport Remove(EditedModule& module, std::int16_t id, bool exact = false) {
    return module.Edit(std::make_unique<CustomCodeRemoval>(id), true, exact);
}

std::vector<std::string> RemarksIn(const ComponentReport& report) {
    std::vector<std::string> remarks;
    for (const Remark& remark : report.remarks) {
        remarks.push_back(std::string(remark.code) + " " + std::to_string(remark.at.value()));
    }
    return remarks;
}

struct PlaceCase {
    const char* name;
    CodePlace where;
    std::int32_t line;
    std::string before;
    std::string after;
};

void PrintTo(const PlaceCase& c, std::ostream* out) {
    *out << c.name;
}

class InsertedCode : public testing::TestWithParam<PlaceCase> {};

TEST_P(InsertedCode, GoesToItsPlaceAndComesOutAgain) {
    EditedModule module(GetParam().before);
    CustomCodeOptions block = Code(5);
    block.where = GetParam().where;
    block.line = GetParam().line;
    EXPECT_THAT(SkippedIn(Insert(module, block)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().after);
    EXPECT_THAT(SkippedIn(Remove(module, 5)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().before);
}

const PlaceCase placeCases[] = {
    {"First", CodePlace::AfterFirstLine, 1, "Sub A()\n    x\n    y\nEnd Sub\n",
     "Sub A()\n" + Block("5") + "    x\n    y\nEnd Sub\n"},
    {"Last", CodePlace::BeforeLastLine, 1, "Sub A()\n    x\n    y\nEnd Sub\n",
     "Sub A()\n    x\n    y\n" + Block("5") + "End Sub\n"},
    {"LineOne", CodePlace::AtLine, 1, "Sub A()\n    x\nEnd Sub\n",
     "Sub A()\n" + Block("5") + "    x\nEnd Sub\n"},
    {"LineTwo", CodePlace::AtLine, 2, "Sub A()\n    x\n    y\nEnd Sub\n",
     "Sub A()\n    x\n" + Block("5") + "    y\nEnd Sub\n"},
    {"TheLineBehindTheBodyIsTheClosingLine", CodePlace::AtLine, 2, "Sub A()\n    x\nEnd Sub\n",
     "Sub A()\n    x\n" + Block("5") + "End Sub\n"},
    {"BehindTheWholeHeader", CodePlace::AfterFirstLine, 1,
     "Function F(a, _\n           b) As Long\n    F = 1\nEnd Function\n",
     "Function F(a, _\n           b) As Long\n" + Block("5") + "    F = 1\nEnd Function\n"},
    {"IntoEachProcedureOfAProperty", CodePlace::BeforeLastLine, 1,
     "Property Get P()\n    P = 1\nEnd Property\nSub A()\n    x\nEnd Sub\n"
     "Property Let P(v)\n    y = v\nEnd Property\nProperty Set P(v)\n    Set y = v\nEnd Property\n",
     "Property Get P()\n    P = 1\n" + Block("5") + "End Property\nSub A()\n    x\n" + Block("5") +
         "End Sub\nProperty Let P(v)\n    y = v\n" + Block("5") + "End Property\nProperty Set P(v)\n" +
         "    Set y = v\n" + Block("5") + "End Property\n"},
    {"AheadOfAContinuedStatement", CodePlace::AtLine, 2, "Sub A()\n    x\n    y = 1 + _\n 2\nEnd Sub\n",
     "Sub A()\n    x\n" + Block("5") + "    y = 1 + _\n 2\nEnd Sub\n"},
    {"AmongNumberedLines", CodePlace::AtLine, 2, "Sub A()\n10000: x\n10005: y\nEnd Sub\n",
     "Sub A()\n10000: x\n" + Block("5") + "10005: y\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, InsertedCode, testing::ValuesIn(placeCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CustomCodeInsertion, ExpandsTheTemplateForEachProcedure) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nFunction B()\n    x\nEnd Function\n");
    EXPECT_THAT(SkippedIn(Insert(module, Code(7, "Trace \"{ComponentName}.{MemberName}\" ' {MemberType}"))),
                IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\n" + Block("7", "Trace \"Module1.A\" ' Sub\n") +
                                 "    x\nEnd Sub\nFunction B()\n" +
                                 Block("7", "Trace \"Module1.B\" ' Function\n") + "    x\nEnd Function\n");
}

TEST(CustomCodeInsertion, WritesNegativeNumbersAndNoMarkersWhenAsked) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    EXPECT_THAT(SkippedIn(Insert(module, Code(-32768))), IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\n" + Block("-32768") + "    x\nEnd Sub\n");

    EditedModule unmarked("Sub A()\n    x\nEnd Sub\n");
    CustomCodeOptions block = Code(5, "a\nb");
    block.noMarkers = true;
    EXPECT_THAT(EditedIn(Insert(unmarked, block)), ElementsAre("A"));
    EXPECT_EQ(unmarked.Code(), "Sub A()\na\nb\n    x\nEnd Sub\n");
    EXPECT_THAT(EditedIn(Remove(unmarked, 5)), IsEmpty());
    EXPECT_THAT(EditedIn(Insert(unmarked, block)), ElementsAre("A")) << "nothing tells that it is in already";
}

TEST(CustomCodeInsertion, LeavesHiddenAttributesWhereTheyAre) {
    const std::string file =
        "Attribute VB_Name = \"M\"\r\nSub A()\r\nAttribute A.VB_Description = \"a\"\r\n    x\r\nEnd Sub\r\n";
    EditedModule module = EditedModule::FromFile(file);
    EXPECT_THAT(SkippedIn(Insert(module, Code(5))), IsEmpty());
    EXPECT_EQ(module.Bytes(),
              "Attribute VB_Name = \"M\"\r\nSub A()\r\nAttribute A.VB_Description = \"a\"\r\n" +
                  Replaced(Block("5"), "\n", "\r\n") + "    x\r\nEnd Sub\r\n");
    EditedModule again = EditedModule::FromFile(module.Bytes());
    EXPECT_THAT(EditedIn(Remove(again, 5)), ElementsAre("A"));
    EXPECT_EQ(again.Bytes(), file);
}

TEST(CustomCodeInsertion, OfTheSameBlockIsDoneOnce) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    EXPECT_THAT(EditedIn(Insert(module, Code(5))), ElementsAre("A"));
    const std::string once = module.Code();
    EXPECT_THAT(SkippedIn(Insert(module, Code(5))), ElementsAre("already-inserted A"));
    EXPECT_EQ(module.Code(), once);
    EXPECT_THAT(EditedIn(Insert(module, Code(6))), ElementsAre("A"));

    Insert(module, Code(5), true);
    EXPECT_EQ(module.Code(), "Sub A()\n" + Block("5") + Block("6") + Block("5") + "    x\nEnd Sub\n");
}

TEST(CustomCodeInsertion, RemarksNumbersThatRemovalMayConfuse) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    Insert(module, Code(1));
    EXPECT_THAT(RemarksIn(Insert(module, Code(12))), ElementsAre("marker-prefix 2"));
    EXPECT_THAT(SkippedIn(Remove(module, 1)), ElementsAre("marker-prefix A")) << "what the remark is about";
}

struct SkipCase {
    const char* name;
    const char* reason;
    CustomCodeOptions block;
    std::string code;
    std::string exact;  // what --exact makes of it
};

void PrintTo(const SkipCase& c, std::ostream* out) {
    *out << c.name;
}

CustomCodeOptions At(std::int32_t line) {
    CustomCodeOptions block = Code(5);
    block.where = CodePlace::AtLine;
    block.line = line;
    return block;
}

CustomCodeOptions Last() {
    CustomCodeOptions block = Code(5);
    block.where = CodePlace::BeforeLastLine;
    return block;
}

class SkippedInsertion : public testing::TestWithParam<SkipCase> {};

TEST_P(SkippedInsertion, LeavesTheModuleAsItWas) {
    EditedModule module(GetParam().code);
    EXPECT_THAT(SkippedIn(Insert(module, GetParam().block)), ElementsAre(GetParam().reason));
    EXPECT_EQ(module.Code(), GetParam().code);
}

TEST_P(SkippedInsertion, IsDoneWhenExact) {
    EditedModule module(GetParam().code);
    EXPECT_THAT(SkippedIn(Insert(module, GetParam().block, true)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().exact);
}

const std::string padding = "' 1\n' 2\n' 3\n' 4\n";

const SkipCase skipCases[] = {
    // The line is compared with the closing line's place in the module: below, the block falls outside.
    {"LineBehindTheProcedure", "outside-body A", At(4), padding + "Sub A()\n    x\nEnd Sub\n' 8\n' 9\n",
     padding + "Sub A()\n    x\nEnd Sub\n' 8\n" + Block("5") + "' 9\n"},
    {"LineFarBehindTheProcedure", "outside-body A", At(100), "Sub A()\n    x\nEnd Sub\n",
     "Sub A()\n    x\nEnd Sub\n"},
    {"LineInsideAStatement", "outside-body A", At(2), "Sub A()\n    x = 1 + _\n    2\nEnd Sub\n",
     "Sub A()\n    x = 1 + _\n" + Block("5") + "    2\nEnd Sub\n"},
    {"LineInsideAComment", "outside-body A", At(2), "Sub A()\n    ' see _\n    there\nEnd Sub\n",
     "Sub A()\n    ' see _\n" + Block("5") + "    there\nEnd Sub\n"},
    {"LastInsideTheClosingStatement", "outside-body A", Last(), "Sub A()\n    x\n10 _\nEnd Sub\n",
     "Sub A()\n    x\n10 _\n" + Block("5") + "End Sub\n"},
    {"EmptyBody", "empty-body A", Code(5), "Sub A()\nEnd Sub\n", "Sub A()\n" + Block("5") + "End Sub\n"},
    {"OneProcedureOfAPropertyIsEmpty", "empty-body P", Code(5),
     "Property Get P()\n    P = 1\nEnd Property\nProperty Let P(v)\nEnd Property\n",
     "Property Get P()\n" + Block("5") + "    P = 1\nEnd Property\nProperty Let P(v)\n" + Block("5") +
         "End Property\n"},
    {"EndThatTheLibraryDoesNotFind", "range-mismatch A", Last(), "Sub A()\n    y\nEnd Sub ' A\n",
     Block("5") + "Sub A()\n    y\nEnd Sub ' A\n"},
    {"HalfABlock", "already-inserted A", Code(5), "Sub A()\n    x\n" + End("5") + "End Sub\n",
     "Sub A()\n" + Block("5") + "    x\n" + End("5") + "End Sub\n"},
    {"ExpansionThatClosesTheProcedure", "breaks-procedure A", Code(5, "End {MemberType}"),
     "Sub A()\n    x\nEnd Sub\n", "Sub A()\n" + Block("5", "End Sub\n") + "    x\nEnd Sub\n"},
    {"ExpansionThatIsAHeader", "breaks-procedure A", Code(5, "Sub {MemberName}()"),
     "Sub A()\n    x\nEnd Sub\n", "Sub A()\n" + Block("5", "Sub A()\n") + "    x\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, SkippedInsertion, testing::ValuesIn(skipCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CustomCodeInsertion, RemarksLinesThatAreTooLong) {
    EditedModule module("Sub A()\n    x\nEnd Sub\n");
    const ComponentReport report = Insert(module, Code(5, "a\n' " + std::string(1022, 'x')));
    EXPECT_THAT(EditedIn(report), ElementsAre("A"));
    EXPECT_THAT(RemarksIn(report), ElementsAre("line-too-long 2"));
    EditedModule fitting("Sub A()\n    x\nEnd Sub\n");
    EXPECT_THAT(RemarksIn(Insert(fitting, Code(5, "' " + std::string(1021, 'x')))), IsEmpty());
}

TEST(CustomCodeInsertion, SwallowsProceduresOnlyWhenExact) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub\n");
    CustomCodeOptions block = Last();
    block.code = u"x = _";
    block.noMarkers = true;
    EXPECT_THAT(EditedIn(Insert(module, block, true)), ElementsAre("A"));
    EXPECT_EQ(module.Code(), "Sub A()\n    x\nx = _\nEnd Sub\nSub B()\n    y\nEnd Sub\n");
    EXPECT_EQ(module.module().CountOfProcedures(), 1U) << "the damage";
}

TEST(CustomCodeInsertion, ReportsProceduresThatCannotBeReached) {
    EditedModule module("Sub A()\n    x\nEnd Sub\nSub A()\n    y\nEnd Sub\n");
    EXPECT_THAT(SkippedIn(Insert(module, Code(5))), ElementsAre("duplicate-procedure A"));
    EXPECT_EQ(module.Code(), "Sub A()\n" + Block("5") + "    x\nEnd Sub\nSub A()\n    y\nEnd Sub\n");
    EditedModule marked("Sub A()\n    x\nEnd Sub\nSub A()\n" + Block("5") + "    y\nEnd Sub\n");
    EXPECT_THAT(SkippedIn(Insert(marked, Code(5))), IsEmpty());
    EXPECT_THAT(SkippedIn(Remove(marked, 5)), ElementsAre("duplicate-procedure A"));
}

struct ObjectionCase {
    const char* name;
    const char* code;
    const char* objection;  // "": none
};

void PrintTo(const ObjectionCase& c, std::ostream* out) {
    *out << c.name;
}

class Objection : public testing::TestWithParam<ObjectionCase> {};

TEST_P(Objection, TellsWhatTheCodeWouldBreak) {
    const Text code = workspace::FromUtf8(Replaced(GetParam().code, "\n", "\r\n"));
    EXPECT_EQ(ObjectionToCode(code).value_or(""), GetParam().objection);
}

constexpr const char* LongStatement =
    "x = 1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n"
    "1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1";

constexpr const char* LongerStatement =
    "y\nx = 1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n"
    "1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1 + _\n1";

const ObjectionCase objectionCases[] = {
    {"Statements", "x = 1\nExit Sub\nIf a Then End", ""},
    {"Quotes", "x = \"End Sub\"\n' End Sub\nRem Sub A()", ""},
    {"ContinuationInside", "x = 1 + _\n    2", ""},
    {"AsManyContinuationsAsTheIdeTakes", LongStatement, ""},
    {"OneContinuationMore", LongerStatement,
     "line 2 has more than 24 continuation lines, which the IDE does not accept"},
    {"ContinuationAtTheEnd", "x\ny = _",
     "its last line ends in an underscore and would swallow the line below it"},
    {"Header", "x\nPrivate Function F()", "line 2 is the header of a procedure"},
    {"HeaderOverTwoLines", "Public _\nSub A()", "line 1 is the header of a procedure"},
    {"ClosingLine", "x\n  end  SUB", "line 2 closes a procedure"},
    {"ClosingStatementBehindAnother", "x: End Function ' done", "line 1 closes a procedure"},
    {"ClosingStatementBehindANumber", "10 End Property", "line 1 closes a procedure"},
    {"CustomCodeMarker", "x\n    ' twcustomcode BEGIN - please do not modify or remove this line 7",
     "line 2 holds the text of a marker line, and removal would go by it"},
    {"ErrorHandlerMarker", "' TWErrorHandler begin - please do not modify or remove this line",
     "line 1 holds the text of a marker line, and removal would go by it"},
};

INSTANTIATE_TEST_SUITE_P(Cases, Objection, testing::ValuesIn(objectionCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct RemovalCase {
    const char* name;
    std::int16_t id;
    std::string before;
    std::string after;
};

void PrintTo(const RemovalCase& c, std::ostream* out) {
    *out << c.name;
}

class CustomCodeRemoved : public testing::TestWithParam<RemovalCase> {};

TEST_P(CustomCodeRemoved, TakesTheBlockAndNothingElse) {
    EditedModule module(GetParam().before);
    EXPECT_THAT(SkippedIn(Remove(module, GetParam().id)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().after);
}

const RemovalCase removalCases[] = {
    {"NumberedMarkers", 5,
     "Sub A()\n10000: " + Begin("5") + "10005: Trace\n10010: " + End("5") + "10015: x\nEnd Sub\n",
     "Sub A()\n10015: x\nEnd Sub\n"},
    {"MarkersInOtherCaseAndBehindBlanks", 5,
     "Sub A()\n  ' TWCUSTOMCODE BEGIN - please do not modify or remove this line 5\nTrace\n\t" + End("5") +
         "x\nEnd Sub\n",
     "Sub A()\nx\nEnd Sub\n"},
    {"AnotherNumberStays", 5, "Sub A()\n" + Block("6") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("6") + "x\nEnd Sub\n"},
    {"ANumberThatBeginsTheSameStaysWhenThereIsNoOther", 1, "Sub A()\n" + Block("12") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("12") + "x\nEnd Sub\n"},
    {"ANumberThatBeginsTheSameStaysBelow", 1, "Sub A()\n" + Block("1") + Block("12") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("12") + "x\nEnd Sub\n"},
    {"ALongerNumberIsFoundBelowAShorterOne", 12, "Sub A()\n" + Block("1") + Block("12") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("1") + "x\nEnd Sub\n"},
    {"APlusNumberIsNoMinusNumber", 1, "Sub A()\n" + Block("-1") + Block("1") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("-1") + "x\nEnd Sub\n"},
    {"WithAWholeBlockInside", 5, "Sub A()\n" + Block("5", Block("6")) + "x\nEnd Sub\n",
     "Sub A()\nx\nEnd Sub\n"},
    {"FromInsideAnotherBlock", 6, "Sub A()\n" + Block("5", Block("6")) + "x\nEnd Sub\n",
     "Sub A()\n" + Begin("5") + End("5") + "x\nEnd Sub\n"},
    {"FromOneProcedureOfAProperty", 5,
     "Property Get P()\nP = 1\nEnd Property\nProperty Let P(v)\n" + Block("5") + "y = v\nEnd Property\n",
     "Property Get P()\nP = 1\nEnd Property\nProperty Let P(v)\ny = v\nEnd Property\n"},
    {"JumpsWithinTheBlock", 5,
     "Sub A()\n" + Block("5", "GoTo here\nhere: Trace\nGoTo there\n") + "there: x\nEnd Sub\n",
     "Sub A()\nthere: x\nEnd Sub\n"},
    {"NothingBelowIsTouchedByAnEmptyProcedure", 5,
     "Sub A()\nEnd Sub\nSub B()\n" + Block("5") + "x\nEnd Sub\n", "Sub A()\nEnd Sub\nSub B()\nx\nEnd Sub\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, CustomCodeRemoved, testing::ValuesIn(removalCases),
                         [](const auto& test) { return std::string(test.param.name); });

struct KeptCase {
    const char* name;
    const char* reason;
    std::int16_t id;
    std::string code;
    std::string exact;
};

void PrintTo(const KeptCase& c, std::ostream* out) {
    *out << c.name;
}

class SkippedRemoval : public testing::TestWithParam<KeptCase> {};

TEST_P(SkippedRemoval, LeavesTheModuleAsItWas) {
    EditedModule module(GetParam().code);
    EXPECT_THAT(SkippedIn(Remove(module, GetParam().id)), ElementsAre(GetParam().reason));
    EXPECT_EQ(module.Code(), GetParam().code);
}

TEST_P(SkippedRemoval, IsDoneWhenExact) {
    EditedModule module(GetParam().code);
    EXPECT_THAT(SkippedIn(Remove(module, GetParam().id, true)), IsEmpty());
    EXPECT_EQ(module.Code(), GetParam().exact);
}

const KeptCase keptCases[] = {
    {"MarkersOfALongerNumber", "marker-prefix A", 1, "Sub A()\n" + Block("12") + Block("1") + "x\nEnd Sub\n",
     "Sub A()\n" + Block("1") + "x\nEnd Sub\n"},
    {"MarkersOfALongerNegativeNumber", "marker-prefix A", -1,
     "Sub A()\n" + Block("-12") + Block("-1") + "x\nEnd Sub\n", "Sub A()\n" + Block("-1") + "x\nEnd Sub\n"},
    {"EndMarkerOfALongerNumberInside", "marker-prefix A", 1,
     "Sub A()\n" + Block("1", Block("12")) + "x\nEnd Sub\n", "Sub A()\n" + End("1") + "x\nEnd Sub\n"},
    {"MarkersOfALongerNumberInTheOtherProcedure", "marker-prefix P", 1,
     "Property Get P()\n" + Block("1") + "P = 1\nEnd Property\nProperty Let P(v)\n" + Block("12") +
         "y = v\nEnd Property\n",
     "Property Get P()\nP = 1\nEnd Property\nProperty Let P(v)\ny = v\nEnd Property\n"},
    {"BeginMarkerAlone", "marker-mismatch A", 5, "Sub A()\n" + Begin("5") + "x\nEnd Sub\n",
     "Sub A()\n" + Begin("5") + "x\nEnd Sub\n"},
    {"EndMarkerAlone", "marker-mismatch A", 5, "Sub A()\nx\n" + End("5") + "End Sub\n",
     "Sub A()\nx\n" + End("5") + "End Sub\n"},
    {"EndMarkerFirst", "marker-mismatch A", 5, "Sub A()\n" + End("5") + "x\n" + Begin("5") + "End Sub\n",
     "Sub A()\n" + End("5") + "x\n" + Begin("5") + "End Sub\n"},
    {"CodeInFrontOfTheMarker", "marker-mismatch A", 5,
     "Sub A()\nx = 1 " + Begin("5") + "Trace\n" + End("5") + "End Sub\n", "Sub A()\nEnd Sub\n"},
    {"MarkerInsideAContinuedComment", "marker-mismatch A", 5,
     "Sub A()\n' see _\n" + Block("5") + "x\nEnd Sub\n", "Sub A()\n' see _\nx\nEnd Sub\n"},
    {"HalfOfAnotherBlockInside", "marker-mismatch A", 5,
     "Sub A()\n" + Begin("5") + Begin("6") + End("5") + "x\n" + End("6") + "End Sub\n",
     "Sub A()\nx\n" + End("6") + "End Sub\n"},
    {"NestedInItself", "marker-mismatch A", 5,
     "Sub A()\n" + Begin("5") + Block("5") + "x\n" + End("5") + "End Sub\n",
     "Sub A()\nx\n" + End("5") + "End Sub\n"},
    {"JumpToALabelInside", "jump-target A", 5,
     "Sub A()\nOn Error GoTo Here\n" + Block("5", "here:\nTrace\n") + "x\nEnd Sub\n",
     "Sub A()\nOn Error GoTo Here\nx\nEnd Sub\n"},
    {"JumpToANumberInside", "jump-target A", 5,
     "Sub A()\nIf x Then 10\n" + Block("5", "10 Trace\n") + "x\nEnd Sub\n",
     "Sub A()\nIf x Then 10\nx\nEnd Sub\n"},
    {"EmptyBodyAboveAnotherProcedure", "empty-body P", 5,
     "Property Get P()\n" + Block("5") + "P = 1\nEnd Property\nProperty Let P(v)\nEnd Property\nSub B()\n" +
         Block("55") + "x\nEnd Sub\n",
     "Property Get P()\nP = 1\nEnd Property\nProperty Let P(v)\nEnd Property\nSub B()\nx\nEnd Sub\n"},
    {"EndThatTheLibraryDoesNotFind", "range-mismatch A", 5,
     "Sub A0()\n    x\nEnd Sub\nSub A()\n" + Block("5") + "End Sub ' A\n",
     "Sub A0()\n    x\nEnd Sub\nSub A()\nEnd Sub ' A\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, SkippedRemoval, testing::ValuesIn(keptCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(CustomCodeRemoval, NamesTheLineOfALonelyMarker) {
    EditedModule module("Sub A()\nx\n" + Begin("5") + "y\nEnd Sub\nSub B()\n" + End("5") + "x\nEnd Sub\n");
    const ComponentReport report = Remove(module, 5);
    ASSERT_EQ(report.skipped.size(), 2U);
    EXPECT_THAT(report.skipped[0].message,
                HasSubstr("begin marker at line 3 (line 3 of the file) has no end marker"));
    EXPECT_EQ(report.skipped[0].at, Line(3));
    EXPECT_THAT(report.skipped[1].message, HasSubstr("end marker at line 7"));
}

TEST(CustomCodeRemoval, TakesOneOfSeveralBlocksAndTellsOfTheNext) {
    EditedModule module("Sub A()\n" + Block("5", "a\n") + "x\n" + Block("5", "b\n") + "End Sub\n");
    EXPECT_THAT(RemarksIn(Remove(module, 5)), ElementsAre("more-blocks 6"));
    EXPECT_EQ(module.Code(), "Sub A()\nx\n" + Block("5", "b\n") + "End Sub\n");
    EXPECT_THAT(RemarksIn(Remove(module, 5)), IsEmpty());
    EXPECT_EQ(module.Code(), "Sub A()\nx\nEnd Sub\n");
}

TEST(CustomCodeRemoval, KeepsHiddenLinesInsideABlock) {
    const std::string file = "Attribute VB_Name = \"M\"\r\nSub A()\r\n" + Replaced(Begin("5"), "\n", "\r\n") +
                             "Attribute A.VB_Description = \"a\"\r\nTrace\r\n" +
                             Replaced(End("5"), "\n", "\r\n") + "x\r\nEnd Sub\r\n";
    EditedModule module = EditedModule::FromFile(file);
    EXPECT_THAT(SkippedIn(Remove(module, 5)), ElementsAre("hidden-lines A"));
    EXPECT_EQ(module.Bytes(), file);
    Remove(module, 5, true);
    EXPECT_THAT(module.Bytes(), Not(HasSubstr("VB_Description"))) << "the damage";
}

TEST(CustomCodeMarkers, AreReadWithTheirNumbers) {
    const std::vector<Text> lines = {u"x",
                                     u"10: ' TWCustomCode begin - please do not modify or remove this line 7",
                                     u"' TWCustomCode end - please do not modify or remove this line -7 z",
                                     u"' TWCustomCode end - please do not modify or remove this line z"};
    EXPECT_THAT(FindCustomCodeMarkers(lines),
                ElementsAre(CustomCodeMarker{.line = 1, .isBegin = true, .id = u"7", .alone = true},
                            CustomCodeMarker{.line = 2, .isBegin = false, .id = u"-7", .alone = false}));
}

struct JumpCase {
    const char16_t* statement;
    const char16_t* target;  // "": none
};

TEST(BlockJumps, AreFoundInEveryStatementThatJumps) {
    const JumpCase cases[] = {
        {u"GoTo there", u"there"},
        {u"Go To THERE", u"THERE"},
        {u"On x GoSub a, b , there", u"there"},
        {u"On Error GoTo there", u"there"},
        {u"Resume there", u"there"},
        {u"If x Then Resume Else 010", u"010"},
        {u"If x Then 10", u"10"},
        {u"If x Then there", u""},
        {u"x = there: y = 10", u""},
        {u"' GoTo there", u""},
        {u"x = \"GoTo there\"", u""},
        {u"a.GoTo there", u""},
        {u"GoTo elsewhere", u""},
    };
    for (const JumpCase& c : cases) {
        const std::vector<Text> lines = {u"Sub A()", c.statement, u"10 x", u"there: y", u"End Sub"};
        const auto jump = FindJumpIntoBlock(lines, 2, 4);
        EXPECT_EQ(jump ? jump->target : u"", c.target) << workspace::ToUtf8(c.statement);
    }
}

// Insertion, then removal: every byte comes back, whatever the code holds.
std::size_t RoundTrip(const std::string& bytes, const CustomCodeOptions& block) {
    EditedModule module = EditedModule::FromFile(bytes);
    const std::size_t procedures = module.module().CountOfProcedures();
    const ComponentReport inserted = Insert(module, block);
    EXPECT_EQ(module.module().CountOfProcedures(), procedures);
    if (inserted.edited.empty()) {
        EXPECT_EQ(module.Bytes(), bytes);
    }
    // As another run would find it on disk.
    EditedModule reloaded = EditedModule::FromFile(module.Bytes());
    const ComponentReport removed = Remove(reloaded, block.id);
    EXPECT_EQ(reloaded.Bytes(), bytes);
    EXPECT_EQ(EditedIn(removed), EditedIn(inserted));
    EXPECT_THAT(SkippedIn(removed), IsEmpty());
    return inserted.edited.size();
}

TEST(CustomCodeRoundTrip, OfWildModulesLosesNothing) {
    std::size_t edited = 0;
    for (std::uint64_t seed = 1; seed <= 300 && !testing::Test::HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const std::string bytes = support::GenerateWildModule({.lines = 150, .seed = seed});
        for (CustomCodeOptions block :
             {Code(1, "Trace \"{MemberName}\"\n{MemberType}x = 1"), Last(), At(3)}) {
            edited += RoundTrip(bytes, block);
        }
    }
    EXPECT_GT(edited, 900U) << "the modules give the insertion nothing to do";
}

TEST(CustomCodeRoundTrip, OfOrdinaryModulesEditsNearlyAllProcedures) {
    for (std::uint64_t seed = 1; seed <= 10 && !testing::Test::HasFailure(); ++seed) {
        const std::string bytes =
            support::GenerateModule({.lines = 1000, .procedures = 40, .propertyShare = 0.5, .seed = seed});
        EXPECT_GT(RoundTrip(bytes, Code(5)), 20U);
        EXPECT_GT(RoundTrip(bytes, Last()), 20U);
    }
}

class CustomCommand : public testing::Test {
  protected:
    void SetUp() override {
        test.WriteShop();
        test.Write("trace.txt", "Debug.Print \"{MemberName}\"\n");
        before = test.Files();
    }

    CommandTest test;
    std::map<std::string, std::string> before;
};

const std::string mainWithBlock =
    "Attribute VB_Name = \"Main\"\r\n"
    "Option Explicit\r\n"
    "Private count As Long\r\n"
    "\r\n"
    "Public Sub Main()\r\n"
    "' TWCustomCode begin - please do not modify or remove this line 5\r\n"
    "Debug.Print \"Main\"\r\n"
    "' TWCustomCode end - please do not modify or remove this line 5\r\n"
    "    count = 1\r\n"
    "    Sell count\r\n"
    "End Sub\r\n"
    "\r\n"
    "' takes one away\r\n"
    "Private Function Sell(ByVal n As Long) As Long\r\n"
    "    Sell = n - 1\r\n"
    "End Function\r\n";

TEST_F(CustomCommand, InsertsInPlaceAndRemovesAgain) {
    const Outcome inserted = test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --procedure Main");
    EXPECT_EQ(inserted.status, 0);
    EXPECT_EQ(inserted.out, "Inserted code into 1 procedure in 1 file, 3 lines.\n");
    EXPECT_EQ(inserted.err, "");
    EXPECT_EQ(test.Read("Main.bas"), mainWithBlock);

    const Outcome again =
        test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --procedure Main --strict");
    EXPECT_EQ(again.status, 4);
    EXPECT_EQ(
        again.err,
        "DIR/Main.bas:6: warning: Sub Main in Main was skipped: it has block 5 already, at line 5 (line 6 "
        "of the file) [already-inserted]\n");

    const Outcome removed = test.Run("custom remove @Shop.vbp --id 5");
    EXPECT_EQ(removed.status, 0);
    EXPECT_EQ(removed.out, "Removed code from 1 procedure in 1 file, 3 lines.\n");
    EXPECT_EQ(removed.err, "");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(CustomCommand, ReadsTheCodeFromStandardInput) {
    test.input = "a = 1\r\nb = 2\n";
    EXPECT_EQ(test.Run("custom insert @Shop.vbp --id 5 --code - --procedure Sell --where last").status, 0);
    EXPECT_THAT(test.Read("Main.bas"),
                HasSubstr("    Sell = n - 1\r\n"
                          "' TWCustomCode begin - please do not modify or remove this line 5\r\n"
                          "a = 1\r\nb = 2\r\n"
                          "' TWCustomCode end - please do not modify or remove this line 5\r\n"
                          "End Function\r\n"));
}

TEST_F(CustomCommand, ALineAloneIsAPlace) {
    EXPECT_EQ(test.Run("custom insert @Shop.vbp --code @trace.txt --at Main:5 --line 2 --no-markers").status,
              0);
    EXPECT_THAT(test.Read("Main.bas"),
                HasSubstr("    count = 1\r\nDebug.Print \"Main\"\r\n    Sell count\r\n"));
}

TEST_F(CustomCommand, ChecksShowsAndWritesElsewhere) {
    const Outcome check =
        test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --component Main --check");
    EXPECT_EQ(check.status, 1);
    EXPECT_EQ(
        check.out,
        "DIR/Main.bas: 6 lines would change\nWould insert code into 2 procedures in 1 file, 6 lines.\n");
    const Outcome diff = test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --procedure Main --diff");
    EXPECT_EQ(diff.status, 0);
    EXPECT_THAT(diff.out, AllOf(HasSubstr("+Debug.Print \"Main\""), HasSubstr("@@")));
    EXPECT_EQ(test.Files(), before);

    EXPECT_EQ(
        test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --procedure Main --output @copy").status,
        0);
    EXPECT_EQ(test.Read("copy/Main.bas"), mainWithBlock);
    EXPECT_EQ(test.Read("Main.bas"), before["Main.bas"]);
    EXPECT_EQ(test.Run("custom remove @copy/Shop.vbp --id 5 --check").status, 1);
    EXPECT_EQ(test.Run("custom remove @Shop.vbp --id 5 --check").status, 0);
}

TEST_F(CustomCommand, ReportsAsJson) {
    const Outcome outcome = test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --json --check");
    const auto report = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(report["command"], "custom insert");
    EXPECT_EQ(report["proceduresEdited"], 3);
    EXPECT_EQ(report["components"][1]["skipped"][0]["reason"], "range-mismatch");
    const auto removed = nlohmann::json::parse(test.Run("custom remove @Shop.vbp --id 5 --json").out);
    EXPECT_EQ(removed["command"], "custom remove");
    EXPECT_EQ(removed["linesChanged"], 0);
}

TEST_F(CustomCommand, KeepsCodeAndMarkersInTheSettingsWhenAsked) {
    const Outcome none = test.Run("custom insert @Shop.vbp --id 5");
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.err,
                HasSubstr("say with --code what to insert; the user's setting LastCustomCode holds no "
                          "code"));

    EXPECT_EQ(test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --procedure Main --no-markers "
                       "--save-settings")
                  .status,
              0);
    EXPECT_EQ(test.settings->Get({u"Tarnwick", u"CodeAutomation", u"LastCustomCode"}, u"?"),
              u"Debug.Print \"{MemberName}\"");
    EXPECT_EQ(test.settings->Get({u"Tarnwick", u"CodeAutomation", u"UseDelimiters"}, u"?"), u"0");

    const Outcome remembered = test.Run("custom insert @Shop.vbp --id 5 --procedure Sell");
    EXPECT_EQ(remembered.status, 0);
    EXPECT_THAT(remembered.err, AllOf(HasSubstr("LastCustomCode"), HasSubstr("UseDelimiters is 0")));
    EXPECT_THAT(test.Read("Main.bas"), AllOf(HasSubstr("Long\r\nDebug.Print \"Sell\"\r\n    Sell ="),
                                             Not(HasSubstr("TWCustomCode"))));

    const Outcome marked = test.Run(
        "custom insert @Shop.vbp --id 5 --procedure Sell --no-markers=false --save-settings --quiet");
    EXPECT_EQ(marked.err, "");
    EXPECT_THAT(test.Read("Main.bas"), HasSubstr("TWCustomCode begin"));
    EXPECT_EQ(test.settings->Get({u"Tarnwick", u"CodeAutomation", u"UseDelimiters"}, u"?"), u"1");
}

TEST_F(CustomCommand, KeepsNothingInTheSettingsWhenNothingIsWritten) {
    for (const std::string how : {"--check", "--diff", "--list", "--component Nowhere"}) {
        (void)test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt --save-settings " + how);
        EXPECT_EQ(test.settings->Get({u"Tarnwick", u"CodeAutomation", u"LastCustomCode"}, u"?"), u"?") << how;
    }
}

TEST_F(CustomCommand, WithoutSaveSettingsKeepsNothing) {
    EXPECT_EQ(test.Run("custom insert @Shop.vbp --id 5 --code @trace.txt").status, 0);
    EXPECT_EQ(test.settings->Get({u"Tarnwick", u"CodeAutomation", u"LastCustomCode"}, u"?"), u"?");
}

TEST_F(CustomCommand, RememberedCodeIsCheckedUnderItsOwnName) {
    ASSERT_TRUE(test.settings->Save({u"Tarnwick", u"CodeAutomation", u"LastCustomCode"}, u"x\nEnd Sub"));
    const Outcome outcome = test.Run("custom insert @Shop.vbp --id 5");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("the user's setting LastCustomCode: line 2 closes a procedure"));
    EXPECT_EQ(test.Files(), before);
}

struct UsageCase {
    const char* line;
    const char* complaint;
};

TEST_F(CustomCommand, RefusesWhatMakesNoSense) {
    test.Write("empty.txt", "");
    test.Write("broken.txt", "x\nEnd Sub\n");
    const UsageCase cases[] = {
        {"custom insert @Shop.vbp --code @trace.txt", "say with --id which number"},
        {"custom insert @Shop.vbp --id x --code @trace.txt", "--id"},
        {"custom insert @Shop.vbp --id 32768 --code @trace.txt", "--id: give a number from -32768 to 32767"},
        {"custom remove @Shop.vbp --id -32769", "--id: give a number from -32768 to 32767"},
        {"custom remove @Shop.vbp", "--id"},
        {"custom insert @Shop.vbp --id 5 --code @none.txt", "none.txt"},
        {"custom insert @Shop.vbp --id 5 --code @empty.txt", "--code: there is no code to insert"},
        {"custom insert @Shop.vbp --id 5 --code @broken.txt", "--code: line 2 closes a procedure"},
        {"custom insert @Shop.vbp --id 5 --code @trace.txt --where middle",
         "--where: 'middle' is none of first, last and line"},
        {"custom insert @Shop.vbp --id 5 --code @trace.txt --where line",
         "--where line: say with --line which"},
        {"custom insert @Shop.vbp --id 5 --code @trace.txt --where last --line 2",
         "--line goes with --where line"},
        {"custom insert @Shop.vbp --id 5 --code @trace.txt --line 0",
         "--line: 1 is the first line of the body"},
        {"custom insert - --stdin-filename M.bas --id 5 --code -",
         "standard input holds the component already"},
    };
    const std::map<std::string, std::string> files = test.Files();
    for (const UsageCase& c : cases) {
        const Outcome outcome = test.Run(c.line);
        EXPECT_EQ(outcome.status, 2) << c.line;
        EXPECT_THAT(outcome.err, HasSubstr(c.complaint)) << c.line;
        EXPECT_EQ(outcome.out, "") << c.line;
    }
    EXPECT_EQ(test.Files(), files);
}

TEST_F(CustomCommand, HelpShowsExamplesAndReasons) {
    EXPECT_THAT(test.Run("custom --help").out, AllOf(HasSubstr("insert"), HasSubstr("remove")));
    EXPECT_THAT(test.Run("custom insert --help").out,
                AllOf(HasSubstr("custom insert Invoicing.vbp --id 5 --code trace.txt"),
                      HasSubstr("already-inserted"), HasSubstr("--where PLACE")));
    EXPECT_THAT(test.Run("custom remove --help").out,
                AllOf(HasSubstr("custom remove Invoicing.vbp --id 5"), HasSubstr("marker-prefix")));
}

}  // namespace
}  // namespace lintara::cli

// What an edit left of a component, held against what it was meant to leave: tables of right and of broken
// results.
#include "cli/invariants/edit_check.h"

#include "cli/invariants/code_lines.h"
#include "cli/output/line_changes.h"
#include "tests/cli/command_run.h"
#include "tests/support/wild_module.h"
#include "workspace/module.h"

#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view Marker = "' TWErrorHandler begin - please do not modify or remove this line\n";
constexpr std::string_view BlockBegin = "' TWCustomCode begin - please do not modify or remove this line 5\n";
constexpr std::string_view BlockEnd = "' TWCustomCode end - please do not modify or remove this line 5\n";

struct Case {
    std::string before;
    std::string after;
    EditRules rules;
    EditableProcedures editable = {0, 1};
    std::size_t headLines = 0;
};

std::vector<Violation> Check(const Case& c, const workspace::EncodingPtr& encoding) {
    const FileLines before = SplitFile(c.before, *encoding);
    const FileLines after = SplitFile(c.after, *encoding);
    return CheckEdit({before, after, c.headLines, *encoding, {.project = u"Shop", .component = u"Main"}},
                     c.rules, c.editable);
}

// "line: what does not hold" of each violation: the same whatever the encoding.
std::vector<std::string> Faults(const Case& c) {
    const auto told = [&](const workspace::EncodingPtr& encoding, const Case& given) {
        std::vector<std::string> faults;
        for (const Violation& violation : Check(given, encoding)) {
            faults.push_back(std::to_string(violation.line) + ": " + violation.message);
        }
        return faults;
    };
    const auto faults = told(workspace::DefaultEncoding(), c);
    Case wide = c;
    const auto utf16 = *workspace::FindEncoding("UTF-16LE");
    for (std::string* state : {&wide.before, &wide.after}) {
        Text text;
        workspace::DefaultEncoding()->Decode(*state, text);
        state->clear();
        EXPECT_TRUE(utf16->Encode(text, *state));
    }
    EXPECT_EQ(told(utf16, wide), faults);
    return faults;
}

const EditRules NumbersIn{.numbers = {.in = true}};
const EditRules NumbersOut{.numbers = {.out = true}};
const EditRules Renumbered{.numbers = {.in = true, .out = true}};
const EditRules HandlersIn{.handlers = {.in = true, .label = u"hErr", .code = u"    Report"}};
const EditRules HandlersOut{.handlers = {.out = true, .label = u"hErr", .code = u"    Report"}};
const EditRules Refreshed{.handlers = {.in = true, .out = true, .label = u"hErr", .code = u"    Report"}};
const EditRules BothIn{.numbers = {.in = true},
                       .handlers = {.in = true, .label = u"hErr", .code = u"    Report"}};
const EditRules CustomIn{.customCode = {.in = true, .number = u"5", .code = u"    Trace"}};
const EditRules CustomOut{.customCode = {.out = true, .number = u"5"}};

EditRules Exactly(EditRules rules) {
    rules.exact = true;
    return rules;
}

std::string Sub(std::string_view body) {
    return "Option Explicit\n\nSub A()\n" + std::string(body) + "End Sub\n\nSub B()\n    b\nEnd Sub\n' end\n";
}

std::string Handler(std::string_view code = "    Report\n") {
    return std::string(Marker) + "Exit Sub\nhErr:\n" + std::string(code);
}

TEST(EditCheck, WithoutAnyRuleNothingMayChange) {
    const std::string code = Sub("    a\n");
    EXPECT_THAT(Faults({code, code, {}}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a1\n"), {}}),
                ElementsAre("4: taking out what was inserted would not give it back"));
}

TEST(EditCheck, AcceptsWhatTheCommandsDo) {
    const std::string plain = Sub("    a\n    On Error GoTo 0\n");
    const std::string numbered = Sub("10000:     a\n10005:     On Error GoTo 0\n");
    const std::string handled = Sub("    On Error GoTo hErr\n    a\n    On Error GoTo hErr\n" + Handler());
    const std::string handledAndNumbered =
        Sub("10000:     On Error GoTo hErr\n10005:     a\n10010:     On Error GoTo hErr\n10015: " +
            std::string(Marker) + "10020: Exit Sub\nhErr:\n10030:     Report\n");
    const std::string removed = Sub("    On Error GoTo 0\n    a\n    On Error GoTo 0\n");
    const std::string custom =
        Sub(std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd) + "    a\n    On Error GoTo 0\n");
    for (const Case& c : {Case{plain, numbered, NumbersIn}, Case{numbered, plain, NumbersOut},
                          Case{numbered, numbered, Renumbered}, Case{plain, handled, HandlersIn},
                          Case{handled, removed, HandlersOut}, Case{plain, handledAndNumbered, BothIn},
                          Case{plain, custom, CustomIn}, Case{custom, plain, CustomOut}}) {
        EXPECT_THAT(Faults(c), IsEmpty()) << c.after;
    }
}

TEST(EditCheck, AHeaderThatChangesIsAFault) {
    EXPECT_THAT(Faults({Sub("    a\n"), Replaced(Sub("10000:     a\n"), "Sub A()", "Sub  A()"), NumbersIn}),
                ElementsAre("3: the header of the procedure would change"));
    EXPECT_THAT(Faults({Sub("    a\n"), Replaced(Sub("    a\n"), "Sub A()", "10000: Sub A()"), NumbersIn}),
                ElementsAre("3: the number of procedures would be 1 and not 2; they differ from here on"));
}

TEST(EditCheck, AClosingLineThatChangesIsAFault) {
    EXPECT_THAT(
        Faults({Sub("    a\n"), Replaced(Sub("    a\n"), "End Sub\n\n", "10005: End Sub\n\n"), NumbersIn}),
        ElementsAre("5: the closing line of the procedure would change"));
}

TEST(EditCheck, AProcedureThatGoesComesOrMovesIsAFault) {
    const std::string code = Sub("    a\n");
    EXPECT_THAT(Faults({code, Sub("    a\nEnd Sub\nSub C()\n"), CustomIn}),
                ElementsAre("7: the number of procedures would be 3 and not 2; they differ from here on"));
    EXPECT_THAT(Faults({code, Replaced(code, "Sub B()\n    b\nEnd Sub\n", ""), NumbersOut}),
                ElementsAre("7: the number of procedures would be 1 and not 2; they differ from here on"));
    const std::string swapped =
        Replaced(Replaced(Replaced(code, "Sub A", "Sub X"), "Sub B", "Sub A"), "Sub X", "Sub B");
    EXPECT_THAT(Faults({code, swapped, NumbersIn}),
                ElementsAre("3: the header of the procedure would change",
                            "7: the header of the procedure would change"));
}

TEST(EditCheck, LinesOutsideOfProceduresMustStay) {
    const std::string code = Sub("    a\n");
    EXPECT_THAT(Faults({code, Replaced(code, "Option Explicit", "10000: Option Explicit"), NumbersIn}),
                ElementsAre("1: it is in no procedure and would change"));
    EXPECT_THAT(Faults({code, Replaced(code, "' end", "       ' end"), NumbersIn}),
                ElementsAre("10: it is in no procedure and would change"));
    EXPECT_THAT(Faults({code, code + "more\n", HandlersIn}),
                ElementsAre("10: it is in no procedure and would change"));
}

TEST(EditCheck, ProceduresThatAreNotInTheScopeMustStay) {
    const std::string code = Sub("    a\n");
    const std::string after = Replaced(Sub("10000:     a\n"), "    b\n", "10000:     b\n");
    EXPECT_THAT(Faults({code, after, NumbersIn, {0, 1}}), IsEmpty());
    EXPECT_THAT(Faults({code, after, NumbersIn, {0}}),
                ElementsAre("8: it is in a procedure that was not to be edited, and would change"));
}

TEST(EditCheck, TheHeadOfAFormMustStay) {
    const std::string head = "VERSION 5.00\nBegin Form F\n   Caption = \"a\"\nEnd\n";
    const std::string code = Sub("    a\n");
    EXPECT_THAT(Faults({head + code, head + Sub("10000:     a\n"), NumbersIn, {0}, 4}), IsEmpty());
    EXPECT_THAT(Faults({head + code, Replaced(head, "\"a\"", "\"b\"") + code, NumbersIn, {0}, 4}),
                ElementsAre("1: the head of the file would change"));
}

TEST(EditCheck, AByteOrderMarkIsNoPartOfTheFirstHeader) {
    const auto utf8 = *workspace::FindEncoding("utf-8");
    const Case good{
        "\xEF\xBB\xBFSub A()\na\nEnd Sub\n", "\xEF\xBB\xBFSub A()\n10000: a\nEnd Sub\n", NumbersIn, {0}};
    EXPECT_THAT(Check(good, utf8), IsEmpty());
    Case lost = good;
    lost.after = lost.after.substr(3);
    EXPECT_THAT(Check(lost, utf8), testing::Not(IsEmpty()));
}

TEST(EditCheck, HiddenAttributeLinesMustStay) {
    const std::string hidden = "Attribute A.VB_Description = \"x\"\n";
    const std::string before = Sub(hidden + "    a\n");
    EXPECT_THAT(Faults({before, Sub(hidden + "    On Error GoTo hErr\n    a\n" + Handler()), HandlersIn}),
                IsEmpty());
    EXPECT_THAT(
        Faults({before, Sub("    On Error GoTo hErr\n" + hidden + "    a\n" + Handler()), HandlersIn}),
        testing::Not(IsEmpty()));
    EXPECT_THAT(Faults({before, Sub("       " + hidden + "10005:     a\n"), NumbersIn}),
                ElementsAre("4: its numbers would not be those that numbering gives"));
    EXPECT_THAT(Faults({before, Sub("    a\n"), CustomOut}), testing::Not(IsEmpty()));
}

TEST(EditCheck, NumbersThatDoNotComeOffAgainAreAFault) {
    const std::string code = Sub("    a\n    b _\n        c\n");
    EXPECT_THAT(Faults({code, Sub("10000:     a\n10005:     b _\n               c\n"), NumbersIn}),
                IsEmpty());
    struct Broken {
        std::string_view body;
        std::string_view fault;
    };
    for (const Broken& broken : {
             Broken{"100000:     a\n    b _\n        c\n", "4"},               // six digits
             Broken{"10000:    a\n10005:     b _\n               c\n", "4"},   // a blank lost
             Broken{"10000:     A\n10005:     b _\n               c\n", "4"},  // letter case
             Broken{"10000:     a\n10005:     b _\n      c\n", "6"},           // shifted to the left
             Broken{"10000:     a\n10005:     b _\n\n", "6"},                  // emptied
             Broken{"    a\n    b _\n        x\n", "6"},                       // another text
             Broken{"10000:     a\n10005:     b _\n               c\n10015: d\n", "4"},  // a line more
             Broken{"10000:     a\n10005:         c\n", "4"},                            // a line less
             Broken{"           a\n           b _\n               c\n", "4"},  // moved without any number
         }) {
        EXPECT_THAT(Faults({code, Sub(broken.body), NumbersIn}),
                    ElementsAre(HasSubstr(std::string(broken.fault) + ": ")))
            << broken.body;
    }
}

constexpr const char* OtherNumbers = "its numbers would not be those that numbering gives";

struct Numbered {
    std::string before;
    std::string right;
    std::vector<std::string> wrong;
};

TEST(EditCheck, NumbersAreThoseThatTheRuleGives) {
    for (const Numbered& body : {
             Numbered{"    a\n    b\n",
                      "10000:     a\n10005:     b\n",
                      {"10000:     a\n10000:     b\n", "10005:     a\n10000:     b\n",
                       "10000:     a\n10010:     b\n", "10000:     a\n    b\n",
                       "10000:     a\n           b\n", "10000: 10000:     a\n10005:     b\n"}},
             Numbered{"    a _\n        , b\n    c\n",
                      "10000:     a _\n               , b\n10010:     c\n",
                      {"10000:     a _\n10005:         , b\n10010:     c\n",
                       "10000:     a _\n        , b\n10010:     c\n",
                       "10000:     a _\n               , b\n10005:     c\n"}},
             Numbered{"\nx: a\n    b\n",
                      "\nx: a\n10010:     b\n",
                      {"10000: \nx: a\n10010:     b\n", "\n10005: x: a\n10010:     b\n",
                       "       \nx: a\n10010:     b\n", "\nx: a\n10000:     b\n"}},
             Numbered{"    Select Case a\n    Case 1\n    Case 2\n",
                      "10000:     Select Case a\n           Case 1\n10010:     Case 2\n",
                      {"10000:     Select Case a\n10005:     Case 1\n10010:     Case 2\n"}},
             Numbered{"    Select Case a\n    ' why\n    Case 1\n",
                      "10000:     Select Case a\n           ' why\n           Case 1\n",
                      {"10000:     Select Case a\n           ' why\n10010:     Case 1\n"}},
             Numbered{"    a\n#If b Then\n",
                      "10000:     a\n       #If b Then\n",
                      {"10000:     a\n10005: #If b Then\n"}},
         }) {
        EXPECT_THAT(Faults({Sub(body.before), Sub(body.right), NumbersIn}), IsEmpty()) << body.right;
        for (const std::string& wrong : body.wrong) {
            EXPECT_THAT(Faults({Sub(body.before), Sub(wrong), NumbersIn}), testing::SizeIs(1)) << wrong;
        }
    }
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("10000:     a\n10000:     b\n"), NumbersIn}),
                ElementsAre("5: " + std::string(OtherNumbers)));
}

TEST(EditCheck, NumbersBeginAndStepAsTheyAreAskedTo) {
    const EditRules rules{.numbers = {.in = true, .base = 20000, .step = 3}};
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("20000:     a\n20003:     b\n"), rules}), IsEmpty());
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("10000:     a\n10005:     b\n"), rules}),
                testing::SizeIs(1));
    const EditRules far{.numbers = {.in = true, .step = 30000}};
    EXPECT_THAT(Faults({Sub("    a\n    b\n    c\n"), Sub("10000:     a\n40000:     b\n    c\n"), far}),
                IsEmpty());
    EXPECT_THAT(
        Faults({Sub("    a\n    b\n    c\n"), Sub("10000:     a\n40000:     b\n70000:     c\n"), far}),
        testing::SizeIs(1));
}

TEST(EditCheck, NumbersByModuleTellTheLineInTheModule) {
    const EditRules rules{.numbers = {.in = true, .byModule = true}};
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("10004:     a\n10005:     b\n"), rules}), IsEmpty());
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("10005:     a\n10006:     b\n"), rules}),
                testing::SizeIs(1));
    const std::string hidden = "Attribute A.VB_Description = \"x\"\n";
    EXPECT_THAT(Faults({Sub(hidden + "    a\n"), Sub(hidden + "10004:     a\n"), rules}), IsEmpty());
    const std::string property =
        "Property Get P()\n    P = 1\nEnd Property\nProperty Let P(v)\n    a\nEnd Property\n";
    const auto numbered = [&](std::string_view get, std::string_view let) {
        return Replaced(Replaced(property, "    P = 1", get), "    a", let);
    };
    EXPECT_THAT(Faults({property, numbered("10002:     P = 1", "10002:     a"), rules}), IsEmpty());
    EXPECT_THAT(Faults({property, numbered("10002:     P = 1", "10003:     a"), rules}), testing::SizeIs(1));
}

TEST(EditCheck, RenumberedLinesAreNotMovedEither) {
    const std::string code = Sub("10000:     a\n10005:     b\n");
    EXPECT_THAT(Faults({code, Sub("10000:     a\n10005:     b\n    \n"), Renumbered}), testing::SizeIs(1));
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("           a\n           b\n"), Renumbered}),
                testing::SizeIs(1));
    EXPECT_THAT(Faults({Sub("           a\n           b\n"), Sub("    a\n    b\n"), Renumbered}),
                testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n"), Renumbered}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("10000:     b\n10005:     a\n"), Renumbered}), testing::SizeIs(1));
    EXPECT_THAT(
        Faults({Sub("           a\n"), Sub("    On Error GoTo hErr\n    a\n" + Handler()), Refreshed}),
        testing::SizeIs(1));
}

TEST(EditCheck, LinesKeepTheirOrder) {
    const std::string swapped = "    b\n    a\n";
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub("10000:     b\n10005:     a\n"), NumbersIn}),
                testing::SizeIs(1));
    EXPECT_THAT(
        Faults({Sub("    a\n    b\n"), Sub("    On Error GoTo hErr\n" + swapped + Handler()), HandlersIn}),
        testing::SizeIs(1));
    EXPECT_THAT(Faults({Sub("    a\n    b\n" + Handler()), Sub(swapped), HandlersOut}), testing::SizeIs(1));
    const std::string block = std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd);
    EXPECT_THAT(Faults({Sub("    a\n    b\n"), Sub(block + swapped), CustomIn}), testing::SizeIs(1));
    EXPECT_THAT(Faults({Sub("    a\n    b\n" + block), Sub(swapped), CustomOut}), testing::SizeIs(1));
}

TEST(EditCheck, AllNumbersOfABodyGoOrNone) {
    const std::string code = Sub("10000:     a\n10005:     b\n");
    EXPECT_THAT(Faults({code, Sub("    a\n10005:     b\n"), NumbersOut}),
                ElementsAre("4: only some of its numbers would go"));
    const std::string continued = Sub("10000:     a _\n10005: b\n");
    EXPECT_THAT(Faults({continued, Sub("    a _\n10005: b\n"), NumbersOut}), IsEmpty());
    EXPECT_THAT(Faults({continued, Sub("    a _\nb\n"), NumbersOut}), testing::SizeIs(1));
    EXPECT_THAT(Faults({Sub("10000:     a\n          \n"), Sub("    a\n   \n"), NumbersOut}),
                testing::SizeIs(1));
}

TEST(EditCheck, OnlyNumbersMayGoWithNumbers) {
    const std::string code = Sub("10000:     a\n10005:     b _\n               c\n");
    EXPECT_THAT(Faults({code, Sub("    a\n    b _\n        c\n"), NumbersOut}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a\n    b _\n    c\n"), NumbersOut}),
                ElementsAre("6: more of it would go than was to be removed"));
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n"), NumbersOut}),
                ElementsAre("4: lines of the procedure would go"));
    const std::string indented = Sub("           a\n");
    EXPECT_THAT(Faults({indented, Sub("    a\n"), NumbersOut}),
                ElementsAre("4: its lines would be moved, though it has no numbers"));
}

TEST(EditCheck, AHandlerThatDoesNotComeOutAgainIsAFault) {
    const std::string code = Sub("    a\n    On Error GoTo 0\n");
    const std::string lead = "    On Error GoTo hErr\n";
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n" + lead + Handler()), HandlersIn}), IsEmpty());
    const std::string broken[] = {
        lead + "    a\n    On Error GoTo other\n" + Handler(),                  // leads elsewhere
        lead + "    a\n" + lead,                                                // no block
        lead + "    a\n" + Handler(),                                           // a line lost
        lead + lead + "    a\n" + lead + Handler(),                             // led twice
        "    Beep\n    a\n" + lead + Handler(),                                 // led by something else
        lead + "    a\n" + lead + std::string(Marker) + "hErr:\n    Report\n",  // no Exit
        lead + "    a\n" + lead + std::string(Marker) + "Exit Sub\nother:\n    Report\n",  // another label
        lead + "    a2\n" + lead + Handler(),                                              // a line changed
        lead + "    a\n" + Handler() + lead,                                               // in the middle
    };
    for (const std::string& body : broken) {
        EXPECT_THAT(Faults({code, Sub(body), HandlersIn}), testing::SizeIs(1)) << body;
    }
}

TEST(EditCheck, AHandlerIsWhatTheTemplateStandsForToTheLastLine) {
    EditRules rules = BothIn;
    rules.handlers.code =
        u"    Report \"{ProjectName}.{ComponentName}.{MemberName}\", \"{UserName}\"\r\n    exit {MemberType}";
    const auto handled = [](std::string_view report, std::string_view exit) {
        return Sub("10000:     On Error GoTo hErr\n10005:     a\n10010: " + std::string(Marker) +
                   "10015: Exit Sub\nhErr:\n" + std::string(report) + std::string(exit));
    };
    const std::string report = "10025:     Report \"Shop.Main.A\", \"me\"\n";
    EXPECT_THAT(Faults({Sub("    a\n"), handled(report, "10030:     Exit Sub\n"), rules}), IsEmpty());
    for (const std::string& wrong :
         {handled(report, "10030:     Exit Function\n"), handled(report, ""),
          handled(report, "10030:     EXIT Sub\n"), handled(report, "10030:     Exit Sub\n10035: Stop\n"),
          handled("10025:     Beep\n", "10030:     Exit Sub\n"),
          handled(Replaced(report, "Main", "Other"), "10030:     Exit Sub\n"),
          handled(report, "    Exit Sub\n"), handled(Replaced(report, "me\"", "me"), "10030:     Exit Sub\n"),
          Replaced(handled(report, "10030:     Exit Sub\n"), "10015: Exit Sub", "10015: Exit Function"),
          Replaced(handled(report, "10030:     Exit Sub\n"), "GoTo hErr", "GoTo HERR")}) {
        EXPECT_THAT(Faults({Sub("    a\n"), wrong, rules}), testing::SizeIs(1)) << wrong;
    }
}

TEST(EditCheck, TheNameOfAControlMayBeKnownOrNot) {
    EditRules rules = HandlersIn;
    rules.handlers.code = u"    Report \"{ControlName}\"";
    const std::string before = "Sub cmdSave_Click()\n    a\nEnd Sub\n";
    const auto after = [](std::string_view name) {
        return "Sub cmdSave_Click()\n    On Error GoTo hErr\n    a\n" +
               Handler("    Report \"" + std::string(name) + "\"\n") + "End Sub\n";
    };
    EXPECT_THAT(Faults({before, after("cmdSave"), rules, {0}}), IsEmpty());
    EXPECT_THAT(Faults({before, after("{ControlName}"), rules, {0}}), IsEmpty());
    EXPECT_THAT(Faults({before, after("cmdOpen"), rules, {0}}), testing::SizeIs(1));
}

TEST(EditCheck, AHandlerThatNothingLeadsToIsAFault) {
    EXPECT_THAT(Faults({Sub("    a\n"), Sub("    a\n" + Handler()), HandlersIn}),
                ElementsAre("4: no statement of it would lead to its handler"));
}

TEST(EditCheck, AProcedureThatHasAHandlerKeepsIt) {
    const std::string code = Sub("    a\n" + Handler("    Old\n"));
    EXPECT_THAT(Faults({code, Sub("    a\n" + Handler("    New\n")), HandlersIn}), testing::SizeIs(1));
    const std::string lead = "    On Error GoTo hErr\n";
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n" + Handler()), Refreshed}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n" + Handler("    New\n")), Refreshed}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    a\n"), Refreshed}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub(lead + "    b\n" + Handler()), Refreshed}), testing::SizeIs(1));
}

TEST(EditCheck, OnlyTheHandlerMayGoWithIt) {
    const std::string code = Sub("    On Error GoTo hErr\n    a\n" + Handler());
    EXPECT_THAT(Faults({code, Sub("    On Error GoTo 0\n    a\n"), HandlersOut}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a\n"), HandlersOut}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    On Error GoTo 0\n    b\n"), HandlersOut}),
                ElementsAre("5: more of it would go than was to be removed"));
    EXPECT_THAT(Faults({code, Sub("    On Error GoTo 0\n    a\n    Report\n"), HandlersOut}),
                testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    On Error GoTo\n    a\n"), HandlersOut}), testing::SizeIs(1));
}

TEST(EditCheck, CustomCodeStandsWhereItWasToAndNothingElseChanges) {
    const std::string block = std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd);
    const std::string code = Sub("    a\n    b\n");
    EXPECT_THAT(Faults({code, Sub(block + "    a\n    b\n"), CustomIn}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a\n" + block + "    b\n"), CustomIn}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub(std::string(BlockBegin) + "    Trace\n    a\n    b\n"), CustomIn}),
                ElementsAre("4: other code would come than the template stands for"));
    EXPECT_THAT(Faults({code, Sub(block + "    b\n"), CustomIn}), testing::SizeIs(1));
    EditRules second = CustomIn;
    second.customCode.place = transform::CodePlace::AtLine;
    second.customCode.line = 2;
    EXPECT_THAT(Faults({code, Sub("    a\n" + block + "    b\n"), second}), IsEmpty());
    EditRules last = CustomIn;
    last.customCode.place = transform::CodePlace::BeforeLastLine;
    last.customCode.markers = false;
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n    Trace\n"), last}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n    Trace 2\n"), last}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n    Trace\n    Trace\n"), last}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub(Replaced(block, "Trace", "Beep") + "    a\n    b\n"), CustomIn}),
                testing::SizeIs(1));
    EXPECT_THAT(
        Faults({code, Sub(Replaced(block, "end - please", "End - please") + "    a\n    b\n"), CustomIn}),
        testing::SizeIs(1));
}

TEST(EditCheck, OnlyTheBlockMayGoWithIt) {
    const std::string block = std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd);
    const std::string code = Sub("    a\n" + block + "    b\n");
    EXPECT_THAT(Faults({code, Sub("    a\n    b\n"), CustomOut}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub("    a\n"), CustomOut}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    b\n"), CustomOut}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub("    a\n" + std::string(BlockBegin) + "    b\n"), CustomOut}),
                testing::SizeIs(1));
}

TEST(EditCheck, ABlockEndsAtItsFirstEndMarker) {
    const std::string block = std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd);
    const std::string two = Sub(block + "    a\n" + block + "    b\n");
    EXPECT_THAT(Faults({two, Sub("    a\n" + block + "    b\n"), CustomOut}), IsEmpty());
    EXPECT_THAT(Faults({two, Sub("    b\n"), CustomOut}), testing::SizeIs(1));
    EXPECT_THAT(Faults({two, Sub(block + "    a\n    b\n"), CustomOut}), testing::SizeIs(1));
}

TEST(EditCheck, AReplacementChangesWhatHoldsTheTextAndAsItShould) {
    const EditRules rules{.replace = ReplaceRules{.sought = u"a", .replacement = u"xy", .from = 4, .to = 5}};
    const std::string code = "Sub S()\n    a\n    A = b\n    aa\n    bab\n    a\nEnd Sub\n";
    EXPECT_THAT(Faults({code, "Sub S()\n    a\n    A = b\n    xyxy\n    bxyb\n    a\nEnd Sub\n", rules}),
                IsEmpty());
    EXPECT_THAT(Faults({code, "Sub S()\n    a\n    A = b\n    xya\n    bxyb\n    a\nEnd Sub\n", rules}),
                ElementsAre("4: it would not be the line with the text replaced"));
    EXPECT_THAT(Faults({code, "Sub S()\n    xy\n    A = b\n    xyxy\n    bxyb\n    a\nEnd Sub\n", rules}),
                ElementsAre("2: it would change, though it does not hold the text there"));
    EXPECT_THAT(Faults({code, "Sub S()\n    a\n    A = b\n    xyxy\n    bxyb\n    a\n", rules}),
                ElementsAre("7: it would change, though it does not hold the text there"));
    EXPECT_THAT(Faults({code, "Sub S()\n    a\n    A = b\n    xyxy\n    bxyb\n    a\nEnd Sub\nx\n", rules}),
                ElementsAre("7: lines would be added behind it"));
}

TEST(EditCheck, AReplacementChangesNoLetterCaseAndNoEndingBesides) {
    const EditRules rules{.replace = ReplaceRules{.sought = u"a", .replacement = u"xor"}};
    const std::string code = "Sub S()\r\n    b = a End\r\nEnd Sub\r\n";
    const std::string right = "Sub S()\r\n    b = Xor End\r\nEnd Sub\r\n";
    EXPECT_THAT(Faults({code, right, rules}), IsEmpty());
    EXPECT_THAT(Faults({code, Replaced(right, "Xor", "xor"), rules}), IsEmpty());
    for (const std::string& wrong :
         {Replaced(right, "b =", "B ="), Replaced(right, " End", " END"),
          Replaced(right, "End\r\nEnd", "End\nEnd"), Replaced(right, "Xor", "Xr")}) {
        EXPECT_THAT(Faults({code, wrong, rules}),
                    ElementsAre("2: it would not be the line with the text replaced"))
            << wrong;
    }
    // A keyword that came to be by one replacement and went with the next one has left its letter case.
    const EditRules twice{.replace = ReplaceRules{.sought = u"x", .replacement = u"e"}};
    EXPECT_THAT(Faults({"nxxt = nut\n", "Neet = nut\n", twice}), IsEmpty());
    EXPECT_THAT(Faults({"nxxt = nut\n", "neet = Nut\n", twice}), testing::SizeIs(1));
}

TEST(EditCheck, AReplacementOfSeveralLinesKeepsHiddenLinesBehindTheFirst) {
    const EditRules rules{
        .replace = ReplaceRules{.sought = u"a", .replacement = u"x\r\ny", .from = 1, .wholeWord = true}};
    const std::string hidden = "Attribute S.VB_Description = \"a\"\n";
    EXPECT_THAT(Faults({"    a = ab\n" + hidden, "    x\n" + hidden + "y = ab\n", rules}), IsEmpty());
    EXPECT_THAT(Faults({"    a = ab\n" + hidden, "    x\ny = ab\n" + hidden, rules}), testing::SizeIs(1));
}

TEST(EditCheck, EvenAnExactEditLosesNoLine) {
    const std::string code = Sub("    a\n    On Error Goto 0\n");
    const std::string anywhere = Replaced(code, "Option Explicit\n", "Option Explicit\n" + Handler());
    EXPECT_THAT(Faults({code, anywhere, Exactly(HandlersIn)}), IsEmpty());
    EXPECT_THAT(Faults({code, Replaced(anywhere, "    a\n", ""), Exactly(HandlersIn)}),
                ElementsAre("4: it would be lost"));
    EXPECT_THAT(Faults({anywhere, code, Exactly(HandlersOut)}), IsEmpty());
    EXPECT_THAT(Faults({anywhere, Replaced(code, "    a\n", "    new\n"), Exactly(HandlersOut)}),
                testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Replaced(code, "    b\n", "10000:     b\n"), Exactly(NumbersIn)}), IsEmpty());
    EXPECT_THAT(Faults({code, Replaced(code, "    b\n", "10000:     c\n"), Exactly(NumbersIn)}),
                ElementsAre("9: more than its beginning would change"));
    EXPECT_THAT(Faults({code, Replaced(code, "    b\n", ""), Exactly(NumbersIn)}), testing::SizeIs(1));
}

TEST(EditCheck, AnExactEditLetsNothingComeThatItDoesNotWrite) {
    const std::string code = Sub("    a\n");
    const std::string lead = "    On Error GoTo hErr\n";
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n" + Handler()), Exactly(HandlersIn)}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n    new\n" + Handler()), Exactly(HandlersIn)}),
                testing::SizeIs(1));
    const std::string block = std::string(BlockBegin) + "    Trace\n" + std::string(BlockEnd);
    EXPECT_THAT(Faults({code, Sub(block + "    a\n"), Exactly(CustomIn)}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub(block + "    new\n    a\n"), Exactly(CustomIn)}), testing::SizeIs(1));
}

TEST(EditCheck, AnExactRefreshKeepsTheOrderAndMakesUpNoLine) {
    const std::string lead = "    On Error GoTo hErr\n";
    const std::string code = Sub(lead + "    a\n    c\n" + Handler("    Old\n"));
    const EditRules rules = Exactly(Refreshed);
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n    c\n" + Handler()), rules}), IsEmpty());
    EXPECT_THAT(Faults({code, Sub(lead + "    c\n    a\n" + Handler()), rules}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n    c2\n" + Handler()), rules}), testing::SizeIs(1));
    EXPECT_THAT(Faults({code, Sub(lead + "    a\n    c\n" + Handler("    Other\n")), rules}),
                testing::SizeIs(1));
}

TEST(EditCheck, WhatStandsAboveAnExactEditStays) {
    const std::string code = "Option Explicit\nSub One()\n    a\nEnd Sub\nSub Two()\n    a\nEnd Sub\n";
    const auto fault = [](int line) {
        return std::to_string(line) + ": it would change, though it stands above what was to be edited";
    };
    for (const EditRules& rules :
         {Exactly(HandlersIn), Exactly(Refreshed), Exactly(HandlersOut), Exactly(NumbersIn),
          Exactly(NumbersOut), Exactly(CustomIn), Exactly(CustomOut)}) {
        EXPECT_THAT(Faults({code, Replaced(code, "Option Explicit", ""), rules}), ElementsAre(fault(1)));
        const std::string inOne = Replaced(code, "One()\n    a\n", "One()\n10000:     a\n");
        EXPECT_THAT(Faults({code, inOne, rules, {1}}), ElementsAre(fault(3)));
    }
}

TEST(EditCheck, AnExactReplacementKeepsWhatItHasNoBusinessWith) {
    const EditRules rules{.replace = ReplaceRules{.sought = u"a", .replacement = u"xy", .from = 2, .to = 3},
                          .exact = true};
    const std::string code = "a1\na2\nb3\na4\n";
    EXPECT_THAT(Faults({code, "a1\nxyxyxy2\nb3\na4\n", rules}), IsEmpty());
    EXPECT_THAT(Faults({code, "xy1\nxy2\nb3\na4\n", rules}),
                ElementsAre("1: it would change, though it stands above the lines to be changed"));
    EXPECT_THAT(Faults({code, "a1\nxy2\nb3\nxy4\n", rules}),
                ElementsAre("4: it would change, though it stands below the lines to be changed"));
    EXPECT_THAT(Faults({code, "a1\nxy2\nc3\na4\n", rules}),
                ElementsAre("3: it would change, though it does not hold the text"));
    EXPECT_THAT(Faults({code, "a1\nxy2\nnew\nb3\na4\n", rules}),
                ElementsAre("2: lines would be added or go, though none was to"));
    EditRules lines = rules;
    lines.replace->replacement = u"x\r\ny";
    EXPECT_THAT(Faults({code, "a1\nx\ny2\nb3\na4\n", lines}), IsEmpty());
}

// The first line of a closing statement of several lines is one of the body.
TEST(EditCheck, AStatementOfSeveralLinesThatClosesMayLoseItsNumber) {
    EXPECT_THAT(Faults({Sub("10000:     a\n10005:  _\n"), Sub("    a\n _\n"), NumbersOut}), IsEmpty());
}

TEST(EditCheck, LineEndingsMustStay) {
    const std::string code = Replaced(Sub("    a\n    b\n"), "\n", "\r\n");
    const std::string after = Replaced(Sub("10000:     a\n10005:     b\n"), "\n", "\r\n");
    EXPECT_THAT(Faults({code, after, NumbersIn}), IsEmpty());
    EXPECT_THAT(Faults({code, Replaced(after, "a\r\n", "a\n"), NumbersIn}),
                ElementsAre("4: taking out what was inserted would not give it back"));
}

// A lone line feed behind a lone return would be read as the second half of that.
TEST(EditCheck, ALineThatBecomesEmptyBehindALoneReturnMayGetBoth) {
    EXPECT_THAT(
        Faults({Sub("    x = 1\r10005: \n    y = 2\r\n"), Sub("    x = 1\r\r\n    y = 2\r\n"), NumbersOut}),
        IsEmpty());
    EXPECT_THAT(Faults({Sub("    x = 1\r10005: z\n"), Sub("    x = 1\rz\r\n"), NumbersOut}),
                testing::SizeIs(1));
}

TEST(CodeLines, FindsTheProceduresThatTheWorkspaceFinds) {
    std::size_t procedures = 0;
    for (std::uint64_t seed = 1; seed <= 500; ++seed) {
        const std::string bytes = support::GenerateWildModule({.lines = 150, .seed = seed});
        const workspace::Module module(bytes, 0, workspace::DefaultEncoding());
        const FileLines file = SplitFile(bytes, module.encoding());
        const auto headLines = static_cast<std::size_t>(module.OriginalFileLine(Line(1))) - 1;
        const CodeLines lines(file, headLines, module.encoding());
        std::vector<std::int64_t> found;
        for (const ProcedureLines& procedure : lines.procedures()) {
            found.push_back(static_cast<std::int64_t>(headLines + procedure.header) + 1);
        }
        std::vector<std::int64_t> known;
        for (const workspace::ProcedureInfo& procedure : module.Procedures()) {
            known.push_back(module.OriginalFileLine(procedure.header));
        }
        ASSERT_EQ(found, known) << "seed " << seed;
        procedures += found.size();
    }
    EXPECT_GT(procedures, 2000U);
}

}  // namespace
}  // namespace lintara::cli

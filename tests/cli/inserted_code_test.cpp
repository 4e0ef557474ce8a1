// Code that cannot stand in procedures, and code that cannot stand in one that is there.
#include "cli/guards/inserted_code.h"

#include "cli/edits/custom_code_insertion.h"
#include "tests/cli/command_run.h"
#include "tests/cli/handler_edits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct CodeCase {
    const char* name;
    const char16_t* code;
    const char* objection;
};

void PrintTo(const CodeCase& c, std::ostream* out) {
    *out << c.name;
}

class ObjectionTo : public testing::TestWithParam<CodeCase> {};

TEST_P(ObjectionTo, CodeNamesTheLine) {
    EXPECT_EQ(ObjectionToCode(GetParam().code, u"hErr").value_or(""), GetParam().objection);
}

const CodeCase codeCases[] = {
    {"OpenDirective", u"    x\r\n#If A Then\r\n    y", "line 2 is #If without #End If"},
    {"StrayDirective", u"    x\r\n#End If", "line 2 is #End If without #If"},
    {"Directives", u"#If A Then\r\n    x\r\n#Else\r\n    y\r\n#End If", ""},
    {"LabelInFront", u"    x\r\nherr: y", "line 2 has the label herr, which stands ahead of it already"},
    {"LabelTwice", u"a:\r\nb:\r\nA: x", "line 3 has the label A, which stands ahead of it already"},
    {"Labels", u"a:\r\nb:\r\n    Resume hErr", ""},
    {"Attribute", u"    x\r\nAttribute Go.VB_Description = \"d\"",
     "line 2 is an attribute, which the IDE would hide"},
    {"NameLikeAttribute", u"    Attributes = 1\r\n    s = \"Attribute x.VB_y\"", ""},
    {"Declare", u"    x: Declare Sub Beep Lib \"k\" ()",
     "line 1 can stand only among the declarations of a module"},
    {"Private", u"Private x As Long", "line 1 can stand only among the declarations of a module"},
    {"Option", u"option explicit", "line 1 can stand only among the declarations of a module"},
    {"Type", u"Type Pair", "line 1 can stand only among the declarations of a module"},
    {"NamesLikeDeclarations", u"    Options x\r\n    o.Type = 1\r\n    ' Private x\r\n    Const c = 1", ""},
};

INSTANTIATE_TEST_SUITE_P(Cases, ObjectionTo, testing::ValuesIn(codeCases),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(InsertedCode, IsAUsageErrorThatNamesTheOption) {
    CommandTest test;
    test.Write("a.bas", "Sub Go()\r\n    x\r\nEnd Sub\r\n");
    test.Write("t.txt", "    x\nFailed: y\n");
    test.Write("c.txt", "#If A Then\n");
    const Outcome handler = test.Run("insert @a.bas --error-handlers --label Failed --template @t.txt");
    EXPECT_EQ(handler.status, 2);
    EXPECT_THAT(handler.err, HasSubstr("--template: line 2 has the label Failed"));
    const Outcome custom = test.Run("custom insert @a.bas --id 5 --code @c.txt");
    EXPECT_EQ(custom.status, 2);
    EXPECT_THAT(custom.err, HasSubstr("--code: line 1 is #If without #End If"));
}

TEST(InsertedCode, MakesNoAttributeByReplacement) {
    CommandTest test;
    test.Write("a.bas", "Sub Go()\r\nAttribut Go.VB_Description = \"d\"\r\nEnd Sub\r\n");
    const auto before = test.Files();
    const Outcome outcome = test.Run("replace @a.bas --component a --find Attribut --replace Attribute");
    EXPECT_NE(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("line 2 would be an attribute"));
    EXPECT_EQ(test.Files(), before);
}

ComponentReport InsertCode(EditedModule& module, std::int16_t id, Text code) {
    return module.Edit(std::make_unique<CustomCodeInsertion>(CustomCodeOptions{
                           .code = std::move(code), .where = transform::CodePlace::BeforeLastLine, .id = id}),
                       false, false);
}

TEST(CustomCodeInsertion, SkipsAProcedureThatHasALabelOfTheCode) {
    EditedModule module("Sub A()\nagain:\n    x\nEnd Sub\nSub B()\n    y\nEnd Sub\n");
    const Text code = u"    x\r\nAgain: y";
    const ComponentReport report = InsertCode(module, 5, code);
    EXPECT_THAT(SkippedIn(report), ElementsAre("label-exists A"));
    EXPECT_THAT(EditedIn(report), ElementsAre("B"));
    EXPECT_THAT(SkippedIn(InsertCode(module, 6, code)), ElementsAre("label-exists A", "label-exists B"));
}

TEST(CustomCodeInsertion, RemarksOnceOnCodeInsideHandlers) {
    EditedModule module("Sub A()\n    x\n" + UsualBlock("Sub", "A") + "End Sub\nSub B()\n    y\n" +
                        UsualBlock("Sub", "B") + "End Sub\nSub C()\n    z\nEnd Sub\n");
    const ComponentReport report = InsertCode(module, 5, u"    Trace");
    EXPECT_THAT(EditedIn(report), ElementsAre("A", "B", "C"));
    EXPECT_THAT(RemarksIn(report), ElementsAre("inside-handler 3"));
    ASSERT_FALSE(report.remarks.empty());
    EXPECT_THAT(report.remarks[0].message, HasSubstr("the same in 1 more"));
}

}  // namespace
}  // namespace lintara::cli

// Input made to take long or much: every test here ends at once, or the work grows faster than its input.
#include "tests/support/module_text.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <malloc.h>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using enum hostmodel::MemberKind;
using hostmodel::FindOptions;

constexpr std::size_t Million = 1'000'000;

bool Found(const Module& module, TextView target, FindOptions options = {}) {
    Position start{Line{1}, Column{1}};
    Position end{Line{0}, Column{0}};
    return module.Find(target, start, end, options);
}

std::unique_ptr<Module> OneLine(TextView text) {
    auto module = Module::FromText(u"");
    EXPECT_TRUE(module->InsertLines(Line{1}, text));
    return module;
}

TEST(HostileInput, LongTargetsThatAlmostMatchEverywhere) {
    const auto module = OneLine(Text(Million, u'a'));
    const Text almost = Text(100'000, u'a') + u'b';
    EXPECT_FALSE(Found(*module, almost));
    EXPECT_FALSE(Found(*module, almost, {.wholeWord = true}));
    // It matches at every place, and at none as a whole word.
    EXPECT_FALSE(Found(*module, Text(100'000, u'a'), {.wholeWord = true}));
    EXPECT_TRUE(Found(*module, Text(100'000, u'a')));
    EXPECT_TRUE(Found(*module, Text(Million, u'A'), {.wholeWord = true}));
    EXPECT_FALSE(Found(*module, Text(Million + 1, u'a')));
    EXPECT_FALSE(Found(*module, Text(100'000, u'a') + u'b', {.patternSearch = true}));
}

// Far down the module, where an index of words is asked first.
TEST(HostileInput, LongWordsThatAlmostStandThere) {
    const auto module = OneLine(Text(Million / 5, u'a'));
    for (int i = 0; i < 20; ++i) {
        ASSERT_TRUE(module->InsertLines(Line{1}, u""));
    }
    EXPECT_FALSE(Found(*module, Text(100'000, u'a') + u'b', {.wholeWord = true}));
    EXPECT_FALSE(Found(*module, Text(100'000, u'a'), {.wholeWord = true}));
    EXPECT_TRUE(Found(*module, Text(Million / 5, u'A'), {.wholeWord = true}));
}

TEST(HostileInput, PatternsThatAlmostMatchEverywhere) {
    const auto module = OneLine(Text(Million, u'a'));
    EXPECT_FALSE(Found(*module, u"*a*a*a*a*b", {.patternSearch = true}));
    EXPECT_TRUE(Found(*module, u"*a*a*a*a*", {.patternSearch = true}));
    const auto shorter = OneLine(Text(Million / 5, u'a'));
    for (const TextView pattern : {u"a*a*a*a*b", u"*b", u"?*?*?*b", u"*a?*a?*b"}) {
        EXPECT_FALSE(Found(*shorter, pattern, {.patternSearch = true})) << ToUtf8(pattern);
        EXPECT_FALSE(Found(*shorter, pattern, {.wholeWord = true, .patternSearch = true})) << ToUtf8(pattern);
    }
}

TEST(HostileInput, LongPatternsOverManyLines) {
    Text text;
    for (int i = 0; i < 20'000; ++i) {
        text += u"aaaa\r\n";
    }
    const auto module = Module::FromText(text);
    EXPECT_FALSE(Found(*module, Text(100'000, u'?') + u"*", {.patternSearch = true}));
    EXPECT_FALSE(Found(*module, Text(100'000, u'*') + u"b", {.patternSearch = true}));
}

TEST(HostileInput, TargetsOfManyLines) {
    Text text;
    for (int i = 0; i < 30'000; ++i) {
        text += u"a\r\n";
    }
    const auto module = Module::FromText(text);
    Text almost;
    for (int i = 0; i < 10'000; ++i) {
        almost += u"a\r\n";
    }
    EXPECT_TRUE(Found(*module, almost));
    EXPECT_FALSE(Found(*module, almost + u"b"));
    EXPECT_FALSE(Found(*module, almost + almost + almost + almost));
    EXPECT_FALSE(Found(*module, Text(100'000, u'\n')));
    EXPECT_FALSE(Found(*module, almost + u"*b", {.patternSearch = true}));
}

TEST(HostileInput, TenMillionLineBreaks) {
    Text text;
    for (std::size_t i = 0; i < 10 * Million; ++i) {
        text += u"\r\n";
    }
    const auto module = support::ModuleOf("Sub A()\nEnd Sub");
    ASSERT_TRUE(module->InsertLines(Line{2}, text));
    EXPECT_EQ(module->CountOfLines(), 10'000'003);
    EXPECT_EQ(module->ProcCountLines(u"A", vbext_pk_Proc), 10'000'003);
    EXPECT_FALSE(Found(*module, u"needle"));
    ASSERT_TRUE(module->DeleteLines(Line{2}, 10'000'001));
    EXPECT_EQ(support::TextOf(*module), "Sub A()\nEnd Sub");
}

TEST(HostileInput, AMillionLineBreaksInPlaceOfALine) {
    Text text;
    for (std::size_t i = 0; i < Million; ++i) {
        text += u"x\r\n";
    }
    const auto module = support::ModuleOf("Sub A()\nEnd Sub");
    ASSERT_TRUE(module->ReplaceLine(Line{1}, text));
    EXPECT_EQ(module->CountOfLines(), 1'000'002);
    EXPECT_TRUE(module->Procedures().empty());
    EXPECT_FALSE(Found(*module, u"needle", {.wholeWord = true}));
    ASSERT_TRUE(module->DeleteLines(Line{1}, 1'000'002));
    EXPECT_EQ(module->CountOfLines(), 0);
}

TEST(HostileInput, NamesOfAMillionCharacters) {
    const Text name(Million, u'n');
    const auto module = OneLine(u"Dim " + name + u"\r\nSub " + name + u"()\r\nEnd Sub");
    EXPECT_EQ(module->ProcBodyLine(name, vbext_pk_Proc), Line{2});
    EXPECT_FALSE(module->ProcBodyLine(name + u"n", vbext_pk_Proc));
    EXPECT_TRUE(module->FindMember(name));
    EXPECT_FALSE(module->FindMember(Text(Million, u'\uFFFF')));
    EXPECT_FALSE(module->FindMember(Text(1, u'\0')));
}

TEST(HostileInput, ManyProceduresOfOneName) {
    Text text;
    for (int i = 0; i < 100'000; ++i) {
        text += u"Sub A(): End Sub\r\n";
    }
    const auto module = Module::FromText(text);
    EXPECT_EQ(module->ProcBodyLine(u"A", vbext_pk_Proc), Line{1});
    EXPECT_FALSE(module->ProcBodyLine(u"A", vbext_pk_Get));
    EXPECT_EQ(module->MemberList().size(), 100'000U);
}

TEST(HostileInput, LinesThatAllContinue) {
    Text text;
    for (int i = 0; i < 100'000; ++i) {
        text += u"x _\r\n";
    }
    const auto module = Module::FromText(text);
    ASSERT_TRUE(module->ReplaceLine(Line{1}, u"Sub A() _"));
    EXPECT_EQ(module->ProcBodyLine(u"A", vbext_pk_Proc), Line{1});
    ASSERT_TRUE(module->ReplaceLine(Line{50'000}, u"x"));
    EXPECT_EQ(module->Procedures().front().bodyBegin, Line{50'001});
}

TEST(HostileInput, EditsThatTouchTheSameLinesAgainAndAgain) {
    const auto module = support::ModuleOf("Sub A()\nx\nEnd Sub\nSub B()\nEnd Sub");
    for (int i = 0; i < 50'000; ++i) {
        ASSERT_TRUE(module->InsertLines(Line{2}, u"Sub C()"));
        ASSERT_TRUE(module->DeleteLines(Line{2}, 1));
        ASSERT_TRUE(module->ReplaceLine(Line{3}, i % 2 == 0 ? u"" : u"End Sub"));
    }
    EXPECT_EQ(module->Procedures().size(), 2U);
}

// New words in every text: what earlier ones left behind must go.
TEST(HostileInput, ALongSessionKeepsItsMemory) {
    const auto module = support::ModuleOf("Sub A()\nx\nEnd Sub");
    std::size_t before = 0;
    for (int i = 0; i < 100'000; ++i) {
        Text text = u"word" + FromUtf8(std::to_string(i));
        text.resize(300, u'-');
        ASSERT_TRUE(module->ReplaceLine(Line{2}, text));
        if (i % 1000 == 0) {
            EXPECT_FALSE(Found(*module, u"needle", {.wholeWord = true}));
        }
        if (i == 10'000) {
            before = mallinfo2().uordblks;
        }
    }
    EXPECT_LT(mallinfo2().uordblks, before + 4 * Million);
}

}  // namespace
}  // namespace lintara::workspace

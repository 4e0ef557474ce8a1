// Random edits of random modules: after each, every answer of the module is the one that the reference works
// out anew from the lines, and the file that would be written holds what is shown.
#include "tests/support/random.h"
#include "tests/support/reference_module.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using hostmodel::MemberKind;
using support::Random;
using support::ReferenceModule;

constexpr std::array<TextView, 92> pool{
    u"",
    u" ",
    u"\t",
    u"'",
    u"' End Sub",
    u"Rem End Sub",
    u"Rem",
    u"_",
    u" _",
    u"\t_",
    u"x = 1 _",
    u"x = 1 +_",
    u"' a comment that goes on _",
    u"Sub A()",
    u"sub a()",
    u"Sub B(x, _",
    u"   y)",
    u"Public Static Sub A ()",
    u"  Friend Function F() As Long",
    u"Global static private FUNCTION f%()",
    u"Property Get P() As Long",
    u"property let p(v)",
    u"Public Property Set P(v)",
    u"Property Get A()",
    u"Property  Get\tQ",
    u"Property Letter()",
    u"Property _",
    u"Private _",
    u"Get _",
    u"Sub _",
    u"Sub",
    u"Sub 1st()",
    u"Sub _x()",
    u"Sub \u00C4rger()",
    u"SUB \u00E4RGER()",
    u"Subtotal = 1",
    u"Sub A(): End Sub",
    u"Sub C() : x = 1:End  Sub ' done",
    u"Function G(): G = \": End Function\"",
    u"Function G(): ' : End Function",
    u"Property Get R(): R = 1 : End Property",
    u"Sub D(): Rem : End Sub",
    u"Declare Sub A Lib \"a.dll\" ()",
    u"Public Declare PtrSafe Function F Lib \"b\" (ByVal x As Long) As Long",
    u"Private Declare Function _",
    u"Public Event Changed(ByVal x As Long, y)",
    u"Event A()",
    u"Private Type T",
    u"Public Enum E: One = 1: Two: End Enum",
    u"End Type",
    u"End Enum",
    u"Type As Long",
    u"Dim Type As Long",
    u"Dim a, b As Long, c(1 To 2, 3) As String",
    u"Private WithEvents w As Thing, v",
    u"Public x: Private y: Dim z ' : Dim no",
    u"Public Const K = \"a, b: c\", L As Long = 2",
    u"const m$ = \"it's\": Dim n",
    u"Option Explicit",
    u"#If Win Then",
    u"#Const D = 1: Dim no",
    u"End Sub",
    u"end sub",
    u"End Function",
    u"End Property",
    u"  End   Sub",
    u"End\tSub' closes",
    u"End Sub: x = 1",
    u"End Sub _",
    u"End _",
    u"End SubX",
    u"EndSub",
    u"End",
    u"10 End Sub",
    u"10: End Sub",
    u"10: last: End Sub",
    u"last: End Function",
    u"10 last:  End Property",
    u"10End Sub",
    u"last:= End Sub",
    u"10:End Sub",
    u"a: b: End Sub",
    u"x = 1: End Sub",
    u"Exit Sub",
    u"s = \"End Sub\": t = \"'\" ' \"",
    u"s = \"open",
    u"lone\rEnd Sub",
    u"\nSub A()",
    u"Sub A()\r",
    u"\r",
    u"\n",
    u"End Sub\n",
};

// Lines that statements, headers and closing statements are continued by, or end with.
constexpr std::array<TextView, 16> continuedPool{
    u" _",      u"x = 1 _", u"+ 1 _", u"' more _",   u"s = \"a _", u"Sub _", u"A( _", u"y) _",
    u": End _", u"End _",   u"Sub",   u"Property _", u"Get _",     u"P() _", u"x",    u": End Sub"};

// One to three lines; mostly one.
Text RandomText(Random& random) {
    Text text(random.Pick(pool));
    for (std::size_t more = random.Chance(75) ? 0 : random.Below(4); more > 0; --more) {
        text += u"\r\n";
        text += random.Pick(pool);
    }
    return text;
}

auto Fields(const ProcedureInfo& p) {
    return std::tuple(p.number, ToUtf8(p.name), p.kind, p.isFunction, p.start.value(), p.header.value(),
                      p.bodyBegin.value(), p.closing.value(), p.closed);
}

auto Fields(const MemberInfo& m) {
    return std::tuple(ToUtf8(m.name), m.type, m.codeLocation.value());
}

template <class Infos>
auto AllFields(const Infos& infos) {
    std::vector<decltype(Fields(infos.front()))> all;
    for (const auto& info : infos) {
        all.push_back(Fields(info));
    }
    return all;
}

// The module's lines, which may differ from the reference's in the letter case of keywords only.
void TakeLines(const Module& module, ReferenceModule& reference) {
    ASSERT_EQ(module.CountOfLines(), reference.CountOfLines());
    Text text;
    for (std::int32_t line = 1; line <= module.CountOfLines(); ++line) {
        module.ReadLine(Line{line}, text);
        Text& expected = reference.lines[static_cast<std::size_t>(line) - 1];
        ASSERT_EQ(FoldCase(text), FoldCase(expected)) << "line " << line;
        expected = text;
    }
}

void CompareProcedureLines(const Module& module, const ReferenceModule& reference,
                           const std::vector<ProcedureInfo>& procedures) {
    for (std::size_t i = 0; i < procedures.size(); ++i) {
        const ProcedureInfo& p = procedures[i];
        std::size_t first = 0;
        while (procedures[first].kind != p.kind || !SameName(procedures[first].name, p.name)) {
            ++first;
        }
        const Text name = FoldCase(p.name);
        EXPECT_EQ(module.ProcStartLine(name, p.kind), procedures[first].start);
        EXPECT_EQ(module.ProcBodyLine(name, p.kind), procedures[first].header);
        EXPECT_EQ(module.ProcCountLines(name, p.kind), reference.CountLinesOf(procedures, first));
    }
}

void CompareOwners(const Module& module, const ReferenceModule& reference,
                   const std::vector<ProcedureInfo>& procedures) {
    for (std::int32_t line = 1; line <= reference.CountOfLines(); ++line) {
        constexpr auto untouched = MemberKind{77};
        Text name;
        MemberKind kind = untouched;
        for (std::size_t i = 0; i < procedures.size(); ++i) {
            const Line start = procedures[i].start;
            if (start <= Line{line} && line < start.value() + reference.CountLinesOf(procedures, i)) {
                name = procedures[i].name;
                kind = procedures[i].kind;
                break;
            }
        }
        MemberKind answered = untouched;
        EXPECT_EQ(module.ProcOfLine(Line{line}, answered), name) << "line " << line;
        EXPECT_EQ(answered, kind) << "line " << line;
        const auto owner = module.ProcedureAt(Line{line});
        EXPECT_EQ(owner ? owner->name : Text(), name) << "line " << line;
    }
}

void CompareMembers(const Module& module, const std::vector<MemberInfo>& members) {
    EXPECT_EQ(AllFields(module.MemberList()), AllFields(members));
    for (const MemberInfo& member : members) {
        const auto first = std::ranges::find_if(
            members, [&](const MemberInfo& other) { return SameName(other.name, member.name); });
        const auto found = module.FindMember(FoldCase(member.name));
        ASSERT_TRUE(found);
        EXPECT_EQ(Fields(*found), Fields(*first));
    }
}

void Compare(const Module& module, ReferenceModule& reference) {
    TakeLines(module, reference);
    const std::vector<ProcedureInfo> procedures = reference.Procedures();
    ASSERT_EQ(AllFields(module.Procedures()), AllFields(procedures));
    ASSERT_EQ(module.CountOfDeclarationLines(), reference.CountOfDeclarationLines());
    CompareMembers(module, reference.Members());
    CompareProcedureLines(module, reference, procedures);
    CompareOwners(module, reference, procedures);
}

Text JoinedLines(const ReferenceModule& reference) {
    Text text;
    for (const Text& line : reference.lines) {
        text += text.empty() && &line == &reference.lines.front() ? TextView() : TextView(u"\r\n");
        text += line;
    }
    return text;
}

// Does the same to both.
void EditBoth(Module& module, ReferenceModule& reference, Random& random, std::int32_t line, TextView text) {
    switch (random.Below(5)) {
        case 0:
        case 1:
            EXPECT_EQ(module.InsertLines(Line{line}, text).has_value(), reference.InsertLines(line, text));
            break;
        case 2: {
            const auto count = static_cast<std::int32_t>(random.Below(random.Chance(90) ? 3 : 12));
            EXPECT_EQ(module.DeleteLines(Line{line}, count).has_value(), reference.DeleteLines(line, count));
            break;
        }
        default:
            EXPECT_EQ(module.ReplaceLine(Line{line}, text).has_value(), reference.ReplaceLine(line, text));
    }
}

// The lines that exist are mostly met.
void EditBoth(Module& module, ReferenceModule& reference, Random& random, TextView text) {
    const auto line = static_cast<std::int32_t>(random.Below(reference.lines.size() + 3));
    EditBoth(module, reference, random, line, text);
}

// Where the next edit takes place: mostly a little below the last one, as in a walk over a module, or above.
std::int32_t NextLine(std::int32_t line, const ReferenceModule& reference, Random& random) {
    if (random.Chance(10)) {
        return static_cast<std::int32_t>(random.Below(reference.lines.size() + 3));
    }
    return line + static_cast<std::int32_t>(random.Below(4)) - 1;
}

std::string Shown(const ReferenceModule& reference) {
    return ToUtf8(JoinedLines(reference));
}

// A module of random lines, as a file has them: no line holds a lone CR or LF.
std::unique_ptr<Module> RandomModule(Random& random, ReferenceModule& reference) {
    for (std::size_t lines = random.Below(40); lines > 0; --lines) {
        const TextView line = random.Pick(pool);
        if (line.find_first_of(u"\r\n") == TextView::npos) {
            reference.lines.emplace_back(line);
        }
    }
    Text text = JoinedLines(reference);
    if (!reference.lines.empty()) {
        text += u"\r\n";
    }
    return Module::FromText(text);
}

TEST(RandomEdits, EveryAnswerIsThatOfTheModuleReadAnew) {
    for (std::uint64_t seed = 1; seed <= 150; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        const auto module = RandomModule(random, reference);
        ASSERT_NO_FATAL_FAILURE(Compare(*module, reference)) << "seed " << seed << "\n" << Shown(reference);
        for (int step = 0; step < 40; ++step) {
            const std::string before = Shown(reference);
            EditBoth(*module, reference, random, RandomText(random));
            ASSERT_NO_FATAL_FAILURE(Compare(*module, reference));
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << step << ", before:\n"
                                                      << before << "\nafter:\n"
                                                      << Shown(reference);
        }
    }
}

TEST(RandomEdits, RareQuestionsAreAnsweredAfterManyEdits) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        const auto module = Module::FromText(u"");
        for (int step = 0; step < 600; ++step) {
            EditBoth(*module, reference, random, RandomText(random));
            if (random.Chance(2)) {
                ASSERT_NO_FATAL_FAILURE(Compare(*module, reference)) << "seed " << seed << ", step " << step;
                ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << step;
            } else {
                TakeLines(*module, reference);
            }
        }
    }
}

TEST(RandomEdits, WalksOverContinuedStatementsAreFollowedLater) {
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        Random random(seed);
        ReferenceModule reference;
        const auto module = RandomModule(random, reference);
        std::int32_t line = 1;
        for (int step = 0; step < 120; ++step) {
            const std::string before = Shown(reference);
            line = NextLine(line, reference, random);
            const Text text = random.Chance(60) ? Text(random.Pick(continuedPool)) : RandomText(random);
            EditBoth(*module, reference, random, line, text);
            if (random.Chance(85)) {
                ASSERT_NO_FATAL_FAILURE(TakeLines(*module, reference));
                continue;
            }
            ASSERT_NO_FATAL_FAILURE(Compare(*module, reference)) << "seed " << seed << ", step " << step;
            ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << step << ", before:\n"
                                                      << before << "\nafter:\n"
                                                      << Shown(reference);
        }
    }
}

// Were the statement read again for each of its lines, this would take minutes.
TEST(LongStatement, IsEditedLineByLineAndReadOnce) {
    constexpr std::int32_t lineCount = 50'000;
    Text text = u"Sub A()\r\n    x = 0 _\r\n";
    for (std::int32_t i = 0; i < lineCount; ++i) {
        text += u"        + 1 _\r\n";
    }
    text += u"        + 1\r\nEnd Sub\r\nSub B()\r\nEnd Sub\r\n";
    const auto module = Module::FromText(text);
    for (const TextView piece : {u"      + 22 _", u"", u"' + 3 _"}) {
        for (std::int32_t i = 0; i < lineCount; ++i) {
            ASSERT_TRUE(module->ReplaceLine(Line{i + 3}, piece));
        }
        const auto line = module->ProcBodyLine(u"B", MemberKind::vbext_pk_Proc);
        EXPECT_EQ(line, Line{lineCount + 5});
    }
    for (std::int32_t i = 0; i < lineCount; ++i) {
        ASSERT_TRUE(module->InsertLines(Line{i + 3}, u"    + 4 _"));
    }
    EXPECT_EQ(module->ProcBodyLine(u"B", MemberKind::vbext_pk_Proc), Line{2 * lineCount + 5});
}

}  // namespace
}  // namespace lintara::workspace

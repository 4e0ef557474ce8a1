#include "assistant/dispatch_table.h"

#include "assistant/lintara.h"

#include <array>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace lintara::assistant {
namespace {

std::string Narrow(TextView text) {
    return {text.begin(), text.end()};
}

// One member as callers write it down: "11 method GetMemberName() text".
std::string Show(const DispatchMember& member) {
    constexpr std::array Access = {"method", "get", "put", "putref"};
    constexpr std::array Type = {"text", "integer", "long", "boolean", "object"};
    constexpr std::array Direction = {"", "out ", "inout "};
    std::string shown = std::to_string(member.number) + " " +
                        Access.at(static_cast<std::size_t>(member.access)) + " " + Narrow(member.name) + "(";
    std::string separator;
    for (const Parameter& parameter : member.parameters) {
        shown += separator + Direction.at(static_cast<std::size_t>(parameter.direction)) +
                 Narrow(parameter.name) + " " + Type.at(static_cast<std::size_t>(parameter.type));
        separator = ", ";
    }
    shown += ")";
    return member.result ? shown + " " + Type.at(static_cast<std::size_t>(*member.result)) : shown;
}

// Late-bound callers and recorded interfaces depend on every word and number of this.
constexpr std::array<std::string_view, 27> Expected = {
    "1 get oG() object",
    "2 put oG(value object)",
    "3 putref oG(object object)",
    "4 get TarnwickCPBuffer() text",
    "5 put TarnwickCPBuffer(value text)",
    "6 get AdditionalCPBuffer(Index long) text",
    "7 put AdditionalCPBuffer(Index long, value text)",
    "8 method ParsePseudoCode(APseudoCodeString text) text",
    "9 method ParsePseudoCodeEx(APseudoCodeString text, AComponentName text, AMemberName text) text",
    "10 method GeneratePseudoCode(sCode text) text",
    "11 method GetMemberName() text",
    "12 method GetMemberType() text",
    "13 method GetMemberTypeEx(sComponentName text, sMemberName text) text",
    "14 method InitCodeAutomation()",
    "15 method GetTextSelection(inout sLines text, iStartLine long, iEndLine long, iStartCol long, "
    "iEndCol long) text",
    "16 method InsertTextInLine(sLine text, sText text, iCol long) text",
    "17 method TranslateCarret(inout iLine long, inout iCol long, sText text)",
    "18 method CloseCodeAutomation()",
    "19 method LineNumbersInserter(sProject text, sComponent text, sMember text, iLNBase long, iLNStep long)",
    "20 method LineNumbersRemover(sProject text, sComponent text, sMember text)",
    "21 method ErrorHandlerInserter(sProject text, sComponent text, sMember text, sEHLabel text, sEHCode "
    "text)",
    "22 method ErrorHandlerRemover(sProject text, sComponent text, sMember text)",
    "23 method SearchAndReplace(AComponentName text, ASoughtString text, AReplacementString text, "
    "AStartLine long, AEndLine long, WholeWord boolean, GoThroughDelete boolean, out AFound boolean)",
    "24 method CustomCodeInserter(sProject text, sComponent text, sMember text, sCodeToInsert text, "
    "fNoDelimiters boolean, iWhere integer, iLine long, ID integer)",
    "25 method CustomCodeRemover(sProject text, sComponent text, sMember text, ID integer)",
    "26 method GetLineNumber() long",
    "27 method ShowHistory()",
};

TEST(DispatchTableTest, MembersHaveTheirNumbersNamesAndParameters) {
    const auto table = DispatchTable();
    ASSERT_EQ(table.size(), Expected.size());
    for (std::size_t i = 0; i < table.size(); ++i) {
        EXPECT_EQ(Show(table[i]), Expected[i]);
    }
}

TEST(DispatchTableTest, MembersAreFoundByNameInAnyLetterCase) {
    EXPECT_EQ(FindDispatchMember(u"getmembername", Access::Method)->number, 11);
    EXPECT_EQ(FindDispatchMember(u"OG", Access::PutReference)->number, 3);
    EXPECT_EQ(FindDispatchMember(u"AdditionalCPBuffer", Access::Put)->number, 7);
}

TEST(DispatchTableTest, OtherNamesAreNotFound) {
    EXPECT_EQ(FindDispatchMember(u"GetMember", Access::Method), nullptr);
    EXPECT_EQ(FindDispatchMember(u"GetMemberNameX", Access::Method), nullptr);
    EXPECT_EQ(FindDispatchMember(u"", Access::Method), nullptr);
    EXPECT_EQ(FindDispatchMember(u"GetMemberName", Access::Get), nullptr);
}

// No exception leaves any member: their types say so.
TEST(DispatchTableTest, NoMemberOfTheClassThrows) {
    Lintara assistant;
    Text text;
    std::int32_t number = 0;
    bool found = false;
    static_assert(noexcept(assistant.TarnwickCPBuffer())&& noexcept(assistant.SetTarnwickCPBuffer(u"")));
    static_assert(
        noexcept(assistant.AdditionalCPBuffer(0))&& noexcept(assistant.SetAdditionalCPBuffer(0, u"")));
    static_assert(
        noexcept(assistant.ParsePseudoCode(u""))&& noexcept(assistant.ParsePseudoCodeEx(u"", u"", u"")));
    static_assert(noexcept(assistant.GeneratePseudoCode(u""))&& noexcept(assistant.GetMemberName()));
    static_assert(noexcept(assistant.GetMemberType())&& noexcept(assistant.GetMemberTypeEx(u"", u"")));
    static_assert(noexcept(assistant.InitCodeAutomation())&& noexcept(assistant.CloseCodeAutomation()));
    static_assert(noexcept(assistant.GetTextSelection(text, 1, 1, 1, 1)));
    static_assert(noexcept(assistant.InsertTextInLine(u"", u"", 1)));
    static_assert(noexcept(assistant.TranslateCarret(number, number, u"")));
    static_assert(noexcept(assistant.LineNumbersInserter(u"", u"", u"", 1, 1)));
    static_assert(noexcept(assistant.LineNumbersRemover(u"", u"", u"")));
    static_assert(noexcept(assistant.ErrorHandlerInserter(u"", u"", u"", u"", u"")));
    static_assert(noexcept(assistant.ErrorHandlerRemover(u"", u"", u"")));
    static_assert(noexcept(assistant.SearchAndReplace(u"", u"", u"", 1, 1, false, false, found)));
    static_assert(noexcept(assistant.CustomCodeInserter(u"", u"", u"", u"", false, 1, 1, 1)));
    static_assert(noexcept(assistant.CustomCodeRemover(u"", u"", u"", 1)));
    static_assert(noexcept(assistant.GetLineNumber())&& noexcept(assistant.ShowHistory()));
    SUCCEED();
}

}  // namespace
}  // namespace lintara::assistant

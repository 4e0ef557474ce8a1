#include "platform/toml_document.h"

#include "base/constants.h"
#include "tests/support/random.h"

#include <array>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

TomlDocument Parsed(std::string bytes) {
    auto document = TomlDocument::Parse(std::move(bytes));
    EXPECT_TRUE(document) << (document ? "" : document.error().what);
    return document ? *std::move(document) : *TomlDocument::Parse("");
}

std::string With(std::string bytes, TextView section, TextView key, TextView value) {
    return Parsed(std::move(bytes)).With(section, key, value).value_or("<fails>");
}

std::optional<Text> Found(const std::string& bytes, TextView section, TextView key) {
    return Parsed(bytes).Find(section, key).value_or(u"<fails>");
}

struct Edit {
    std::string_view name;
    std::string before;
    Text section;
    Text key;
    Text value;
    std::string after;
};

TEST(TomlDocument, IsEditedWhereTheValueStands) {
    const Edit edits[] = {
        {"the first setting", "", u"S", u"Key", u"1", "[S]\nKey = \"1\"\n"},
        {"a new section", "# mine\n[A]\nx = 1", u"S", u"Key", u"1",
         "# mine\n[A]\nx = 1\n\n[S]\nKey = \"1\"\n"},
        {"a value among comments", "[S] # head\nKey = 'old' # why\n# end\n", u"S", u"Key", u"new",
         "[S] # head\nKey = \"new\" # why\n# end\n"},
        {"a number", "[S]\nKey=0x1F#why\n", u"S", u"Key", u"31", "[S]\nKey=\"31\"#why\n"},
        {"several lines become one", "[S]\nKey = \"\"\"\na\nb\"\"\" # why\nz = 1\n", u"S", u"Key", u"c",
         "[S]\nKey = \"c\" # why\nz = 1\n"},
        {"one line becomes several", "[S]\n\"\u00e9\U0001F600\" = 1\r\nKey = ''\r\n", u"S", u"Key",
         u"a\r\n b", "[S]\n\"\u00e9\U0001F600\" = 1\r\nKey = \"\"\"\na\n b\"\"\"\r\n"},
        {"behind the last value of its section",
         "[S]\nz = \"\"\"\n\n\"\"\" # c\na = 1\n# tail\n\n[T]\nx = 1\n", u"S", u"Key", u"1",
         "[S]\nz = \"\"\"\n\n\"\"\" # c\na = 1\nKey = \"1\"\n# tail\n\n[T]\nx = 1\n"},
        {"in an empty section", "[S] # c\n[T]\n", u"S", u"Key", u"1", "[S] # c\nKey = \"1\"\n[T]\n"},
        {"at an end without line break", "[S]\na = 1", u"S", u"Key", u"1", "[S]\na = 1\nKey = \"1\"\n"},
        {"in an inline table", "S = { Key = 1, b = 2 } # c\n", u"S", u"Key", u"2",
         "S = { Key = \"2\", b = 2 } # c\n"},
        {"beside a table of its own", "[S.Inner]\na = 1 # c\n", u"S", u"Key", u"1",
         "[S.Inner]\na = 1 # c\n\n[S]\nKey = \"1\"\n"},
        {"names that need quotes", "", u"a.b c", u"=", u"1", "[\"a.b c\"]\n\"=\" = \"1\"\n"},
        {"empty names", "", u"", u"", u"1", "[\"\"]\n\"\" = \"1\"\n"},
        {"behind a byte order mark", "\xEF\xBB\xBF[S]\nKey = 1 # c\n", u"S", u"Key", u"2",
         "[S]\nKey = \"2\" # c\n"},
    };
    for (const Edit& edit : edits) {
        EXPECT_EQ(With(edit.before, edit.section, edit.key, edit.value), edit.after) << edit.name;
        EXPECT_EQ(Found(edit.after, edit.section, edit.key), edit.value) << edit.name;
    }
}

TEST(TomlDocument, IsWrittenAnewWhereThereIsNoPlaceForTheKey) {
    for (const std::string before :
         {"# c\nS = { b = 2 }\n[T]\nx = 1979-05-27\n", "# c\nS.b = 2\nT.x = 1979-05-27\n"}) {
        const std::string after = With(before, u"S", u"Key", u"1");
        EXPECT_EQ(Found(after, u"S", u"Key"), u"1") << after;
        EXPECT_EQ(Found(after, u"S", u"b"), u"2") << after;
        EXPECT_EQ(Found(after, u"T", u"x"), u"1979-05-27") << after;
    }
}

TEST(TomlDocument, TellsWhatPeopleWroteAsText) {
    const std::string bytes =
        "[S]\ninteger = 5\nspaced = 10_000\nhex = 0xFF\nyes = true\nno = false\nfloat = 1.5\nday = "
        "1979-05-27\n"
        "text = 'C:\\Data'\nlist = [1]\ntable = { a = 1 }\n";
    EXPECT_EQ(Found(bytes, u"S", u"integer"), u"5");
    EXPECT_EQ(Found(bytes, u"S", u"spaced"), u"10000");
    EXPECT_EQ(Found(bytes, u"S", u"hex"), u"255");
    EXPECT_EQ(Found(bytes, u"S", u"yes"), u"true");
    EXPECT_EQ(Found(bytes, u"S", u"no"), u"false");
    EXPECT_EQ(Found(bytes, u"S", u"float"), u"1.5");
    EXPECT_EQ(Found(bytes, u"S", u"day"), u"1979-05-27");
    EXPECT_EQ(Found(bytes, u"S", u"text"), u"C:\\Data");
    EXPECT_EQ(Found(bytes, u"S", u"list"), u"<fails>");
    EXPECT_EQ(Found(bytes, u"S", u"table"), u"<fails>");
    EXPECT_EQ(Found(bytes, u"S", u"Integer"), std::nullopt);
    EXPECT_EQ(Found(bytes, u"s", u"integer"), std::nullopt);
}

TEST(TomlDocument, KeepsAValueThatStandsWhereTheSectionShouldBe) {
    EXPECT_EQ(Found("S = 5\n", u"S", u"Key"), u"<fails>");
    EXPECT_EQ(With("S = 5\n", u"S", u"Key", u"1"), "<fails>");
    EXPECT_EQ(With("[[S]]\na = 1\n", u"S", u"Key", u"1"), "<fails>");
}

TEST(TomlDocument, KeepsAListOrATableThatStandsWhereTheTextShouldBe) {
    for (const std::string value :
         {"Key = [1, 2]", "Key = []", "Key = { a = 1 }", "Key.a = 1", "[S.Key] # mine", "[[S.Key]]\na = 1"}) {
        const std::string bytes = "# c\n[S]\n" + value + "\n";
        EXPECT_EQ(Found(bytes, u"S", u"Key"), u"<fails>") << value;
        EXPECT_EQ(With(bytes, u"S", u"Key", u"1"), "<fails>") << value;
        EXPECT_EQ(Found(With(bytes, u"S", u"Other", u"1"), u"S", u"Other"), u"1") << value;
        EXPECT_EQ(Parsed(bytes).Find(u"S", u"Key").error().line, 3U) << value;
    }
}

TEST(TomlDocument, KeepsNumbersThatEqualNothing) {
    EXPECT_EQ(With("[T]\nx = nan\n[S]\n", u"S", u"Key", u"1"), "[T]\nx = nan\n[S]\nKey = \"1\"\n");
}

TEST(TomlDocument, ShowsTheHandlerLineByLine) {
    const std::string text = With("", u"S", u"EHCode", constants::DefaultErrorHandlerCode);
    EXPECT_NE(text.find("\n        Case vbAbort\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("\\r"), std::string::npos) << text;
    EXPECT_EQ(Found(text, u"S", u"EHCode"), constants::DefaultErrorHandlerCode);
}

TEST(TomlDocument, TellsTheLineOfDamage) {
    const auto document = TomlDocument::Parse("[S]\na = 1\nb = \"cut");
    ASSERT_FALSE(document);
    EXPECT_EQ(document.error().line, 3U);
    EXPECT_FALSE(document.error().what.empty());
}

Text RandomText(support::Random& random, std::size_t longest) {
    constexpr std::array<char16_t, 20> units = {u'\r', u'\n',  u'\0',  u'\t',  u' ',   u'"',  u'\\',
                                                u'\'', u'a',   u'#',   u'=',   u']',   0x7F,  0x85,
                                                0xE9,  0x2028, 0xFDD0, 0xD83D, 0xDE00, 0xFFFF};
    Text text;
    for (std::size_t length = random.Below(longest); length > 0; --length) {
        const bool isAnything = random.Chance(10);
        text += isAnything ? static_cast<char16_t>(random.Below(0x10000)) : random.Pick(units);
        if (random.Chance(10)) {
            text += u"\r\n";
        }
    }
    return text;
}

TEST(TomlDocument, GivesBackRandomTextsUnderRandomNames) {
    support::Random random(7);
    for (int file = 0; file < 60; ++file) {
        std::string bytes = "# top\n";
        std::map<std::pair<Text, Text>, Text> expected;
        for (int edit = 0; edit < 12; ++edit) {
            const Text section = random.Chance(50) ? Text(u"S") : RandomText(random, 3);
            const Text key = RandomText(random, 3);
            const Text value = RandomText(random, 25);
            const auto after = Parsed(bytes).With(section, key, value);
            ASSERT_TRUE(after) << bytes;
            bytes = *after;
            expected[{section, key}] = value;
        }
        EXPECT_TRUE(bytes.starts_with("# top\n")) << bytes;
        for (const auto& [name, value] : expected) {
            ASSERT_EQ(Found(bytes, name.first, name.second), value) << bytes;
        }
    }
}

// Written anew, the key of two quotes would be the empty one.
TEST(TomlDocument, RefusesToMakeAnotherKeyOfAQuotedOne) {
    for (const char* bytes : {"S.\"''\" = ''\n", "S = { \"''\" = 'x' }\n", "S.t = [{ \"''\" = 1 }]\n"}) {
        EXPECT_FALSE(Parsed(bytes).With(u"S", u"k", u"v")) << bytes;
    }
}

TEST(TomlDocument, RefusesKeysThatNestWithoutEnd) {
    std::string key = "a";
    for (int i = 0; i < 200'000; ++i) {
        key += ".a";
    }
    EXPECT_FALSE(TomlDocument::Parse(key + " = 1\n"));
    EXPECT_FALSE(TomlDocument::Parse("[" + key + "]\n"));
}

TEST(TomlDocument, CountsDotsOfKeysAlone) {
    std::string dots;
    for (int i = 0; i < 5'000; ++i) {
        dots += ".c";
    }
    const std::string behindAnOpenText = "a = \"open\nb" + dots + " = 1\n";
    const auto refused = TomlDocument::Parse(behindAnOpenText);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().line, 2U);
    EXPECT_EQ(refused.error().what, "there are too many dots in keys and numbers");
    for (const std::string& harmless :
         {"# " + dots + "\n", "a = \"\\\"" + dots + "\"\n", "a = '" + dots + "'\n",
          "a = \"\"\"" + dots + "\n" + dots + "\"\"\"\n"}) {
        EXPECT_TRUE(TomlDocument::Parse(harmless)) << harmless.substr(0, 20);
    }
}

}  // namespace
}  // namespace lintara::platform

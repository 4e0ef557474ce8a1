#include "platform/settings_text.h"

#include "platform/toml_string.h"
#include "tests/support/random.h"

#include <array>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

struct TextCase {
    Text text;
    std::string stored;
};

TEST(SettingsText, HoldsWhatTheFileCannot) {
    const TextCase cases[] = {
        {u"", ""},
        {u"plain", "plain"},
        {u"one\r\ntwo", "one\ntwo"},
        {u"\r\n\r\n", "\n\n"},
        {u"lone\rreturn", "lone\rreturn"},
        {u"lone\nfeed", "lone\uFDD0000Afeed"},
        {u"\r\r\n", "\r\r\n"},
        {u"\r\r\r\n\r\n", "\r\r\r\n\n"},
        {u"\n\r", "\uFDD0000A\r"},
        {u"\u00e9\u20ac\U0001F600", "\u00e9\u20ac\U0001F600"},
        {Text{u'a', char16_t{0xD83D}}, "a\uFDD0D83D"},
        {Text{char16_t{0xDE00}, char16_t{0xD83D}}, "\uFDD0DE00\uFDD0D83D"},
        {u"\uFDD0", "\uFDD0FDD0"},
        {u"\uFDD0000A", "\uFDD0FDD0000A"},
        {Text(u"nul\0", 4), std::string("nul\0", 4)},
    };
    for (const TextCase& c : cases) {
        EXPECT_EQ(ToSettingsText(c.text), c.stored);
        EXPECT_EQ(FromSettingsText(c.stored), c.text) << c.stored;
    }
}

TEST(SettingsText, TakesWhatPeopleWrite) {
    EXPECT_EQ(FromSettingsText("one\r\ntwo\n"), u"one\r\ntwo\r\n");
    EXPECT_EQ(FromSettingsText("\uFDD0 alone"), u"\uFDD0 alone");
    EXPECT_EQ(FromSettingsText("\uFDD000a"), u"\uFDD000a");
    EXPECT_EQ(FromSettingsText("\uFDD0d83d"), Text(1, char16_t{0xD83D}));
}

TEST(SettingsText, OfEveryTextComesBackExactly) {
    constexpr std::array<char16_t, 14> units = {u'\r', u'\n', u'\0', u'\t',  u' ',   u'"',   u'\\',
                                                u'\'', u'a',  u'0',  0xFDD0, 0xD83D, 0xDE00, 0xFEFF};
    support::Random random(20);
    for (int round = 0; round < 20'000; ++round) {
        Text text;
        for (std::size_t length = random.Below(12); length > 0; --length) {
            text += random.Pick(units);
        }
        ASSERT_EQ(FromSettingsText(ToSettingsText(text)), text);
    }
}

TEST(SettingsText, IsSpelledReadably) {
    EXPECT_EQ(QuotedValue("C:\\Data \"x\"\t"), R"("C:\\Data \"x\"\t")");
    EXPECT_EQ(QuotedValue("one\n  two  \n"), "\"\"\"\none\n  two \\u0020\n\"\"\"");
    EXPECT_EQ(QuotedValue("\n\"\"\""), "\"\"\"\n\n\\\"\\\"\\\"\"\"\"");
    EXPECT_EQ(QuotedValue("\uFDD0D83D"), R"("\uFDD0D83D")");
    EXPECT_EQ(QuotedKey("a\nb"), R"("a\nb")");
}

}  // namespace
}  // namespace lintara::platform

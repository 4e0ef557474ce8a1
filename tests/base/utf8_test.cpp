#include "base/utf8.h"

#include <gtest/gtest.h>

namespace lintara {
namespace {

TEST(Utf8, GoesBothWays) {
    const std::string utf8 = "a\u00e9\u20ac\U0001F600\U0010FFFF";
    const Text text = u"a\u00e9\u20ac\U0001F600\U0010FFFF";
    EXPECT_EQ(FromUtf8(utf8), text);
    EXPECT_EQ(ToUtf8(text), utf8);
    EXPECT_EQ(FromUtf8(std::string_view("\0x", 2)), TextView(u"\0x", 2));
}

TEST(Utf8, ReplacesEveryInvalidByte) {
    EXPECT_EQ(FromUtf8("a\x80z"), u"a\uFFFDz");
    EXPECT_EQ(FromUtf8("\xC0\x80"), u"\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf8("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf8("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf8("\xE2\x82"), u"\uFFFD\uFFFD");
    EXPECT_EQ(FromUtf8("\xE2\x82z"), u"\uFFFD\uFFFDz");
    EXPECT_EQ(FromUtf8("\xF0\x9F\x98z"), u"\uFFFD\uFFFD\uFFFDz");
}

TEST(Utf8, ReplacesUnpairedSurrogates) {
    EXPECT_EQ(ToUtf8(Text{char16_t{0xD83D}, u'x', char16_t{0xDE00}}), "\uFFFDx\uFFFD");
    EXPECT_EQ(ToUtf8(Text{char16_t{0xDE00}, char16_t{0xD83D}}), "\uFFFD\uFFFD");
}

}  // namespace
}  // namespace lintara

// Searches by blocks find what a look at one character after the other finds.
#include "base/text_scan.h"

#include "tests/support/random.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

namespace lintara {
namespace {

using support::Random;

// Of few characters, so that much matches in part; from empty to several blocks long.
Text RandomText(Random& random, std::size_t longest) {
    constexpr std::array<char16_t, 5> characters{u'a', u'b', u' ', u'\u00E9', u'\uFFFF'};
    Text text(random.Below(longest + 1), u'a');
    std::ranges::generate(text, [&] { return random.Pick(characters); });
    return text;
}

TEST(TextScan, FindsTheFirstCharacterAtOrBehindAPlace) {
    Random random(1);
    for (int i = 0; i < 20'000; ++i) {
        const Text text = RandomText(random, 40);
        const std::size_t from = random.Below(text.size() + 2);
        const char16_t sought = random.Chance(50) ? u'b' : u'x';
        EXPECT_EQ(FindCharacter(text, sought, from), text.find(sought, from))
            << testing::PrintToString(text) << " from " << from;
    }
}

TEST(TextScan, FindsTheFirstDigit) {
    Random random(4);
    constexpr std::array<char16_t, 6> characters{u'/', u'0', u'9', u':', u'a', u'\uFFFF'};
    for (int i = 0; i < 20'000; ++i) {
        Text text(random.Below(30), u'a');
        std::ranges::generate(text, [&] { return random.Chance(90) ? u'/' : random.Pick(characters); });
        const std::size_t from = random.Below(text.size() + 2);
        EXPECT_EQ(FindDigit(text, from), text.find_first_of(u"0123456789", from))
            << testing::PrintToString(text) << " from " << from;
    }
}

TEST(TextScan, FindsTheFirstPlaceOfAText) {
    Random random(2);
    for (int i = 0; i < 20'000; ++i) {
        const Text text = RandomText(random, 40);
        const Text sought = RandomText(random, 4) + u'b';
        const std::size_t from = random.Below(text.size() + 2);
        EXPECT_EQ(FindExactly(text, sought, from), text.find(sought, from))
            << testing::PrintToString(sought) << " in " << testing::PrintToString(text) << " from " << from;
    }
}

TEST(TextScan, MeasuresWhatTwoTextsHaveInCommon) {
    Random random(3);
    for (int i = 0; i < 20'000; ++i) {
        const Text common = RandomText(random, 30);
        const Text a = RandomText(random, 3);
        const Text b = RandomText(random, 3);
        const auto lengthOf = [](auto firstOfA, auto endOfA, auto firstOfB, auto endOfB) {
            return static_cast<std::size_t>(std::mismatch(firstOfA, endOfA, firstOfB, endOfB).first -
                                            firstOfA);
        };
        const Text beginA = common + a;
        const Text beginB = common + b;
        EXPECT_EQ(CommonBeginning(beginA, beginB),
                  lengthOf(beginA.begin(), beginA.end(), beginB.begin(), beginB.end()));
        const Text endA = a + common;
        const Text endB = b + common;
        EXPECT_EQ(CommonEnding(endA, endB), lengthOf(endA.rbegin(), endA.rend(), endB.rbegin(), endB.rend()));
    }
}

TEST(TextScan, FindsNothingInAnEmptyText) {
    EXPECT_EQ(FindCharacter({}, u'a'), TextView::npos);
    EXPECT_EQ(FindExactly({}, u"a"), TextView::npos);
    EXPECT_EQ(CommonBeginning({}, u"a"), 0U);
    EXPECT_EQ(CommonEnding(u"a", {}), 0U);
}

}  // namespace
}  // namespace lintara

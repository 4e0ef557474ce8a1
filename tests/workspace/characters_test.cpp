// Texts are found without regard to case, character by character as simple case folding has it.
#include "workspace/characters.h"

#include "tests/support/random.h"

#include <algorithm>
#include <array>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::Random;

std::size_t PlainlyFound(TextView text, TextView sought, std::size_t from) {
    for (std::size_t at = from; at + sought.size() <= text.size(); ++at) {
        if (SameName(text.substr(at, sought.size()), sought)) {
            return at;
        }
    }
    return TextView::npos;
}

Text RandomText(Random& random, std::size_t longest) {
    // The Kelvin sign folds to "k", the long s to "s".
    constexpr std::array<char16_t, 12> characters{u'k', u'K', u's', u'S',      u'e',      u'@',
                                                  u'`', u' ', u'1', u'\u212A', u'\u017F', u'\u00C9'};
    Text text(random.Below(longest + 1), u'a');
    std::ranges::generate(text, [&] { return random.Pick(characters); });
    return text;
}

TEST(FindWithoutCase, FindsWhatALookAtEveryPlaceFinds) {
    Random random(7);
    std::size_t found = 0;
    for (int i = 0; i < 50'000; ++i) {
        const Text text = RandomText(random, 40);
        const Text sought = RandomText(random, 3) + RandomText(random, 1);
        const std::size_t from = random.Below(text.size() + 1);
        const std::size_t expected = PlainlyFound(text, sought, from);
        found += expected != TextView::npos ? 1 : 0;
        ASSERT_EQ(FindWithoutCase(text, sought, from), expected)
            << testing::PrintToString(sought) << " in " << testing::PrintToString(text) << " from " << from;
    }
    EXPECT_GT(found, 10'000U);
}

TEST(FindWithoutCase, LettersBeyondAsciiMayFoldToAscii) {
    EXPECT_EQ(FindWithoutCase(u"some text, 20 \u212Aelvin", u"kelvin"), 14U);
    EXPECT_EQ(FindWithoutCase(u"some text, 20 kelvin", u"\u212AELVIN"), 14U);
    EXPECT_EQ(FindWithoutCase(u"a line that holds \u017Felect", u"Select"), 18U);
}

TEST(FindWithoutCase, CharactersThatDifferInOneBitAreNotTheSame) {
    EXPECT_EQ(FindWithoutCase(u"a@b@c@d@e@f", u"`"), TextView::npos);
    EXPECT_EQ(FindWithoutCase(u"[[[[[[[[[[{", u"{"), 10U);
}

}  // namespace
}  // namespace lintara::workspace

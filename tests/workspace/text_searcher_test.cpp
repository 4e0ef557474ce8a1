#include "workspace/text_searcher.h"

#include "tests/support/random.h"

#include <vector>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using Places = std::vector<std::size_t>;

Places All(TextView text, TextView sought, std::size_t from = 0) {
    Places places;
    TextSearcher(Text(sought)).ForEach(text, from, [&](std::size_t at) {
        places.push_back(at);
        return false;
    });
    return places;
}

TEST(TextSearcher, FindsAllPlacesOverlappingOnesIncluded) {
    EXPECT_EQ(All(u"aaaa", u"aa"), (Places{0, 1, 2}));
    EXPECT_EQ(All(u"abababa", u"aba"), (Places{0, 2, 4}));
    EXPECT_EQ(All(u"abc", u"abc"), (Places{0}));
    EXPECT_EQ(All(u"abc", u"c"), (Places{2}));
    EXPECT_EQ(All(u"ab", u"abc"), Places{});
    EXPECT_EQ(All(u"", u"a"), Places{});
}

TEST(TextSearcher, BeginsWhereItIsTold) {
    EXPECT_EQ(All(u"abab", u"ab", 1), (Places{2}));
    EXPECT_EQ(All(u"abab", u"ab", 3), Places{});
    EXPECT_EQ(All(u"abab", u"ab", 4), Places{});
    EXPECT_EQ(All(u"abab", u"ab", 99), Places{});
}

TEST(TextSearcher, AnEmptyTextStandsAtEveryCharacter) {
    EXPECT_EQ(All(u"abc", u"", 1), (Places{1, 2}));
    EXPECT_EQ(All(u"", u""), Places{});
}

TEST(TextSearcher, StopsWhenItIsTold) {
    int visits = 0;
    TextSearcher(u"a").ForEach(u"aaaa", 0, [&](std::size_t at) {
        ++visits;
        return at == 1;
    });
    EXPECT_EQ(visits, 2);
}

TEST(TextSearcher, FindsWhatAPlainSearchFinds) {
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        support::Random random(seed);
        const auto letters = [&](std::size_t size) {
            Text text;
            while (text.size() < size) {
                text += static_cast<char16_t>(u'a' + random.Below(2));
            }
            return text;
        };
        const Text text = letters(60);
        const Text sought = letters(1 + random.Below(6));
        Places places;
        for (std::size_t at = text.find(sought); at != Text::npos; at = text.find(sought, at + 1)) {
            places.push_back(at);
        }
        ASSERT_EQ(All(text, sought), places) << "seed " << seed;
    }
}

}  // namespace
}  // namespace lintara::workspace

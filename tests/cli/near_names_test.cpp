#include "cli/scope/near_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<Text> names = {u"Invoice", u"Invoices", u"Customer", u"Main", u"Total"};

TEST(NearNames, ComeBestFirst) {
    EXPECT_THAT(NearNames(u"Invoces", names), ElementsAre(u"Invoices", u"Invoice"));
    EXPECT_THAT(NearNames(u"TOTEL", names), ElementsAre(u"Total"));
}

TEST(NearNames, IncludeNamesThatWereBegun) {
    EXPECT_THAT(NearNames(u"cust", names), ElementsAre(u"Customer"));
}

TEST(NearNames, AreNoneWhenNothingIsNear) {
    EXPECT_THAT(NearNames(u"Zebra", names), IsEmpty());
    EXPECT_EQ(Suggestion(u"Zebra", names), "");
}

TEST(NearNames, MakeASentence) {
    EXPECT_EQ(Suggestion(u"mian", std::vector<Text>{u"Main"}), " Did you mean Main?");
    EXPECT_EQ(Suggestion(u"Invoice1", names), " Did you mean Invoice or Invoices?");
}

TEST(NearNames, OfTheSameTextComeOnce) {
    EXPECT_THAT(NearNames(u"ab", std::vector<Text>{u"abc", u"abc"}), ElementsAre(u"abc"));
}

}  // namespace
}  // namespace lintara::cli

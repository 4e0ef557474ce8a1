#include "forms/scale.h"

#include <gtest/gtest.h>

namespace lintara::forms {
namespace {

constexpr double designed = 1.0 / TwipsPerPixel;

TEST(Scale, PixelsComeBackFromTwipsAsTheyWere) {
    for (const double growth : {1.0, 1.25, 1.37, 2.0}) {
        const Scale scale(designed * growth, designed * growth);
        for (int pixels = -50; pixels < 2000; ++pixels) {
            ASSERT_EQ(scale.X(scale.TwipsOfX(pixels)), pixels) << growth;
            ASSERT_EQ(scale.Y(scale.TwipsOfY(pixels)), pixels) << growth;
        }
    }
}

TEST(Scale, GrowsAsFarAsTheScreenAllows) {
    Scale scale(designed, designed);
    scale.LimitGrowth({1500, 1500}, {.width = 150, .height = 1000});
    scale.GrowToFit({150, 150}, {.width = 12, .height = 0});
    EXPECT_EQ(scale.X(150), 12);
    EXPECT_EQ(scale.Y(150), 10);
    scale.GrowToFit({150, 150}, {.width = 100, .height = 30});
    EXPECT_EQ(scale.X(1500), 150);
    EXPECT_EQ(scale.Y(150), 30);
}

TEST(Scale, IsNotLimitedBelowWhatItIs) {
    Scale scale(designed, designed);
    scale.LimitGrowth({1500, 1500}, {.width = 10, .height = 10});
    scale.GrowToFit({150, 150}, {.width = 100, .height = 100});
    EXPECT_EQ(scale.X(1500), 100);
    EXPECT_EQ(scale.Y(1500), 100);
}

}  // namespace
}  // namespace lintara::forms

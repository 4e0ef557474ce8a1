#include "ui/qt/scale.h"

#include "forms/font.h"
#include "ui/qt/fonts.h"
#include "ui/qt/system_colors.h"

#include <QApplication>
#include <QFontInfo>
#include <QPalette>

#include <gtest/gtest.h>

namespace lintara::ui {
namespace {

TEST(ScaleTest, TheDesignsOwnIsAPixelForFifteenTwips) {
    const Scale scale;
    EXPECT_EQ(scale.X(1500), 100);
    EXPECT_EQ(scale.Y(22), 1);
    EXPECT_EQ(scale.Y(-15), -1);
}

TEST(ScaleTest, IsLargerForLargerLettersAndNeverSmallerThanTheDesign) {
    const Scale ordinary(QFont(QStringLiteral("DejaVu Sans"), 9));
    const Scale large(QFont(QStringLiteral("DejaVu Sans"), 13));
    const Scale tiny(QFont(QStringLiteral("DejaVu Sans"), 4));
    EXPECT_GT(large.PreciseX(1500), 1.3 * ordinary.PreciseX(1500));
    EXPECT_GT(large.PreciseY(1500), 1.3 * ordinary.PreciseY(1500));
    EXPECT_EQ(tiny, Scale());
}

TEST(ScaleTest, PixelsComeBackFromTwipsAsTheyWere) {
    const Scale scale(QFont(QStringLiteral("DejaVu Sans"), 11));
    for (int pixels = -50; pixels < 2000; ++pixels) {
        ASSERT_EQ(scale.X(scale.TwipsOfX(pixels)), pixels);
        ASSERT_EQ(scale.Y(scale.TwipsOfY(pixels)), pixels);
    }
}

TEST(ScaleTest, NeighboursThatTouchInTwipsTouchInPixels) {
    const Scale scale(QFont(QStringLiteral("DejaVu Sans"), 11));
    const QRect left = scale.ToPixels(forms::Rect{7, 0, 101, 50});
    const QRect right = scale.ToPixels(forms::Rect{108, 0, 77, 50});
    EXPECT_EQ(left.x() + left.width(), right.x());
}

TEST(FontTest, TheDesktopDecidesTheSizeAndTheFormTheRelation) {
    const QFont ordinary = DesktopFont({});
    EXPECT_EQ(ordinary.pointSizeF(), QApplication::font().pointSizeF());
    const QFont code = DesktopFont({.name = u"Courier New", .points = 16.5, .bold = true});
    EXPECT_EQ(code.pointSizeF(), 2 * QApplication::font().pointSizeF());
    EXPECT_TRUE(QFontInfo(code).fixedPitch());
    EXPECT_TRUE(code.bold());
}

TEST(ColorTest, SystemColorsAreThoseOfThePalette) {
    const std::pair<forms::Color, QPalette::ColorRole> cases[] = {
        {forms::Color::WindowBackground, QPalette::Base}, {forms::Color::WindowText, QPalette::Text},
        {forms::Color::Highlight, QPalette::Highlight},   {forms::Color::ButtonFace, QPalette::Window},
        {forms::Color::ButtonShadow, QPalette::Dark},     {forms::Color::ButtonText, QPalette::ButtonText},
        {forms::Color::ButtonHighlight, QPalette::Light},
    };
    QPalette palette;
    for (const auto& [color, role] : cases) {
        palette.setColor(role, QColor(1, 2, 3 + role));
    }
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(7, 8, 9));
    for (const auto& [color, role] : cases) {
        EXPECT_EQ(ResolvedColor(color, palette), QColor(1, 2, 3 + role)) << role;
    }
    EXPECT_EQ(ResolvedColor(forms::Color::GrayText, palette), QColor(7, 8, 9));
    EXPECT_EQ(ResolvedColor(static_cast<forms::Color>(0x00112233), palette), QColor(0x33, 0x22, 0x11));
}

TEST(ColorTest, AColorThatCannotBeReadIsMadeReadable) {
    const QColor blue(0x30, 0x8C, 0xC6);
    EXPECT_GT(ReadableColor(blue, QColor(30, 30, 30)).lightness(), blue.lightness() - 1);
    EXPECT_GT(ReadableColor(QColor(0, 0, 120), QColor(30, 30, 30)).lightness(), 100);
    EXPECT_LT(ReadableColor(QColor(255, 255, 200), Qt::white).lightness(), 140);
    EXPECT_EQ(ReadableColor(Qt::black, Qt::white), QColor(Qt::black));
}

}  // namespace
}  // namespace lintara::ui

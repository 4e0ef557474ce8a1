#include "base/numbers.h"

#include "base/text.h"

#include <cfenv>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace lintara {
namespace {

std::string Show(TextView text) {
    return {text.begin(), text.end()};
}

void ExpectNumeric(std::initializer_list<TextView> texts) {
    for (const TextView text : texts) {
        EXPECT_TRUE(IsNumeric(text)) << '"' << Show(text) << '"';
    }
}

void ExpectNotNumeric(std::initializer_list<TextView> texts) {
    for (const TextView text : texts) {
        EXPECT_FALSE(IsNumeric(text)) << '"' << Show(text) << '"';
    }
}

TEST(IsNumericTest, DigitsAreANumber) {
    ExpectNumeric({u"0", u"10000", u"65534", u"00007"});
}

TEST(IsNumericTest, AtLeastOneDigitIsNeeded) {
    ExpectNotNumeric({u"", u" ", u".", u"-", u"+", u"$", u"()", u"(.)", u"$-", u",", u"e5", u".e5", u"&",
                      u"&H", u"&O", u"-."});
}

TEST(IsNumericTest, WordsAreNone) {
    ExpectNotNumeric({u"hErr", u"x=1", u"1x", u"x1", u"10_", u"1'", u"٣", u"１"});
}

TEST(IsNumericTest, WhiteSpaceMayStandAround) {
    ExpectNumeric({u" 1", u"1 ", u"\t1\r\n", u"\v\f 1 ", u" &H1 ", u" (1) "});
}

TEST(IsNumericTest, NoBlankMayStandInside) {
    ExpectNotNumeric(
        {u"1 2", u"- 1", u"1 -", u"$ 1", u"( 1)", u"(1 )", u"1 .5", u"1e 5", u"1 e5", u"&H 1", u"1\u00A0"});
}

TEST(IsNumericTest, OneSignMayStandBeforeOrAfter) {
    ExpectNumeric({u"-1", u"+1", u"1-", u"1+", u"-1.5", u"1.5e3-"});
    ExpectNotNumeric({u"--1", u"+-1", u"-1-", u"1--", u"-1+"});
}

TEST(IsNumericTest, DecimalsMayLackDigitsOnOneSide) {
    ExpectNumeric({u"1.5", u".5", u"5.", u"-.5", u"0.0"});
    ExpectNotNumeric({u"1.5.2", u"1..5"});
}

TEST(IsNumericTest, ExponentsAreWrittenWithEOrD) {
    ExpectNumeric({u"1e5", u"1E5", u"1d5", u"1D5", u"1e+5", u"1e-5", u"1.5e5", u".5d5", u"5.e5", u"1e007"});
    ExpectNotNumeric({u"1e", u"1d", u"1e+", u"1e5.5", u"1e5e5", u"1f5", u"1e,5", u"1e5,000"});
}

TEST(IsNumericTest, OneCurrencySignMayStandInFront) {
    ExpectNumeric({u"$1", u"-$1", u"$-1", u"$1,000.50", u"$1-"});
    ExpectNotNumeric({u"$$1", u"1$", u"€1", u"$"});
}

TEST(IsNumericTest, ThousandsSeparatorsStandInTheWholePartAfterItsFirstDigit) {
    ExpectNumeric({u"1,000", u"1,000,000.25", u"1,0", u"1,,0", u"1,", u"1,000e2"});
    ExpectNotNumeric({u",1", u"1.0,0", u"-,1", u".,1"});
}

TEST(IsNumericTest, ParenthesesMayStandAroundAnUnsignedNumber) {
    ExpectNumeric({u"(1)", u"(1,000.5)", u"($1)", u"$(1)", u"(1e5)"});
    ExpectNotNumeric({u"(1", u"1)", u"((1))", u"(-1)", u"-(1)", u"(1-)", u"(1)-", u")1("});
}

TEST(IsNumericTest, HexadecimalAndOctalNumbersHaveTheirPrefix) {
    ExpectNumeric({u"&H1F", u"&h1f", u"&HABCDEF", u"&O17", u"&o17", u"&HFFFFFFFFFFFFFFFF"});
    ExpectNotNumeric({u"&HG", u"&O8", u"&H1.5", u"-&H1", u"&H-1", u"&H1-", u"(&H1)", u"&X1", u"&1", u"&H1F&",
                      u"&H10000000000000000", u"0x10"});
}

TEST(IsNumericTest, ANumberBeyondTheRangeOfADoubleIsNone) {
    ExpectNumeric({u"1e308", u"1.7976931348623157e308", u"0.001e311", u"-1e308", u"0e999999999999999999999"});
    ExpectNotNumeric({u"1e309", u"1.8e308", u"-1e309", u"1d400", u"1e999999999999999999999"});
    EXPECT_TRUE(IsNumeric(Text(309, u'1')));
    EXPECT_FALSE(IsNumeric(Text(310, u'1')));
    EXPECT_TRUE(IsNumeric(Text(100'000, u'0') + u"1"));
}

TEST(IsNumericTest, ANumberTooSmallForADoubleIsZero) {
    ExpectNumeric({u"1e-400", u"1e-999999999999999999999", u"0.00001e-320"});
    EXPECT_EQ(CLng(u"1e-400"), 0);
    EXPECT_EQ(CLng(Text(u"0.") + Text(1000, u'0') + u"1"), 0);
}

TEST(CLngTest, ReadsEveryFormOfANumber) {
    EXPECT_EQ(CLng(u"10000"), 10000);
    EXPECT_EQ(CLng(u" -1,234 "), -1234);
    EXPECT_EQ(CLng(u"12-"), -12);
    EXPECT_EQ(CLng(u"(12)"), -12);
    EXPECT_EQ(CLng(u"$1.2e3"), 1200);
    EXPECT_EQ(CLng(u"1d3"), 1000);
    EXPECT_EQ(CLng(u"&H1F"), 31);
    EXPECT_EQ(CLng(u"&o17"), 15);
}

TEST(CLngTest, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(CLng(0.5), 0);
    EXPECT_EQ(CLng(1.5), 2);
    EXPECT_EQ(CLng(2.5), 2);
    EXPECT_EQ(CLng(-0.5), 0);
    EXPECT_EQ(CLng(-1.5), -2);
    EXPECT_EQ(CLng(-2.5), -2);
    EXPECT_EQ(CLng(2.5000001), 3);
    EXPECT_EQ(CLng(u"2.5"), 2);
    EXPECT_EQ(CLng(u"3.5"), 4);
}

TEST(CLngTest, RoundsAlikeInEveryRoundingMode) {
    for (const int mode : {FE_UPWARD, FE_DOWNWARD, FE_TOWARDZERO}) {
        std::fesetround(mode);
        EXPECT_EQ(CLng(2.5), 2);
        EXPECT_EQ(CLng(3.5), 4);
    }
    std::fesetround(FE_TONEAREST);
}

TEST(CLngTest, ANumberOutsideTheRangeIsAnOverflow) {
    EXPECT_EQ(CLng(u"2147483647"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(CLng(u"2147483647.4"), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(CLng(u"-2147483648.5"), std::numeric_limits<std::int32_t>::min());
    for (const double number : {2147483647.5, 2147483648.0, -2147483648.6, 1e300, HUGE_VAL, std::nan("")}) {
        const auto result = CLng(number);
        ASSERT_FALSE(result) << number;
        EXPECT_EQ(result.error().number, ErrorNumber::Overflow);
    }
    EXPECT_EQ(CLng(u"2147483648").error().number, ErrorNumber::Overflow);
}

TEST(CLngTest, ATextThatIsNoNumberIsATypeMismatch) {
    for (const TextView text : {u"", u"abc", u"1x", u"1e309", u"&H"}) {
        const auto result = CLng(text);
        ASSERT_FALSE(result) << Show(text);
        EXPECT_EQ(result.error().number, ErrorNumber::TypeMismatch);
    }
}

TEST(CLngTest, HexadecimalDigitsAreTheBitsOfTheResult) {
    EXPECT_EQ(CLng(u"&HFFFF"), 65535);
    EXPECT_EQ(CLng(u"&HFFFFFFFF"), -1);
    EXPECT_EQ(CLng(u"&H80000000"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(CLng(u"&H100000000").error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CInt(u"&HFFFF"), -1);
    EXPECT_EQ(CInt(u"&H10000").error().number, ErrorNumber::Overflow);
}

TEST(CIntTest, HasSixteenBits) {
    EXPECT_EQ(CInt(u"32767"), 32767);
    EXPECT_EQ(CInt(u"-32768"), -32768);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(CInt(32767.5).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CInt(u"32768").error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CInt(-32768.5), -32768);
    EXPECT_EQ(CInt(-32768.51).error().number, ErrorNumber::Overflow);
    EXPECT_EQ(CInt(u"1.5"), 2);
    EXPECT_EQ(CInt(u"one").error().number, ErrorNumber::TypeMismatch);
}

TEST(CStrTest, HasNoBlankInFrontAndNoLeadingZero) {
    EXPECT_EQ(CStr(0), u"0");
    EXPECT_EQ(CStr(10015), u"10015");
    EXPECT_EQ(CStr(-3), u"-3");
    EXPECT_EQ(CStr(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

TEST(CStrTest, AppendsBehindWhatIsThere) {
    Text text = u"line ";
    AppendDecimal(text, 42);
    EXPECT_EQ(text, u"line 42");
}

}  // namespace
}  // namespace lintara

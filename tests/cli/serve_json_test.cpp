// What a line of the endpoint may hold, and how numbers are read.
#include "cli/serve/json_number.h"
#include "cli/serve/json_reader.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

TEST(JsonNumber, IsWholeByItsValue) {
    struct Case {
        std::string_view text;
        std::int64_t value;
    };
    for (const auto& [text, value] :
         {Case{"0", 0}, Case{"-0", 0}, Case{"7", 7}, Case{"-7", -7}, Case{"1.0", 1}, Case{"1e3", 1000},
          Case{"1E+3", 1000}, Case{"12.50e1", 125}, Case{"1000e-3", 1}, Case{"0.001e3", 1},
          Case{"0e999999999999999999999", 0}, Case{"0.000", 0},
          Case{"999999999999999999", 999999999999999999}, Case{"-2147483648", -2147483648},
          Case{"1.20e1", 12}}) {
        EXPECT_EQ(WholeValue(text), value) << text;
    }
}

TEST(JsonNumber, IsAFractionByItsValue) {
    for (const std::string_view text :
         {"0.5", "1.5", "1e-1", "15e-1", "1e-400", "1e-999999999999999999999", "1.000000000000000000001"}) {
        EXPECT_EQ(WholeValue(text), std::unexpected(NotWhole::Fraction)) << text;
    }
}

TEST(JsonNumber, IsTooLargeByItsValue) {
    for (const std::string_view text :
         {"1000000000000000000", "1e18", "1e400", "1e999999999999999999999", "-1e19", "1.5e30"}) {
        EXPECT_EQ(WholeValue(text), std::unexpected(NotWhole::TooLarge)) << text;
    }
}

TEST(JsonNumber, ExponentsAreTamedOutsideOfTexts) {
    const TamedNumbers tamed = TameNumbers(R"([1e400, "1e5 \" 2e6", -3E-7, 4, "\\", 5e, 6e7])");
    EXPECT_EQ(tamed.text, R"([1e300, "1e5 \" 2e6", 1e300, 4, "\\", 5e, 1e300])");
    EXPECT_THAT(tamed.replaced, testing::ElementsAre("1e400", "-3E-7", "6e7"));
}

std::string NumberIn(std::string_view line) {
    const auto value = ReadJson(line);
    const auto* number = value ? value->As<JsonNumber>() : nullptr;
    return number == nullptr ? "no number" : number->text;
}

TEST(JsonReader, NumbersKeepTheirText) {
    for (const std::string text :
         {"0", "-0", "1", "-1", "18446744073709551615", "18446744073709551616", "-9223372036854775809",
          "1.50", "1e3", "1E+3", "1e400", "-1e-400", "1e300", "0.1000000000000000055511151231257827"}) {
        EXPECT_EQ(NumberIn(text), text);
        EXPECT_EQ(NumberIn(" " + text + " "), text);
    }
    const std::string digits(400, '9');
    EXPECT_EQ(NumberIn(digits), digits);
}

TEST(JsonReader, NumbersBeyondRangeStandBesideOthers) {
    const auto value = ReadJson(R"([1e300, 1e999, "1e300", 2e5, 1e300])");
    ASSERT_TRUE(value);
    std::vector<std::string> texts;
    for (const JsonValue& each : *value->As<JsonArray>()) {
        const auto* number = each.As<JsonNumber>();
        texts.push_back(number != nullptr ? number->text : *each.As<std::string>());
    }
    EXPECT_THAT(texts, testing::ElementsAre("1e300", "1e999", "1e300", "2e5", "1e300"));
}

TEST(JsonReader, RefusesWhatIsMalformed) {
    using namespace std::string_literals;
    for (const std::string& line : {""s,
                                    " "s,
                                    "{"s,
                                    "}"s,
                                    "[1,]"s,
                                    "{\"a\":1,}"s,
                                    "nul"s,
                                    "'a'"s,
                                    "01"s,
                                    "1."s,
                                    ".5"s,
                                    "+1"s,
                                    "1e"s,
                                    "NaN"s,
                                    "[1] [2]"s,
                                    "{} x"s,
                                    "\"a"s,
                                    "\"\t\""s,
                                    "\"\\x\""s,
                                    "\"\xff\""s,
                                    "\"\xc0\xaf\""s,
                                    "\"\xed\xa0\x80\""s,
                                    "\"\\ud800\""s,
                                    "\"\\udc00\""s,
                                    "\"\\ud800\\u0041\""s,
                                    "{}\0"s,
                                    "{}\0{}"s,
                                    "\"\0\""s,
                                    "// a\n{}"s,
                                    "{\"a\":1,\"a\":2}"s,
                                    "[{\"b\":{\"a\":1,\"x\":0,\"a\":1}}]"s,
                                    "{1:2}"s,
                                    "1e400e"s,
                                    "[1e400"s,
                                    "\xff\xfe{}"s}) {
        EXPECT_FALSE(ReadJson(line)) << line;
    }
}

TEST(JsonReader, NestsThirtyTwoDeep) {
    const std::string deep = std::string(deepestNesting, '[') + std::string(deepestNesting, ']');
    EXPECT_TRUE(ReadJson(deep));
    EXPECT_THAT(ReadJson("[" + deep + "]").error(), HasSubstr("deeper than 32"));
    EXPECT_FALSE(ReadJson(std::string(10'000'000, '[')));
    std::string objects;
    for (int i = 0; i < 100'000; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_FALSE(ReadJson(objects));
}

TEST(JsonReader, CountsValues) {
    std::string many = "[0";
    for (std::size_t i = 2; i < mostValues; ++i) {
        many += ",0";
    }
    EXPECT_TRUE(ReadJson(many + "]"));
    EXPECT_THAT(ReadJson(many + ",0]").error(), HasSubstr("more than 4000000 values"));
}

TEST(JsonReader, ErrorsStayShort) {
    const auto value = ReadJson('"' + std::string(1'000'000, 'x') + "\x01\"");
    ASSERT_FALSE(value);
    EXPECT_LT(value.error().size(), 300U);
    EXPECT_THAT(value.error(), HasSubstr("the line is no JSON"));
    const std::string member = '"' + std::string(1'000'000, 'x') + "\":1";
    const auto twice = ReadJson("{" + member + "," + member + "}");
    ASSERT_FALSE(twice);
    EXPECT_LT(twice.error().size(), 300U);
    EXPECT_THAT(twice.error(), HasSubstr("stands twice"));
}

}  // namespace
}  // namespace lintara::cli

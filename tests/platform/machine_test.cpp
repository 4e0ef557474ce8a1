#include "base/utf8.h"
#include "platform/machine_identity.h"
#include "platform/memory_settings.h"
#include "platform/regional_texts.h"
#include "platform/system_clock.h"
#include "tests/support/other_process.h"
#include "tests/support/temporary_folder.h"

#include <chrono>
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

constexpr LocalTime moment{.year = 2024, .month = 3, .day = 9, .hour = 17, .minute = 5, .second = 0};

TEST(MemorySettings, GiveBackWhatWasSaved) {
    MemorySettings store;
    EXPECT_EQ(store.Find({u"A", u"B", u"C"}), std::nullopt);
    ASSERT_TRUE(store.Save({u"A", u"B", u"C"}, u"\r\nx"));
    EXPECT_EQ(store.Find({u"A", u"B", u"C"}), u"\r\nx");
    EXPECT_EQ(store.Find({u"A", u"B", u"c"}), std::nullopt);
    EXPECT_EQ(store.Find({u"A", u"BC", u""}), std::nullopt);
}

std::tuple<int, int, int, int, int, int> Parts(const LocalTime& t) {
    return {t.year, t.month, t.day, t.hour, t.minute, t.second};
}

LocalTime Of(std::time_t time) {
    std::tm local{};
    ::localtime_r(&time, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
}

TEST(SystemClock, TellsTheLocalTime) {
    ::setenv("TZ", "Asia/Kolkata-5:30", 1);
    ::tzset();
    const std::time_t before = std::time(nullptr);
    const auto now = SystemClock().Now();
    const std::time_t after = std::time(nullptr);
    ASSERT_TRUE(now);
    EXPECT_LE(Parts(Of(before)), Parts(*now));
    EXPECT_LE(Parts(*now), Parts(Of(after)));
    ::unsetenv("TZ");
    ::tzset();
}

TEST(SystemClock, NoticesAnotherTimeZone) {
    const auto minutesIn = [](const char* zone) {
        ::setenv("TZ", zone, 1);
        const LocalTime now = SystemClock().Now().value_or(LocalTime());
        ::unsetenv("TZ");
        return now.hour * 60 + now.minute;
    };
    const int utc = minutesIn("UTC0");
    const int east = minutesIn("XXX-5:30");
    EXPECT_NEAR((east - utc + 24 * 60) % (24 * 60), 330, 1);
    ::tzset();
}

TEST(RegionalTexts, AreUnmistakableWhereNobodyChose) {
    for (const char* locale : {"", "C", "POSIX", "C.UTF-8", "C.utf8", "xx_XX.no-such-locale"}) {
        SystemRegionalTexts texts{std::string(locale)};
        EXPECT_EQ(texts.Date(moment), u"2024-03-09") << locale;
        EXPECT_EQ(texts.Time(moment), u"17:05:00") << locale;
    }
}

TEST(RegionalTexts, FailForATimeThatIsNone) {
    SystemRegionalTexts texts{std::string("C")};
    const LocalTime none[] = {{2023, 2, 29, 0, 0, 0}, {2024, 13, 1, 0, 0, 0}, {2024, 0, 1, 0, 0, 0},
                              {2024, 1, 32, 0, 0, 0}, {2024, 1, 1, 24, 0, 0}, {2024, 1, 1, 0, 60, 0},
                              {2024, 1, 1, 0, 0, -1}, {2024, -1, 1, 0, 0, 0}};
    for (const LocalTime& time : none) {
        EXPECT_FALSE(texts.Date(time));
        EXPECT_FALSE(texts.Time(time));
    }
    EXPECT_TRUE(texts.Date({2024, 2, 29, 23, 59, 59}));
}

TEST(RegionalTexts, AreThoseOfTheEnvironment) {
    ::setenv("LC_ALL", "", 1);
    ::setenv("LC_TIME", "C", 1);
    ::setenv("LANG", "xx_XX", 1);
    EXPECT_EQ(SystemRegionalTexts().Date(moment), u"2024-03-09");
    ::unsetenv("LC_ALL");
    ::unsetenv("LC_TIME");
    ::unsetenv("LANG");
    EXPECT_EQ(SystemRegionalTexts().Date(moment), u"2024-03-09");
}

// Locales that are made for the test, as those of the machine are unknown.
class RegionalTextsOfLocales : public testing::Test {
  protected:
    // False where the machine has no sources of locales.
    [[nodiscard]] bool Make(const std::string& source, const std::string& charset) const {
        const std::string command = "localedef -c -i " + source + " -f " + charset + " '" +
                                    (folder_ / (source + "." + charset)).string() + "' >/dev/null 2>&1";
        return std::system(command.c_str()) == 0;
    }

    // Date and time, read by a process of its own: the system's library looks for locales in the folder of
    // the test, and loses a little memory each time when it is told to look elsewhere than usual.
    [[nodiscard]] std::string TextsOf(const std::string& locale) const {
        return support::InOtherProcess([&]() -> std::string {
            ::setenv("LOCPATH", folder_.path().c_str(), 1);
            const std::string before = std::setlocale(LC_ALL, nullptr);
            SystemRegionalTexts texts{locale};
            const std::string all = ToUtf8(texts.Date(moment).value_or(u"fails")) + " " +
                                    ToUtf8(texts.Time(moment).value_or(u"fails"));
            const bool isUnchanged =
                std::setlocale(LC_ALL, nullptr) == before && ::uselocale(locale_t{}) == LC_GLOBAL_LOCALE;
            return all + (isUnchanged ? "" : ", and the process has another locale");
        });
    }

    support::TemporaryFolder folder_;
};

TEST_F(RegionalTextsOfLocales, FollowTheLocale) {
    if (!Make("de_DE", "UTF-8") || !Make("en_US", "UTF-8")) {
        GTEST_SKIP() << "no sources of locales";
    }
    EXPECT_EQ(TextsOf("de_DE.UTF-8"), "09.03.2024 17:05:00");
    EXPECT_EQ(TextsOf("en_US.UTF-8"), "03/09/2024 05:05:00 PM");
}

TEST_F(RegionalTextsOfLocales, AreDecodedFromTheCharacterSetOfTheLocale) {
    if (!Make("ja_JP", "EUC-JP") || !Make("ja_JP", "UTF-8")) {
        GTEST_SKIP() << "no sources of locales";
    }
    EXPECT_EQ(TextsOf("ja_JP.UTF-8"), "2024年03月09日 17時05分00秒");
    EXPECT_EQ(TextsOf("ja_JP.EUC-JP"), "2024年03月09日 17時05分00秒");
}

TEST(MachineIdentity, TellsTheNames) {
    MachineIdentity identity;
    EXPECT_FALSE(identity.ComputerName().value_or(Text()).empty());
    EXPECT_FALSE(identity.UserName().value_or(Text()).empty());
}

}  // namespace
}  // namespace lintara::platform

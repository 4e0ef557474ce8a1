// What Windows tells about itself, compared with what its own programs are told.
#ifdef _WIN32

#include "platform/machine_identity.h"
#include "platform/regional_texts.h"
#include "platform/system_clock.h"
#include "platform/system_files.h"
#include "platform/system_screen.h"
#include "platform/wide_text.h"

#include <array>
#include <string>
#include <tuple>
#include <windows.h>

#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

constexpr LocalTime moment{.year = 2024, .month = 3, .day = 9, .hour = 17, .minute = 5, .second = 0};

Text Environment(const wchar_t* name) {
    std::array<wchar_t, 512> value{};
    ::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size()));
    return FromWide(value.data());
}

Text UsersLocale(LCTYPE which) {
    std::array<wchar_t, 128> value{};
    ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, which, value.data(), static_cast<int>(value.size()));
    return FromWide(value.data());
}

TEST(MachineIdentity, KnowsTheComputerAndTheUser) {
    EXPECT_EQ(MachineIdentity().ComputerName(), Environment(L"COMPUTERNAME"));
    EXPECT_EQ(MachineIdentity().UserName(), Environment(L"USERNAME"));
    EXPECT_NE(MachineIdentity().UserName(), u"");
}

TEST(SystemClock, TellsTheLocalTime) {
    const auto parts = [](const SYSTEMTIME& t) {
        return std::tuple<int, int, int, int, int, int>(t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
                                                        t.wSecond);
    };
    SYSTEMTIME before{};
    SYSTEMTIME after{};
    ::GetLocalTime(&before);
    const auto now = SystemClock().Now();
    ::GetLocalTime(&after);
    ASSERT_TRUE(now);
    const std::tuple told(now->year, now->month, now->day, now->hour, now->minute, now->second);
    EXPECT_LE(parts(before), told);
    EXPECT_LE(told, parts(after));
}

TEST(RegionalTexts, AreThoseOfALocale) {
    SystemRegionalTexts american{std::string("en-US")};
    // With two or four digits of the year, as the system's release has it.
    EXPECT_TRUE(american.Date(moment).value_or(u"").starts_with(u"3/9/"));
    EXPECT_EQ(american.Time(moment), u"5:05:00 PM");
    SystemRegionalTexts french{std::string("fr-FR")};
    EXPECT_TRUE(french.Date(moment).value_or(u"").starts_with(u"09/03/"));
    EXPECT_EQ(french.Time(moment), u"17:05:00");
}

// The user's own formats, not those of the locale that they came with.
TEST(RegionalTexts, FollowTheUsersSettings) {
    const Text date = UsersLocale(LOCALE_SSHORTDATE);
    const Text time = UsersLocale(LOCALE_STIMEFORMAT);
    ASSERT_NE(::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, L"yyyy'x'MM'y'dd"), 0);
    ASSERT_NE(::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, L"HH'h'mm'm'ss"), 0);
    SystemRegionalTexts texts;
    EXPECT_EQ(texts.Date(moment), u"2024x03y09");
    EXPECT_EQ(texts.Time(moment), u"17h05m00");
    ::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, ToWide(date).c_str());
    ::SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STIMEFORMAT, ToWide(time).c_str());
}

TEST(RegionalTexts, FailForATimeThatIsNone) {
    SystemRegionalTexts texts;
    EXPECT_FALSE(texts.Date({2023, 2, 29, 0, 0, 0}));
    EXPECT_FALSE(texts.Date({2024, 13, 1, 0, 0, 0}));
    EXPECT_FALSE(texts.Time({2024, 1, 1, 24, 0, 0}));
    EXPECT_TRUE(texts.Date({2024, 2, 29, 23, 59, 59}));
}

TEST(RegionalTexts, FailForALocaleThatIsNone) {
    SystemRegionalTexts texts{std::string("no such locale")};
    EXPECT_FALSE(texts.Date(moment));
    EXPECT_FALSE(texts.Time(moment));
}

TEST(SystemFiles, KnowWhereThisCodeLies) {
    const Text file = LibraryFile();
    ASSERT_GT(file.size(), 4U);
    EXPECT_EQ(file.substr(1, 2), u":\\");
    EXPECT_TRUE(file.ends_with(u".exe"));
    EXPECT_TRUE(FileExists(file));
    EXPECT_TRUE(file.starts_with(LibraryFolder() + u"\\"));
    EXPECT_FALSE(LibraryFolder().ends_with(u'\\'));
}

TEST(SystemFiles, AFolderIsNoFile) {
    using namespace std::string_view_literals;
    EXPECT_FALSE(FileExists(LibraryFolder()));
    EXPECT_FALSE(FileExists(u""));
    EXPECT_FALSE(FileExists(LibraryFolder() + u"\\Assistants.mdb"));
    EXPECT_FALSE(FileExists(LibraryFolder() + u"\\*"));
    EXPECT_FALSE(FileExists(LibraryFile() + Text(u"\0x"sv)));
}

TEST(SystemScreen, ShowsTheHourglassAndTakesItAway) {
    SystemScreen screen;
    ASSERT_TRUE(screen.SetMousePointer(hostmodel::MousePointer::Hourglass));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_WAIT));
    ASSERT_TRUE(screen.SetMousePointer(hostmodel::MousePointer::Default));
    EXPECT_EQ(::GetCursor(), ::LoadCursorW(nullptr, IDC_ARROW));
}

}  // namespace
}  // namespace lintara::platform

#endif

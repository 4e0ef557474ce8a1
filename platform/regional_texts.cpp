#include "platform/regional_texts.h"

#include <array>
#include <chrono>
#include <string_view>
#include <utility>

#ifdef _WIN32
#include "platform/wide_text.h"

#include <windows.h>
#else
#include <clocale>
#include <cstdlib>
#include <ctime>
#include <cuchar>
#include <cwchar>
#endif

namespace lintara::platform {

namespace {

std::chrono::year_month_day DayOf(const LocalTime& time) {
    return {std::chrono::year(time.year), std::chrono::month(static_cast<unsigned>(time.month)),
            std::chrono::day(static_cast<unsigned>(time.day))};
}

bool IsTime(const LocalTime& time) {
    return time.month > 0 && time.month <= 12 && time.day > 0 && time.day <= 31 && DayOf(time).ok() &&
           time.hour >= 0 && time.hour < 24 && time.minute >= 0 && time.minute < 60 && time.second >= 0 &&
           time.second <= 60;
}

std::unexpected<HostError> NoTime() {
    return Failure(ErrorNumber::InvalidArgument, "there is no such date or time");
}

std::unexpected<HostError> NoText() {
    return Failure(ErrorNumber::HostFailure, "the regional settings cannot write the date or time");
}

}  // namespace

#ifdef _WIN32

namespace {

SYSTEMTIME SystemTimeOf(const LocalTime& time) {
    return {.wYear = static_cast<WORD>(time.year),
            .wMonth = static_cast<WORD>(time.month),
            .wDayOfWeek = 0,  // not looked at
            .wDay = static_cast<WORD>(time.day),
            .wHour = static_cast<WORD>(time.hour),
            .wMinute = static_cast<WORD>(time.minute),
            .wSecond = static_cast<WORD>(time.second),
            .wMilliseconds = 0};
}

const wchar_t* NameOf(const std::wstring& locale) {
    return locale.empty() ? LOCALE_NAME_USER_DEFAULT : locale.c_str();
}

// `length` counts the zero at the end; 0 when the call failed.
Result<Text> Written(const std::array<wchar_t, 256>& text, int length) {
    if (length <= 0) {
        return NoText();
    }
    return FromWide(std::wstring_view(text.data(), static_cast<std::size_t>(length) - 1));
}

}  // namespace

SystemRegionalTexts::SystemRegionalTexts() = default;

Result<Text> SystemRegionalTexts::Date(const LocalTime& time) {
    if (!IsTime(time)) {
        return NoTime();
    }
    const std::wstring locale(locale_.begin(), locale_.end());
    const SYSTEMTIME day = SystemTimeOf(time);
    std::array<wchar_t, 256> text{};
    return Written(text, ::GetDateFormatEx(NameOf(locale), DATE_SHORTDATE, &day, nullptr, text.data(),
                                           static_cast<int>(text.size()), nullptr));
}

Result<Text> SystemRegionalTexts::Time(const LocalTime& time) {
    if (!IsTime(time)) {
        return NoTime();
    }
    const std::wstring locale(locale_.begin(), locale_.end());
    const SYSTEMTIME moment = SystemTimeOf(time);
    std::array<wchar_t, 256> text{};
    return Written(text, ::GetTimeFormatEx(NameOf(locale), 0, &moment, nullptr, text.data(),
                                           static_cast<int>(text.size())));
}

#else

namespace {

// A locale for this thread, while it lives. Its character set is the one in which it writes.
class LocaleInUse {
  public:
    explicit LocaleInUse(const std::string& name)
        : locale_(::newlocale(LC_TIME_MASK | LC_CTYPE_MASK, name.c_str(), locale_t{})) {
        if (chosen()) {
            before_ = ::uselocale(locale_);
        }
    }
    LocaleInUse(const LocaleInUse&) = delete;
    LocaleInUse& operator=(const LocaleInUse&) = delete;
    ~LocaleInUse() {
        if (chosen()) {
            ::uselocale(before_);
            ::freelocale(locale_);
        }
    }

    [[nodiscard]] bool chosen() const { return locale_ != locale_t{}; }

  private:
    locale_t locale_;
    locale_t before_{};
};

bool IsNobodysChoice(std::string_view locale) {
    return locale.empty() || locale == "C" || locale == "POSIX" || locale.starts_with("C.");
}

std::tm BrokenDown(const LocalTime& time) {
    const std::chrono::sys_days day = DayOf(time);
    std::tm parts{};
    parts.tm_year = time.year - 1900;
    parts.tm_mon = time.month - 1;
    parts.tm_mday = time.day;
    parts.tm_hour = time.hour;
    parts.tm_min = time.minute;
    parts.tm_sec = time.second;
    parts.tm_wday = static_cast<int>(std::chrono::weekday(day).c_encoding());
    parts.tm_yday = static_cast<int>(
        (day - std::chrono::sys_days(std::chrono::year(time.year) / std::chrono::January / 1)).count());
    parts.tm_isdst = -1;
    return parts;
}

// From the character set of the locale in use.
Result<Text> Decoded(std::string_view bytes) {
    constexpr auto stored = static_cast<std::size_t>(-3);  // another code unit of the last character
    Text text;
    std::mbstate_t state{};
    while (!bytes.empty() || std::mbsinit(&state) == 0) {
        char16_t unit = 0;
        const std::size_t read = std::mbrtoc16(&unit, bytes.data(), bytes.size(), &state);
        if (read != stored && (read == 0 || read > bytes.size())) {
            return NoText();
        }
        text += unit;
        bytes.remove_prefix(read == stored ? 0 : read);
    }
    return text;
}

Result<Text> Formatted(const std::string& locale, const char* inLocale, const char* plain,
                       const LocalTime& time) {
    if (!IsTime(time)) {
        return NoTime();
    }
    const LocaleInUse inUse(IsNobodysChoice(locale) ? "C" : locale);
    const bool isChosen = inUse.chosen() && !IsNobodysChoice(locale);
    const std::tm parts = BrokenDown(time);
    std::array<char, 256> buffer{};
    const std::size_t length =
        std::strftime(buffer.data(), buffer.size(), isChosen ? inLocale : plain, &parts);
    if (length == 0) {
        return NoText();
    }
    return Decoded({buffer.data(), length});
}

}  // namespace

SystemRegionalTexts::SystemRegionalTexts() {
    for (const char* name : {"LC_ALL", "LC_TIME", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            locale_ = value;
            return;
        }
    }
}

Result<Text> SystemRegionalTexts::Date(const LocalTime& time) {
    return Formatted(locale_, "%x", "%Y-%m-%d", time);
}

Result<Text> SystemRegionalTexts::Time(const LocalTime& time) {
    return Formatted(locale_, "%X", "%H:%M:%S", time);
}

#endif

}  // namespace lintara::platform

#include "platform/system_clock.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <ctime>
#endif

namespace lintara::platform {

#ifdef _WIN32

Result<LocalTime> SystemClock::Now() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return LocalTime{now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

#else

Result<LocalTime> SystemClock::Now() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    // localtime_r alone would not notice that the user has changed the time zone.
    ::tzset();
    if (now == static_cast<std::time_t>(-1) || ::localtime_r(&now, &local) == nullptr) {
        return Failure(ErrorNumber::HostFailure, "the system cannot tell the time");
    }
    return LocalTime{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                     local.tm_hour,        local.tm_min,     local.tm_sec};
}

#endif

}  // namespace lintara::platform

// What time it is where the user sits, and how the user's regional settings write it.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <cstdint>

namespace lintara {

// A moment by the wall clock, in the calendar of everyday use.
struct LocalTime {
    std::int32_t year = 0;
    std::int32_t month = 1;  // from 1
    std::int32_t day = 1;    // from 1
    std::int32_t hour = 0;   // 0 to 23
    std::int32_t minute = 0;
    std::int32_t second = 0;

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

class Clock {
  public:
    virtual ~Clock() = default;

    [[nodiscard]] virtual Result<LocalTime> Now() = 0;
};

// Date and time as texts, in the system's short date format and its time format.
class RegionalTexts {
  public:
    virtual ~RegionalTexts() = default;

    [[nodiscard]] virtual Result<Text> Date(const LocalTime& time) = 0;
    [[nodiscard]] virtual Result<Text> Time(const LocalTime& time) = 0;
};

}  // namespace lintara

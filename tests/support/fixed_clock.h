// A clock that a test sets, and regional settings that are the same on every machine.
#pragma once

#include "base/clock.h"
#include "base/result.h"
#include "base/text.h"

#include <cstdint>
#include <string>

namespace lintara::support {

class FixedClock : public Clock {
  public:
    LocalTime time{.year = 2026, .month = 11, .day = 5, .hour = 17, .minute = 4, .second = 9};
    bool fails = false;
    std::size_t questions = 0;

    Result<LocalTime> Now() override {
        ++questions;
        return fails ? Result<LocalTime>(Failure(ErrorNumber::HostFailure, "the clock stands still")) : time;
    }
};

// "5/11/2026" and "17:4:9": the numbers as they are.
class FixedRegionalTexts : public RegionalTexts {
  public:
    bool datesFail = false;
    bool timesFail = false;

    Result<Text> Date(const LocalTime& time) override {
        return Joined(datesFail, {time.day, time.month, time.year}, '/');
    }
    Result<Text> Time(const LocalTime& time) override {
        return Joined(timesFail, {time.hour, time.minute, time.second}, ':');
    }

  private:
    struct Numbers {
        std::int32_t first;
        std::int32_t second;
        std::int32_t third;
    };

    static Result<Text> Joined(bool fails, Numbers numbers, char separator) {
        if (fails) {
            return Failure(ErrorNumber::HostFailure, "there are no regional settings");
        }
        const std::string text = std::to_string(numbers.first) + separator + std::to_string(numbers.second) +
                                 separator + std::to_string(numbers.third);
        return Text(text.begin(), text.end());
    }
};

}  // namespace lintara::support

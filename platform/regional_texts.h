// Date and time as the user's regional settings write them.
#pragma once

#include "base/clock.h"

#include <string>

namespace lintara::platform {

class SystemRegionalTexts final : public RegionalTexts {
  public:
    // The user's own settings: the short date format and the time format of Windows; elsewhere those of the
    // locale that the environment names (LC_ALL, else LC_TIME, else LANG).
    SystemRegionalTexts();

    // Those of the locale of that name.
    explicit SystemRegionalTexts(std::string locale) : locale_(std::move(locale)) {}

    // Where nobody has chosen a locale ("C", "POSIX"), or the chosen one is not installed, texts are of the
    // form 2024-03-09 and 17:05:00, which every reader understands alike. Both fail for a time that is none,
    // such as month 13. The locale of the process stays as it is.
    [[nodiscard]] Result<Text> Date(const LocalTime& time) override;
    [[nodiscard]] Result<Text> Time(const LocalTime& time) override;

  private:
    std::string locale_;  // of Windows: "en-US", and empty for the user's settings
};

}  // namespace lintara::platform

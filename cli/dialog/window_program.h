// The program `lintara-window`, which shows one window: found, asked in JSON, and its answer.
#pragma once

#include "cli/environment.h"
#include "cli/output/json_text.h"

#include <cstdint>
#include <expected>
#include <string>

namespace lintara::cli {

// What the user chose in a window, by the names that the window gives it. Reading what is not there, or is of
// another kind, throws std::runtime_error.
class WindowAnswer {
  public:
    explicit WindowAnswer(Json object) : object_(std::move(object)) {}

    [[nodiscard]] const Json& object() const { return object_; }
    // Whether the user confirmed. What an answer holds beyond that is there only then.
    [[nodiscard]] bool accepted() const { return Flag("accepted"); }

    [[nodiscard]] bool Flag(const char* name) const;
    [[nodiscard]] std::string TextOf(const char* name) const;
    // From `least` to `most`.
    [[nodiscard]] std::int32_t Number(const char* name, std::int32_t least, std::int32_t most) const;

  private:
    [[nodiscard]] const Json& Member(const char* name) const;

    Json object_;
};

// Shows the window that `request` asks for and returns when the user has closed it. The error says, as a
// sentence, why no window can be shown here: the program is not installed, or there is no display. When the
// program fails otherwise, throws std::runtime_error. What it says on its standard error is passed on.
[[nodiscard]] std::expected<WindowAnswer, std::string> AskWindow(const Json& request,
                                                                 Environment& environment);

}  // namespace lintara::cli

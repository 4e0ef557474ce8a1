// What a form needs of the machine that shows it.
#pragma once

#include "base/text.h"
#include "forms/color.h"

#include <cstdint>

namespace lintara::forms {

class Form;

// The icons and buttons of a message, as the platform numbers them.
enum class MessageStyle : std::int16_t { OkOnly = 0, Critical = 16, Exclamation = 48, Information = 64 };

enum class MousePointer : std::int16_t { Default = 0, Hourglass = 11 };

class Toolkit {
  public:
    virtual ~Toolkit() = default;

    // Shows the form, which is visible, and serves the user until it is not any more.
    virtual void RunModal(Form& form) = 0;

    // Shows a message until the user has answered it. With an empty title the application's name stands
    // above it.
    virtual void ShowMessage(TextView text, MessageStyle style, TextView title) = 0;

    // Shows the topic with the number `context` of a help file, and returns while it is shown.
    virtual void ShowHelp(TextView file, std::int32_t context) = 0;

    // Serves the events that are waiting: paints what was hidden or shown.
    virtual void DoEvents() = 0;

    virtual void SetMousePointer(MousePointer pointer) = 0;

    // The colour in red, green and blue, a system colour as the desktop has it at present.
    [[nodiscard]] virtual Color Resolve(Color color) const = 0;
};

}  // namespace lintara::forms

// A toolkit without a screen: a script does what the user would do with each form that is shown, and what the
// form asked for is recorded.
#pragma once

#include "base/text.h"
#include "forms/form.h"
#include "forms/toolkit.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lintara::support {

class ScriptedToolkit final : public forms::Toolkit {
  public:
    struct Message {
        Text text;
        forms::MessageStyle style = forms::MessageStyle::OkOnly;
        Text title;

        friend bool operator==(const Message&, const Message&) = default;
    };
    struct Help {
        Text file;
        std::int32_t context = 0;

        friend bool operator==(const Help&, const Help&) = default;
    };

    // What the user does with a form. A form that is still shown afterwards is closed by its close box.
    std::function<void(forms::Form&)> user;
    // What happens while the waiting events are served.
    std::function<void()> whileServing;

    std::vector<Message> messages;
    std::vector<Help> helps;
    std::vector<forms::MousePointer> pointers;
    int formsShown = 0;
    int eventsServed = 0;

    void RunModal(forms::Form& form) override {
        ++formsShown;
        if (user) {
            user(form);
        }
        if (form.Visible()) {
            form.Unload();
        }
    }
    void ShowMessage(TextView text, forms::MessageStyle style, TextView title) override {
        messages.push_back({Text(text), style, Text(title)});
    }
    void ShowHelp(TextView file, std::int32_t context) override { helps.push_back({Text(file), context}); }
    void DoEvents() override {
        ++eventsServed;
        if (whileServing) {
            whileServing();
        }
    }
    void SetMousePointer(forms::MousePointer pointer) override { pointers.push_back(pointer); }
    [[nodiscard]] forms::Color Resolve(forms::Color color) const override {
        return forms::IsSystemColor(color) ? forms::Color::Black : color;
    }
};

}  // namespace lintara::support

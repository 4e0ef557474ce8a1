// A test that shows the sample form and plays the user.
#pragma once

#include "base/statement.h"
#include "forms/form.h"
#include "tests/support/sample_form.h"
#include "tests/ui_win32/user.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::ui::win32 {

using support::Log;
using support::SampleForm;

// `user` plays the user while the form is shown; the form is hidden afterwards. Events from before are
// forgotten.
class ShownFormTest : public testing::Test {
  protected:
    template <class User>
    void Show(forms::Form& shown, User user) {
        bool hasPlayed = false;
        later.Post([&] {
            user(*toolkit.ActiveWindow());
            hasPlayed = true;
            shown.Hide();
        });
        shown.ShowModal(toolkit);
        EXPECT_TRUE(hasPlayed);
    }
    template <class User>
    void Show(User user) {
        Show(form, [&](FormWindow& window) {
            form.log.clear();
            user(window);
        });
    }

    void Press(WPARAM key, std::initializer_list<int> held = {}) { win32::Press(toolkit, key, held); }
    void PressAlt(char16_t character) { win32::PressAlt(toolkit, character); }
    void Type(TextView text) { win32::Type(toolkit, text); }

    Later later;
    Win32Toolkit toolkit{::GetModuleHandleW(nullptr)};
    SampleForm form;
};

}  // namespace lintara::ui::win32

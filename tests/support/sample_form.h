// A form with a control of every kind, which notes its events: for tests of what shows forms.
#pragma once

#include "base/statement.h"
#include "controls/db_panel.h"
#include "forms/buttons.h"
#include "forms/container.h"
#include "forms/drawing.h"
#include "forms/form.h"
#include "forms/label.h"
#include "forms/status_bar.h"
#include "forms/text_box.h"
#include "forms/tree_view.h"
#include "forms/up_down.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lintara::support {

using Log = std::vector<std::string>;

struct SampleForm final : forms::Form {
    SampleForm();

    forms::Label lblName{*this, u"lblName", {120, 120, 1200, 240}, u"&Name:"};
    forms::TextBox txtName{*this, u"txtName", {1440, 90, 2400, 315}, u"abc"};
    forms::Label lblCount{*this, u"lblCount", {120, 480, 1200, 240}, u"&Count:"};
    forms::TextBox txtCount{*this, u"txtCount", {1440, 450, 1200, 315}, u"5"};
    forms::UpDown udCount{*this, u"udCount", {2640, 450, 255, 315}, txtCount, {.min = 0, .max = 7}};
    forms::CheckBox chkOn{*this, u"chkOn", {120, 840, 2400, 270}, u"Switched &on"};
    controls::DBPanel panel{*this, u"panel", {120, 1200, 3720, 1080}};
    forms::OptionButton optOne{panel, u"opt(0)", {120, 90, 2400, 270}, u"O&ne"};
    forms::OptionButton optTwo{panel, u"opt(1)", {120, 405, 2400, 270}, u"&Two"};
    forms::OptionButton optThree{panel, u"opt(2)", {120, 720, 2400, 270}, u"T&hree"};
    forms::Label lblPage{*this, u"lblPage", {120, 2370, 1200, 240}, u"&Page:"};
    forms::TextBox txtPage{
        *this, u"txtPage", {120, 2640, 3720, 1200}, u"one\r\ntwo", forms::TextBox::Lines::Many};
    forms::TreeView tree{*this, u"tree", {3960, 90, 2400, 3750}};
    forms::Shape shape{*this, u"shape", {3900, 30, 2520, 3870}, forms::Color::ButtonShadow};
    forms::LineControl line{*this, u"line", {120, 3960, 6360, 3960}, forms::Color::ButtonShadow};
    forms::Frame frame{*this, u"frame", {120, 4050, 6240, 420}};
    forms::CommandButton cmdOk{frame, u"cmdOk", {0, 0, 1200, 390}, u"&Begin"};
    forms::CommandButton cmdCancel{frame, u"cmdCancel", {1320, 0, 1200, 390}, u"Cancel"};
    forms::CommandButton cmdMore{frame, u"cmdMore", {2640, 0, 1200, 390}, u"&More"};
    forms::StatusBar status{*this, u"status", {0, 4575, 6480, 345}};

    Log log;

  private:
    void Note(const char* event) { log.emplace_back(event); }
};

inline SampleForm::SampleForm() : Form(u"FSample", u"Sample", {6480, 4920}) {
    cmdOk.isDefault = true;
    cmdCancel.isCancel = true;
    optOne.SetValue(true);
    tree.description = u"Places";
    Resize.Handle([this] { Note("Resize"); });
    Unloading.Handle([this] { Note("Unload"); });
    txtName.Change.Handle([this] { Note("txtName_Change"); });
    txtName.GotFocus.Handle([this] {
        Note("txtName_GotFocus");
        txtName.SelectAll();
    });
    txtName.KeyDown.Handle([this](std::int16_t key, std::int16_t held) {
        log.push_back("txtName_KeyDown " + std::to_string(key) + " " + std::to_string(held));
    });
    txtCount.Change.Handle([this] { Note("txtCount_Change"); });
    udCount.Change.Handle([this] { Note("udCount_Change"); });
    chkOn.Click.Handle([this] { Note("chkOn_Click"); });
    optOne.Click.Handle([this] { Note("optOne_Click"); });
    optTwo.Click.Handle([this] { Note("optTwo_Click"); });
    optThree.Click.Handle([this] { Note("optThree_Click"); });
    txtPage.Change.Handle([this] { Note("txtPage_Change"); });
    tree.DblClick.Handle([this] { Note("tree_DblClick"); });
    tree.KeyPress.Handle([this](std::int16_t key) { log.push_back("tree_KeyPress " + std::to_string(key)); });
    cmdOk.Click.Handle([this] { Note("cmdOk_Click"); });
    cmdCancel.Click.Handle([this] { Note("cmdCancel_Click"); });
    cmdMore.Click.Handle([this] { Note("cmdMore_Click"); });
}

}  // namespace lintara::support

#include "forms/keyboard.h"

#include "forms/buttons.h"
#include "forms/caption.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "forms/tree_view.h"

#include <algorithm>
#include <iterator>

namespace lintara::forms {
namespace {

using Controls = std::vector<Control*>;

const Text* CaptionOf(const Control& control) {
    if (const auto* label = dynamic_cast<const Label*>(&control)) {
        return &label->Caption();
    }
    if (const auto* button = dynamic_cast<const CommandButton*>(&control)) {
        return &button->Caption();
    }
    if (const auto* box = dynamic_cast<const CheckBox*>(&control)) {
        return &box->Caption();
    }
    const auto* option = dynamic_cast<const OptionButton*>(&control);
    return option == nullptr ? nullptr : &option->Caption();
}

// The control that the access key of `control` leads to; null when it leads nowhere. A label leads to the
// next control that takes the focus, into a group of option buttons where Tab stops.
Control* GoalOf(const Controls& controls, Controls::const_iterator control) {
    if (dynamic_cast<Label*>(*control) == nullptr) {
        return *control;
    }
    const auto next =
        std::find_if(control, controls.end(), [](const Control* other) { return other->TakesFocus(); });
    if (next == controls.end() || dynamic_cast<OptionButton*>(*next) == nullptr) {
        return next == controls.end() ? nullptr : *next;
    }
    const auto& group = (*next)->Parent()->Controls();
    const auto entry = std::ranges::find_if(group, [](const Control* other) {
        return dynamic_cast<const OptionButton*>(other) != nullptr && IsTabStop(*other);
    });
    return entry == group.end() ? *next : *entry;
}

// The usable controls that the key leads to, beginning behind the active one.
Controls GoalsOf(const Form& form, char16_t key) {
    Controls controls = form.ControlsInOrder();
    const auto active = std::ranges::find(controls, form.ActiveControl());
    if (active != controls.end()) {
        std::ranges::rotate(controls, std::next(active));
    }
    Controls goals;
    const Controls inOrder = form.ControlsInOrder();
    for (Control* control : controls) {
        const Text* caption = CaptionOf(*control);
        if (caption == nullptr || !HasAccessKey(*caption, key) || !control->Usable()) {
            continue;
        }
        Control* goal = GoalOf(inOrder, std::ranges::find(inOrder, control));
        if (goal != nullptr && goal->Usable()) {
            goals.push_back(goal);
        }
    }
    return goals;
}

void Activate(Control& control) {
    if (auto* button = dynamic_cast<CommandButton*>(&control)) {
        button->Press();
    } else if (auto* box = dynamic_cast<CheckBox*>(&control)) {
        box->Toggle();
    } else if (auto* option = dynamic_cast<OptionButton*>(&control)) {
        option->Select();
    }
}

template <class IsWanted>
CommandButton* FindButton(const Form& form, IsWanted isWanted) {
    for (Control* control : form.ControlsInOrder()) {
        auto* button = dynamic_cast<CommandButton*>(control);
        if (button != nullptr && isWanted(*button)) {
            return button;
        }
    }
    return nullptr;
}

}  // namespace

bool IsTabStop(const Control& control) {
    if (!control.TakesFocus() || !control.Usable()) {
        return false;
    }
    const auto* option = dynamic_cast<const OptionButton*>(&control);
    if (option == nullptr || option->Value()) {
        return true;
    }
    return std::ranges::none_of(option->Parent()->Controls(), [](const Control* neighbour) {
        const auto* other = dynamic_cast<const OptionButton*>(neighbour);
        return other != nullptr && other->Value() && other->Usable();
    });
}

bool PressAccessKey(Form& form, char16_t key) {
    const Controls goals = GoalsOf(form, key);
    if (goals.empty()) {
        return false;
    }
    goals.front()->SetFocus();
    if (goals.size() == 1) {
        Activate(*goals.front());
    }
    return true;
}

void PressTab(Form& form, bool backwards) {
    Controls controls = form.ControlsInOrder();
    if (backwards) {
        std::ranges::reverse(controls);
    }
    const auto active = std::ranges::find(controls, form.ActiveControl());
    if (active != controls.end()) {
        std::ranges::rotate(controls, std::next(active));
    }
    const auto next = std::ranges::find_if(controls, [](const Control* c) { return IsTabStop(*c); });
    if (next != controls.end()) {
        (*next)->SetFocus();
    }
}

bool PressEnter(Form& form) {
    Control* active = form.ActiveControl();
    const auto* text = dynamic_cast<const TextBox*>(active);
    if ((text != nullptr && text->IsMultiLine()) || dynamic_cast<TreeView*>(active) != nullptr) {
        return false;
    }
    auto* button = dynamic_cast<CommandButton*>(active);
    if (button == nullptr) {
        button = FindButton(form, [](const CommandButton& b) { return b.isDefault; });
    }
    if (button != nullptr) {
        button->Press();
    }
    return true;
}

bool PressEscape(Form& form) {
    CommandButton* button = FindButton(form, [](const CommandButton& b) { return b.isCancel; });
    if (button == nullptr) {
        return false;
    }
    button->Press();
    return true;
}

}  // namespace lintara::forms

#include "tests/support/form_inspection.h"

#include "base/utf8.h"
#include "forms/buttons.h"
#include "forms/control_visitor.h"
#include "forms/drawing.h"
#include "forms/label.h"
#include "forms/status_bar.h"
#include "forms/text_box.h"
#include "forms/tree_view.h"
#include "forms/up_down.h"

#include <algorithm>

namespace lintara::support {
namespace {

using forms::Control;
using forms::Rect;

struct Description final : forms::ControlVisitor {
    std::string kind;
    Text text;

    void Visit(forms::CheckBox& control) override { Is("CheckBox", control.Caption()); }
    void Visit(forms::CommandButton& control) override { Is("CommandButton", control.Caption()); }
    void Visit(forms::Form& control) override { Is("Form", control.FormCaption()); }
    void Visit(forms::Frame&) override { Is("Frame"); }
    void Visit(forms::Label& control) override { Is("Label", control.Caption()); }
    void Visit(forms::LineControl&) override { Is("Line"); }
    void Visit(forms::OptionButton& control) override { Is("OptionButton", control.Caption()); }
    void Visit(forms::Shape&) override { Is("Shape"); }
    void Visit(forms::StatusBar& control) override { Is("StatusBar", control.SimpleText()); }
    void Visit(forms::TextBox& control) override {
        Is(control.IsMultiLine() ? "TextBox of many lines" : "TextBox", control.Contents());
    }
    void Visit(forms::TreeView&) override { Is("TreeView"); }
    void Visit(forms::UpDown& control) override { Is("UpDown of", control.Buddy().Name()); }
    void Visit(forms::UserControl&) override { Is("UserControl"); }

  private:
    void Is(const char* name, TextView shown = {}) {
        kind = name;
        text = shown;
    }
};

std::string Quoted(TextView text) {
    std::string quoted = "\"";
    for (const char c : ToUtf8(text)) {
        if (c == '\r') {
            quoted += "\\r";
        } else if (c == '\n') {
            quoted += "\\n";
        } else {
            quoted += c;
        }
    }
    return quoted + "\"";
}

// The controls that a user control is made of come before those that stand on it, and bear its own names:
// lines of frames, and boxes of an editor.
bool IsPartOfUserControl(const Control& control) {
    const TextView name = control.Parent()->Name();
    return name.starts_with(u"oEH") || (name.starts_with(u"DBPanel") && control.Name().starts_with(u"ln"));
}

bool IsDecoration(const Control& control) {
    return dynamic_cast<const forms::Shape*>(&control) != nullptr ||
           dynamic_cast<const forms::LineControl*>(&control) != nullptr;
}

bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.left + b.width && b.left < a.left + a.width && a.top < b.top + b.height &&
           b.top < a.top + a.height;
}

bool IsInside(const Rect& place, const forms::Container& container) {
    return place.left >= 0 && place.top >= 0 && place.left + place.width <= container.ScaleWidth() &&
           place.top + place.height <= container.ScaleHeight();
}

void Complain(const forms::Container& container, std::vector<std::string>& complaints) {
    std::vector<const Control*> above;
    for (Control* control : container.Controls()) {
        if (!control->Visible()) {
            continue;
        }
        const std::string name = ToUtf8(control->Name());
        if (!IsInside(control->Place(), container)) {
            complaints.push_back(name + " leaves " + ToUtf8(container.Name()));
        }
        if (!IsDecoration(*control)) {
            for (const Control* other : above) {
                if (Overlap(control->Place(), other->Place())) {
                    complaints.push_back(name + " overlaps " + ToUtf8(other->Name()));
                }
            }
            above.push_back(control);
        }
        if (const auto* inner = dynamic_cast<const forms::Container*>(control)) {
            Complain(*inner, complaints);
        }
    }
}

}  // namespace

std::vector<std::string> DescribeControls(forms::Form& form) {
    std::vector<std::string> lines;
    for (Control* control : form.ControlsInOrder()) {
        if (IsPartOfUserControl(*control)) {
            continue;
        }
        Description description;
        control->Accept(description);
        std::string line = description.kind + " " + ToUtf8(control->Name());
        if (description.kind == "UpDown of") {
            line = "UpDown " + ToUtf8(control->Name()) + " of " + ToUtf8(description.text);
            description.text.clear();
        }
        if (control->Parent() != &form) {
            line += " in " + ToUtf8(control->Parent()->Name());
        }
        if (!description.text.empty()) {
            line += " " + Quoted(description.text);
        }
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> LayoutComplaints(forms::Form& form) {
    std::vector<std::string> complaints;
    Complain(form, complaints);
    return complaints;
}

}  // namespace lintara::support

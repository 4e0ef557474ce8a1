#include "ui/qt/widget_links.h"

#include "forms/caption.h"
#include "forms/label.h"
#include "forms/up_down.h"
#include "ui/qt/caption_text.h"
#include "ui/qt/label_views.h"
#include "ui/qt/text_conversion.h"

#include <QAbstractButton>
#include <algorithm>
#include <vector>

namespace lintara::ui {
namespace {

// A label's words as the name of what it stands in front of.
QString NameFrom(const forms::Label& label) {
    QString name = PlainCaption(label.Caption()).trimmed();
    while (name.endsWith(u':')) {
        name.chop(1);
    }
    return name;
}

}  // namespace

void ConnectLabels(const forms::Form& form, const Views& views) {
    const std::vector<forms::Control*> controls = form.ControlsInOrder();
    for (auto control = controls.begin(); control != controls.end(); ++control) {
        auto* label = dynamic_cast<forms::Label*>(*control);
        if (label == nullptr || !forms::ReadCaption(label->Caption()).accessKey) {
            continue;
        }
        const auto next =
            std::find_if(control, controls.end(), [](auto* other) { return other->TakesFocus(); });
        QWidget* buddy = next == controls.end() ? nullptr : WidgetOf(views, **next);
        auto* view = dynamic_cast<LabelView*>(views.at(label));
        if (buddy != nullptr && view != nullptr) {
            view->SetBuddy(*buddy);
        }
    }
}

void NameWidgets(const forms::Form& form, const Views& views) {
    const forms::Label* inFront = nullptr;
    for (forms::Control* each : form.ControlsInOrder()) {
        forms::Control& control = *each;
        QWidget* widget = WidgetOf(views, control);
        if (const auto* label = dynamic_cast<const forms::Label*>(&control)) {
            inFront = label;
        }
        if (widget == nullptr) {
            continue;
        }
        if (!control.description.empty()) {
            widget->setAccessibleName(ToQString(control.description));
        } else if (const auto* arrows = dynamic_cast<const forms::UpDown*>(&control)) {
            const QWidget* buddy = WidgetOf(views, arrows->Buddy());
            widget->setAccessibleName(buddy == nullptr ? QString() : buddy->accessibleName());
        } else if (inFront != nullptr && control.TakesFocus() &&
                   qobject_cast<QAbstractButton*>(widget) == nullptr) {
            widget->setAccessibleName(NameFrom(*inFront));
        }
        if (control.TakesFocus()) {
            inFront = nullptr;
        }
    }
}

void OrderTabs(const forms::Form& form, const Views& views) {
    QWidget* before = nullptr;
    for (forms::Control* control : form.ControlsInOrder()) {
        QWidget* widget = WidgetOf(views, *control);
        if (widget == nullptr || !control->TakesFocus()) {
            continue;
        }
        if (before != nullptr) {
            QWidget::setTabOrder(before, widget);
        }
        before = widget;
    }
}

}  // namespace lintara::ui

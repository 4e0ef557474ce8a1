#include "ui/qt/button_views.h"

#include "ui/qt/caption_text.h"

#include <QStyle>
#include <algorithm>

namespace lintara::ui {
namespace {

// As wide as the style wants it, as high as its letters or its mark at least.
QSize NeededForMark(const QAbstractButton& button, QStyle::PixelMetric markHeight) {
    const int mark = button.style()->pixelMetric(markHeight, nullptr, &button);
    return {button.sizeHint().width(), std::max(mark, button.fontMetrics().height())};
}

Qt::CheckState StateOf(std::int16_t value) {
    if (value == forms::CheckBox::Grayed) {
        return Qt::PartiallyChecked;
    }
    return value == forms::CheckBox::Checked ? Qt::Checked : Qt::Unchecked;
}

}  // namespace

PushButtonView::PushButtonView(QWidget* parent, forms::CommandButton& button)
    : QPushButton(MarkedCaption(button.Caption()), parent), button_(button) {
    setDefault(button.isDefault);
    connect(this, &QPushButton::clicked, this, [this] { button_.Press(); });
}

void PushButtonView::Update(forms::Property /*property*/) {}

QString PushButtonView::Caption() const {
    return PlainCaption(button_.Caption());
}

QSize PushButtonView::NeededSize() const {
    const int aroundText = 2 * fontMetrics().averageCharWidth() + 4;
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return {text.width() + aroundText, text.height() + 8};
}

CheckBoxView::CheckBoxView(QWidget* parent, forms::CheckBox& box, MirrorGate& gate)
    : QCheckBox(MarkedCaption(box.Caption()), parent), box_(box), gate_(gate) {
    ShowValue();
    connect(this, &QCheckBox::stateChanged, this, [this](int state) {
        if (!gate_.IsMirroring() && state != StateOf(box_.Value())) {
            box_.Toggle();
            ShowValue();
        }
    });
}

void CheckBoxView::Update(forms::Property property) {
    if (property == forms::Property::Value) {
        ShowValue();
    }
}

void CheckBoxView::ShowValue() {
    const MirrorGate::Mirroring mirroring(gate_);
    setTristate(box_.Value() == forms::CheckBox::Grayed);
    setCheckState(StateOf(box_.Value()));
}

QString CheckBoxView::Caption() const {
    return PlainCaption(box_.Caption());
}

QSize CheckBoxView::NeededSize() const {
    return NeededForMark(*this, QStyle::PM_IndicatorHeight);
}

RadioButtonView::RadioButtonView(QWidget* parent, forms::OptionButton& option, MirrorGate& gate)
    : QRadioButton(MarkedCaption(option.Caption()), parent), option_(option), gate_(gate) {
    ShowValue();
    connect(this, &QRadioButton::toggled, this, [this](bool isOn) {
        if (!gate_.IsMirroring() && isOn) {
            option_.Select();
            ShowNeighbours();
        }
    });
}

void RadioButtonView::Update(forms::Property property) {
    if (property == forms::Property::Value) {
        ShowValue();
    }
}

// Qt has taken the mark from the button that had it, and the form may have put it elsewhere.
void RadioButtonView::ShowNeighbours() {
    for (QObject* neighbour : parent()->children()) {
        if (auto* button = dynamic_cast<RadioButtonView*>(neighbour)) {
            button->ShowValue();
        }
    }
}

// Qt keeps one button of a group checked, while the form may well have none.
void RadioButtonView::ShowValue() {
    const MirrorGate::Mirroring mirroring(gate_);
    setAutoExclusive(option_.Value());
    setChecked(option_.Value());
    setAutoExclusive(true);
}

QString RadioButtonView::Caption() const {
    return PlainCaption(option_.Caption());
}

QSize RadioButtonView::NeededSize() const {
    return NeededForMark(*this, QStyle::PM_ExclusiveIndicatorHeight);
}

}  // namespace lintara::ui

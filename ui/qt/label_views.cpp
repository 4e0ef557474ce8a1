#include "ui/qt/label_views.h"

#include "forms/form.h"
#include "ui/qt/caption_text.h"
#include "ui/qt/text_conversion.h"

namespace lintara::ui {

LabelView::LabelView(QWidget* parent, forms::Label& label) : QLabel(parent), label_(label) {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    ShowCaption();
}

void LabelView::Update(forms::Property property) {
    if (property == forms::Property::Caption) {
        ShowCaption();
    }
}

void LabelView::SetBuddy(QWidget& buddy) {
    setBuddy(&buddy);
    ShowCaption();
}

void LabelView::ShowCaption() {
    setText(buddy() == nullptr ? PlainCaption(label_.Caption()) : MarkedCaption(label_.Caption()));
}

QString LabelView::Caption() const {
    return PlainCaption(label_.Caption());
}

QSize LabelView::NeededSize() const {
    return {fontMetrics().size(0, Caption()).width() + 1, fontMetrics().height()};
}

StatusBarView::StatusBarView(QWidget* parent, forms::StatusBar& bar)
    : QStatusBar(parent), bar_(bar), text_(new QLabel(this)) {
    const forms::Form* form = bar.Root();
    setSizeGripEnabled(form != nullptr && form->resizable);
    text_->setTextFormat(Qt::PlainText);
    // The bar never grows for its text.
    text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(text_, 1);
    ShowText();
}

void StatusBarView::Update(forms::Property property) {
    if (property == forms::Property::Text) {
        ShowText();
    }
}

void StatusBarView::resizeEvent(QResizeEvent* event) {
    QStatusBar::resizeEvent(event);
    ShowText();
}

void StatusBarView::ShowText() {
    const QString whole = ToQString(bar_.SimpleText());
    constexpr int gripAndMargins = 24;
    const QString fitting = fontMetrics().elidedText(whole, Qt::ElideRight, width() - gripAndMargins);
    text_->setText(fitting);
    text_->setAccessibleName(whole);
    setToolTip(fitting == whole ? QString() : whole);
    setAccessibleName(whole);
}

QSize StatusBarView::NeededSize() const {
    return {0, fontMetrics().height() + 4};
}

}  // namespace lintara::ui

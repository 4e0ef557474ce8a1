#include "ui/qt/text_box_view.h"

#include "ui/qt/key_codes.h"

#include <QKeyEvent>
#include <QWidget>
#include <algorithm>

namespace lintara::ui {

TextBoxView::UserEvent::~UserEvent() {
    if (--view_.eventDepth_ == 0 && view_.hasChanged_) {
        view_.TakeFromWidget();
    }
}

void TextBoxView::Update(forms::Property property) {
    const bool concernsText = property == forms::Property::Text || property == forms::Property::Selection;
    if (concernsText && !isTaking_) {
        ShowInWidget();
    }
}

void TextBoxView::WidgetChanged() {
    if (gate_.IsMirroring() || isTaking_) {
        return;
    }
    hasChanged_ = true;
    if (eventDepth_ == 0) {
        TakeFromWidget();
    }
}

void TextBoxView::RaiseKeyDown(const QKeyEvent& event) {
    if (box_.Usable()) {
        box_.KeyDown.Raise(KeyCodeOf(event), HeldKeysOf(event));
    }
}

void TextBoxView::TakeFromWidget() {
    hasChanged_ = false;
    const ShownText before(box_.Contents());
    const QString text = WidgetText();
    const Text after = TextAfter(before, DifferenceOf(before.shown(), text));
    const ShownText shown(after);
    const Selection selected = WidgetSelection();
    const std::size_t start = shown.ToText(static_cast<std::size_t>(selected.start));
    const std::size_t end = shown.ToText(static_cast<std::size_t>(selected.start + selected.length));
    isTaking_ = true;
    box_.Edit(after, static_cast<std::int32_t>(start), static_cast<std::int32_t>(end - start));
    isTaking_ = false;
    ShowInWidget();
}

// A box of one line takes the first line of what the user pastes.
Text TextBoxView::TextAfter(const ShownText& before, Difference difference) const {
    if (!box_.IsMultiLine()) {
        const auto isBreak = [](QChar unit) { return unit == u'\n' || unit == u'\r'; };
        const auto end = std::ranges::find_if(difference.inserted, isBreak);
        difference.inserted.truncate(end - difference.inserted.begin());
    }
    const std::size_t start = before.ToText(static_cast<std::size_t>(difference.at));
    const std::size_t end = before.ToText(static_cast<std::size_t>(difference.at + difference.removed));
    Text text = box_.Contents();
    text.replace(start, end - start, WithFormBreaks(difference.inserted));
    return text;
}

void TextBoxView::ShowInWidget() {
    const MirrorGate::Mirroring mirroring(gate_);
    const ShownText shown(box_.Contents());
    const Difference difference = DifferenceOf(WidgetText(), shown.shown());
    if (!difference.IsNone()) {
        ChangeWidget(difference);
    }
    const auto selStart = static_cast<std::size_t>(box_.SelStart());
    const auto selLength = static_cast<std::size_t>(box_.SelLength());
    const auto start = static_cast<qsizetype>(shown.ToShown(selStart));
    const auto end = static_cast<qsizetype>(shown.ToShown(selStart + selLength));
    const Selection selection{.start = start, .length = end - start};
    if (selection != WidgetSelection()) {
        SelectInWidget(selection);
    }
}

}  // namespace lintara::ui

#include "ui/qt/line_box.h"

#include "forms/up_down.h"

#include <QKeyEvent>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QWheelEvent>
#include <limits>

namespace lintara::ui {

LineBox::LineBox(QWidget* parent, forms::TextBox& box, MirrorGate& gate)
    : QLineEdit(parent), TextBoxView(box, gate) {
    setMaxLength(std::numeric_limits<int>::max());
    if (!box.bordered) {
        // The shape behind it is its background.
        setFrame(false);
        QPalette clear = palette();
        clear.setColor(QPalette::Base, Qt::transparent);
        setPalette(clear);
    }
    setText(ShownText(box.Contents()).shown());
    TextBoxView::Update(forms::Property::Selection);
    connect(this, &QLineEdit::textChanged, this, [this] { WidgetChanged(); });
    connect(this, &QLineEdit::selectionChanged, this, [this] { WidgetChanged(); });
    connect(this, &QLineEdit::cursorPositionChanged, this, [this] { WidgetChanged(); });
}

QSize LineBox::NeededSize() const {
    QStyleOptionFrame option;
    initStyleOption(&option);
    const int borders =
        hasFrame() ? 2 * style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, this) : 0;
    return {0, fontMetrics().height() + borders + 2};
}

bool LineBox::event(QEvent* event) {
    const UserEvent userEvent(*this);
    return QLineEdit::event(event);
}

// Without the focus Qt shows no selection in a box of one line. The form's selection stays, and is there
// again when the focus comes back.
void LineBox::focusInEvent(QFocusEvent* event) {
    {
        const MirrorGate::Mirroring mirroring(Gate());
        QLineEdit::focusInEvent(event);
    }
    TextBoxView::Update(forms::Property::Selection);
}

void LineBox::focusOutEvent(QFocusEvent* event) {
    const MirrorGate::Mirroring mirroring(Gate());
    QLineEdit::focusOutEvent(event);
}

void LineBox::keyPressEvent(QKeyEvent* event) {
    RaiseKeyDown(*event);
    const int key = event->key();
    const bool isStep = (key == Qt::Key_Up || key == Qt::Key_Down) && event->modifiers() == Qt::NoModifier;
    if (!isStep || !StepBy(key == Qt::Key_Up ? 1 : -1)) {
        QLineEdit::keyPressEvent(event);
    }
}

void LineBox::wheelEvent(QWheelEvent* event) {
    if (!hasFocus() || arrows_ == nullptr) {
        QLineEdit::wheelEvent(event);
        return;
    }
    wheelAngle_ += event->angleDelta().y();
    const int steps = wheelAngle_ / QWheelEvent::DefaultDeltasPerStep;
    if (steps != 0) {
        wheelAngle_ -= steps * QWheelEvent::DefaultDeltasPerStep;
        (void)StepBy(steps);
    }
    event->accept();
}

bool LineBox::StepBy(int steps) {
    if (arrows_ != nullptr) {
        arrows_->Step(steps);
    }
    return arrows_ != nullptr;
}

QString LineBox::WidgetText() const {
    return WithPlainBreaks(text());
}

TextBoxView::Selection LineBox::WidgetSelection() const {
    if (hasSelectedText()) {
        return {.start = selectionStart(), .length = selectionLength()};
    }
    return {.start = cursorPosition(), .length = 0};
}

void LineBox::ChangeWidget(const Difference& difference) {
    setSelection(static_cast<int>(difference.at), static_cast<int>(difference.removed));
    insert(difference.inserted);
}

void LineBox::SelectInWidget(const Selection& selection) {
    if (selection.length == 0) {
        setCursorPosition(static_cast<int>(selection.start));
        deselect();
    } else {
        setSelection(static_cast<int>(selection.start), static_cast<int>(selection.length));
    }
}

}  // namespace lintara::ui

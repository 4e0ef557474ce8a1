#include "ui/qt/page_box.h"

#include <QKeyEvent>
#include <QTextDocument>

namespace lintara::ui {

PageBox::PageBox(QWidget* parent, forms::TextBox& box, MirrorGate& gate)
    : QPlainTextEdit(parent), TextBoxView(box, gate) {
    setTabChangesFocus(true);
    setLineWrapMode(NoWrap);
    if (!box.bordered) {
        setFrameShape(QFrame::NoFrame);
    }
    setPlainText(ShownText(box.Contents()).shown());
    TextBoxView::Update(forms::Property::Selection);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { WidgetChanged(); });
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { WidgetChanged(); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { WidgetChanged(); });
}

bool PageBox::event(QEvent* event) {
    const UserEvent userEvent(*this);
    return QPlainTextEdit::event(event);
}

bool PageBox::viewportEvent(QEvent* event) {
    const UserEvent userEvent(*this);
    return QPlainTextEdit::viewportEvent(event);
}

void PageBox::keyPressEvent(QKeyEvent* event) {
    RaiseKeyDown(*event);
    // Tab alone leads to the next control.
    if (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ControlModifier) {
        insertPlainText(QStringLiteral("\t"));
    } else {
        QPlainTextEdit::keyPressEvent(event);
    }
}

QString PageBox::WidgetText() const {
    return WithPlainBreaks(document()->toRawText());
}

TextBoxView::Selection PageBox::WidgetSelection() const {
    const QTextCursor cursor = textCursor();
    return {.start = cursor.selectionStart(), .length = cursor.selectionEnd() - cursor.selectionStart()};
}

void PageBox::ChangeWidget(const Difference& difference) {
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(difference.at));
    cursor.setPosition(static_cast<int>(difference.at + difference.removed), QTextCursor::KeepAnchor);
    cursor.insertText(difference.inserted);
}

void PageBox::SelectInWidget(const Selection& selection) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(static_cast<int>(selection.start));
    cursor.setPosition(static_cast<int>(selection.start + selection.length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

}  // namespace lintara::ui

#include "ui/qt/help_window.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetrics>
#include <QKeySequence>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextDocument>

namespace lintara::ui {

namespace {

// The name by which links know a heading: small letters, and a hyphen for each blank.
QString AnchorOf(const QString& heading) {
    QString anchor;
    for (const QChar unit : heading.toLower()) {
        if (unit.isLetterOrNumber() || unit == u'-') {
            anchor += unit;
        } else if (unit == u' ') {
            anchor += u'-';
        }
    }
    return anchor;
}

}  // namespace

HelpWindow::HelpWindow() {
    setWindowFlag(Qt::Window);
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { Follow(link); });
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(fontMetrics().height());
    resize(fontMetrics().averageCharWidth() * 84, fontMetrics().height() * 40);
    connect(this, &QTextBrowser::sourceChanged, this,
            [this] { setWindowTitle(document()->firstBlock().text()); });
    for (const auto& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, &QWidget::close);
    }
}

void HelpWindow::ShowPage(const QUrl& page) {
    setSource(page, QTextDocument::MarkdownResource);
    show();
    raise();
    activateWindow();
}

void HelpWindow::Follow(const QUrl& link) {
    if (!link.path().isEmpty()) {
        setSource(source().resolved(link.adjusted(QUrl::RemoveFragment)), QTextDocument::MarkdownResource);
    }
    if (link.hasFragment()) {
        ScrollToHeading(link.fragment());
    }
}

// Qt gives the headings of Markdown no names.
void HelpWindow::ScrollToHeading(const QString& anchor) {
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 && AnchorOf(block.text()) == anchor) {
            const double top = document()->documentLayout()->blockBoundingRect(block).top();
            verticalScrollBar()->setValue(static_cast<int>(top));
            return;
        }
    }
}

}  // namespace lintara::ui

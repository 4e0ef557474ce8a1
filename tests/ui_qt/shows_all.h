// Whether widgets have the room that their texts need, and the letters that this is tried with.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QLineEdit>

namespace lintara::ui {

inline bool ShowsAllOf(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->width() >= label->fontMetrics().size(Qt::TextShowMnemonic, label->text()).width() &&
               label->height() >= label->fontMetrics().height();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        return button->width() >= button->fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() &&
               button->height() >= button->fontMetrics().height();
    }
    if (const auto* box = qobject_cast<const QLineEdit*>(&widget)) {
        return box->height() >= box->fontMetrics().height() + 2;
    }
    return true;
}

// Gives the application its font back.
struct FontRestorer {
    QFont before = QApplication::font();
    ~FontRestorer() { QApplication::setFont(before); }
};

}  // namespace lintara::ui

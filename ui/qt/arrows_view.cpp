#include "ui/qt/arrows_view.h"

#include <QLineEdit>
#include <QStyleOptionSpinBox>

namespace lintara::ui {

ArrowsView::ArrowsView(QWidget* parent, forms::UpDown& arrows) : QAbstractSpinBox(parent), arrows_(arrows) {
    setFocusPolicy(Qt::NoFocus);
    lineEdit()->setFocusPolicy(Qt::NoFocus);
    lineEdit()->hide();
}

// What is left of the box itself begins outside the widget, so that its edge does not stand between the
// arrows and the number.
void ArrowsView::initStyleOption(QStyleOptionSpinBox* option) const {
    QAbstractSpinBox::initStyleOption(option);
    constexpr int hidden = 8;
    option->rect.setLeft(-hidden);
}

void ArrowsView::resizeEvent(QResizeEvent* event) {
    QAbstractSpinBox::resizeEvent(event);
    lineEdit()->hide();
}

}  // namespace lintara::ui

#include "ui/qt/form_window.h"

#include "base/statement.h"
#include "forms/keyboard.h"
#include "ui/qt/drawings.h"
#include "ui/qt/fonts.h"
#include "ui/qt/text_conversion.h"
#include "ui/qt/widget_links.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>

namespace lintara::ui {
namespace {

// Access keys are Alt and a key that writes a character.
bool IsAccessKey(const QKeyEvent& event) {
    const auto held = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    return held == Qt::AltModifier && event.key() > Qt::Key_Space && event.key() < Qt::Key_Escape;
}

// Where the insides of windows can be: the rest is for the frames around them, whose size is not known before
// a window is on the screen.
QRect RoomForWindows(const QScreen& screen) {
    constexpr int sides = 8;
    constexpr int titleBar = 40;
    return screen.availableGeometry().adjusted(0, 0, -sides, -titleBar);
}

QPoint MovedInto(const QRect& area, const QRect& window) {
    const int right = std::max(area.left(), area.left() + area.width() - window.width());
    const int bottom = std::max(area.top(), area.top() + area.height() - window.height());
    return {std::clamp(window.left(), area.left(), right), std::clamp(window.top(), area.top(), bottom)};
}

}  // namespace

FormWindow::FormWindow(forms::Form& form, QWidget* owner)
    : QDialog(owner, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      form_(form) {
    setWindowModality(Qt::WindowModal);
    setWindowTitle(ToQString(form.FormCaption()));
    setObjectName(ToQString(form.Name()));
    MakeWidgets();
    ChooseFonts();
    ChooseScale();
    {
        const MirrorGate::Mirroring mirroring(gate_);
        PlaceAll();
        PlaceWindow();
    }
    installEventFilter(this);
    form_.SetMirror(this);
}

FormWindow::~FormWindow() {
    form_.SetMirror(nullptr);
    SetHandles(false);
}

void FormWindow::Run() {
    ShowOnScreen();
    if (form_.Visible()) {
        loop_.exec();
    }
}

QWidget* FormWindow::WidgetOf(forms::Control& control) const {
    return ui::WidgetOf(views_, control);
}

// --- making the widgets ---

void FormWindow::MakeWidgets() {
    ViewMaker maker(gate_, scale_);
    maker.MakeAll(form_, *this);
    views_ = maker.views();
    for (forms::Control* control : form_.ControlsInOrder()) {
        if (QWidget* widget = WidgetOf(*control)) {
            widget->setEnabled(control->Enabled());
            widget->setVisible(control->Visible());
            widget->installEventFilter(this);
        }
    }
    ConnectLabels(form_, views_);
    NameWidgets(form_, views_);
    OrderTabs(form_, views_);
}

// --- sizes and places ---

void FormWindow::ChooseFonts() {
    for (const auto& [control, view] : views_) {
        view->Widget().setFont(DesktopFont(control->font));
        view->UpdateLook();
    }
}

void FormWindow::ChooseScale() {
    Scale scale(DesktopFont(form_.font));
    scale.LimitGrowth({form_.Width(), form_.Height()}, PixelsOf(RoomForWindows(*screen()).size()));
    for (const auto& [control, view] : views_) {
        scale.GrowToFit({control->Width(), control->Height()}, PixelsOf(view->NeededSize()));
    }
    scale_ = scale;
}

void FormWindow::PlaceAll() {
    for (const auto& [control, view] : views_) {
        PlaceWidget(*control);
        view->Widget().update();
        // Where the screen is too small for a caption, the mouse shows all of it.
        if (const QString caption = view->Caption(); !caption.isEmpty()) {
            const bool isWhole = view->Widget().width() >= view->NeededSize().width();
            view->Widget().setToolTip(isWhole ? QString() : caption);
        }
    }
}

// Edges are rounded to pixels as seen from the form, so that what fills its container to the edge is not cut
// off by it.
void FormWindow::PlaceWidget(forms::Control& control) {
    forms::Rect place = control.Place();
    forms::Rect container;
    for (const forms::Container* c = control.Parent(); c != nullptr && c != &form_; c = c->Parent()) {
        container.left += c->Left();
        container.top += c->Top();
    }
    place.left += container.left;
    place.top += container.top;
    const QPoint corner = scale_.ToPixels(container).topLeft();
    WidgetOf(control)->setGeometry(scale_.ToPixels(place).translated(-corner));
}

// What is in a container that moves may be rounded to other pixels.
void FormWindow::PlaceWithContents(forms::Control& control) {
    if (WidgetOf(control) != nullptr) {
        PlaceWidget(control);
    }
    if (const auto* container = dynamic_cast<const forms::Container*>(&control)) {
        for (forms::Control* inner : container->Controls()) {
            PlaceWithContents(*inner);
        }
    }
}

void FormWindow::PlaceWindow() {
    const QSize size = scale_.ToPixels(forms::Size{form_.Width(), form_.Height()});
    if (form_.resizable) {
        setMinimumSize(scale_.ToPixels(form_.minimum));
        resize(size);
    } else {
        setFixedSize(size);
    }
}

// Where it was the last time, else in the middle; in either case wholly on a screen, if it fits on one.
void FormWindow::ShowOnScreen() {
    const QPoint wanted(scale_.X(form_.Left()), scale_.Y(form_.Top()));
    const QScreen* const there = form_.placed ? QApplication::screenAt(wanted) : nullptr;
    const QRect room = RoomForWindows(there == nullptr ? *screen() : *there);
    if (form_.resizable) {
        resize(size().boundedTo(room.size()).expandedTo(minimumSize()));
    }
    const QPoint middle = room.center() - rect().center();
    move(MovedInto(room, QRect(form_.placed ? wanted : middle, size())));
    ShowFocus();
    show();
    activateWindow();
    SetHandles(true);
    form_.placed = true;
    TakeSize();
}

void FormWindow::ShowFocus() {
    const MirrorGate::Mirroring mirroring(gate_);
    forms::Control* active = form_.ActiveControl();
    if (QWidget* widget = active == nullptr ? nullptr : WidgetOf(*active)) {
        widget->setFocus(Qt::OtherFocusReason);
    }
}

void FormWindow::SetHandles(bool shown) {
    for (forms::Control* control : form_.ControlsInOrder()) {
        if (auto* surface = dynamic_cast<forms::UserControl*>(control)) {
            surface->SetHandle(shown ? static_cast<std::uintptr_t>(effectiveWinId()) : 0);
        }
    }
}

// --- from the form to the widgets ---

void FormWindow::Changed(forms::Control& control, forms::Property property) {
    const MirrorGate::Mirroring mirroring(gate_);
    if (&control == &form_) {
        UpdateForm(property);
    } else if (QWidget* widget = WidgetOf(control)) {
        UpdateControl(control, *widget, property);
    } else {
        RepaintDrawing(control);
    }
}

void FormWindow::UpdateForm(forms::Property property) {
    switch (property) {
        case forms::Property::Visible:
            if (!form_.Visible()) {
                hide();
                loop_.quit();
            }
            break;
        case forms::Property::Enabled:
            setEnabled(form_.Enabled());
            break;
        case forms::Property::Place:
            PlaceWindow();
            break;
        default:
            break;
    }
}

void FormWindow::UpdateControl(forms::Control& control, QWidget& widget, forms::Property property) {
    switch (property) {
        case forms::Property::Place:
            PlaceWithContents(control);
            break;
        case forms::Property::Enabled:
            widget.setEnabled(control.Enabled());
            break;
        case forms::Property::Visible:
            widget.setVisible(control.Visible());
            break;
        case forms::Property::Focus:
            widget.setFocus(Qt::OtherFocusReason);
            break;
        default:
            views_.at(&control)->Update(property);
            break;
    }
    if (property == forms::Property::Caption) {
        UpdateCaption();
    }
}

// A new caption may need more room, and names what stands behind it.
void FormWindow::UpdateCaption() {
    NameWidgets(form_, views_);
    const Scale before = scale_;
    ChooseScale();
    if (scale_ != before) {
        PlaceAll();
        PlaceWindow();
    }
}

void FormWindow::RepaintDrawing(const forms::Control& control) {
    QWidget* container = control.Parent() == &form_ ? this : WidgetOf(*control.Parent());
    if (container != nullptr) {
        container->update();
    }
}

// --- from the user to the form ---

bool FormWindow::event(QEvent* event) {
    if (event->type() == QEvent::ApplicationFontChange) {
        const MirrorGate::Mirroring mirroring(gate_);
        ChooseFonts();
        ChooseScale();
        PlaceAll();
        PlaceWindow();
    }
    return QDialog::event(event);
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::FocusIn:
            TakeFocus(watched);
            return false;
        case QEvent::ShortcutOverride:
            if (IsAccessKey(static_cast<const QKeyEvent&>(*event))) {
                event->accept();
                return true;
            }
            return false;
        case QEvent::KeyPress:
            return TakeKey(static_cast<const QKeyEvent&>(*event));
        default:
            return false;
    }
}

void FormWindow::TakeFocus(QObject* widget) {
    if (gate_.IsMirroring()) {
        return;
    }
    const auto found = std::ranges::find_if(
        views_, [widget](const auto& entry) { return &entry.second->Widget() == widget; });
    if (found != views_.end()) {
        found->first->SetFocus();
    }
}

bool FormWindow::TakeKey(const QKeyEvent& event) {
    if (IsAccessKey(event)) {
        return TakeAccessKey(event);
    }
    const auto held = event.modifiers() & ~Qt::KeypadModifier;
    if (held != Qt::NoModifier) {
        return false;
    }
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter) {
        return forms::PressEnter(form_);
    }
    return event.key() == Qt::Key_Escape && forms::PressEscape(form_);
}

// A key that leads nowhere writes nothing either.
bool FormWindow::TakeAccessKey(const QKeyEvent& event) {
    setAttribute(Qt::WA_KeyboardFocusChange);
    const QChar key(static_cast<char16_t>(event.key()));
    if (!forms::PressAccessKey(form_, key.toUpper().unicode())) {
        (void)forms::PressAccessKey(form_, key.toLower().unicode());
    }
    return true;
}

// Qt also asks for this when the widget with the focus is hidden or disabled; then the form has chosen.
bool FormWindow::focusNextPrevChild(bool next) {
    if (gate_.IsMirroring()) {
        return false;
    }
    setAttribute(Qt::WA_KeyboardFocusChange);
    forms::PressTab(form_, !next);
    return true;
}

void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    form_.Unload();
}

void FormWindow::moveEvent(QMoveEvent* event) {
    QDialog::moveEvent(event);
    TakeSize();
}

void FormWindow::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    TakeSize();
}

// A size that came of the form's own is in the form already, and more precisely than in pixels.
void FormWindow::TakeSize() {
    if (gate_.IsMirroring()) {
        return;
    }
    forms::Rect place = form_.Place();
    if (isVisible()) {
        place.left = scale_.TwipsOfX(x());
        place.top = scale_.TwipsOfY(y());
    }
    const QSize shown = scale_.ToPixels(forms::Size{place.width, place.height});
    place.width = shown.width() == width() ? place.width : scale_.TwipsOfX(width());
    place.height = shown.height() == height() ? place.height : scale_.TwipsOfY(height());
    Attempt(form_.Move(place));
}

void FormWindow::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
        for (const auto& [control, view] : views_) {
            view->UpdateLook();
        }
        update();
    }
}

void FormWindow::paintEvent(QPaintEvent* /*event*/) {
    PaintDrawings(*this, form_, scale_);
}

}  // namespace lintara::ui

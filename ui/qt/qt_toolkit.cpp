#include "ui/qt/qt_toolkit.h"

#include "ui/qt/fonts.h"
#include "ui/qt/form_window.h"
#include "ui/qt/help_window.h"
#include "ui/qt/scale.h"
#include "ui/qt/shown_text.h"
#include "ui/qt/system_colors.h"
#include "ui/qt/text_conversion.h"

#include <QApplication>
#include <QMessageBox>
#include <QScreen>

namespace lintara::ui {
namespace {

QMessageBox::Icon IconOf(forms::MessageStyle style) {
    switch (style) {
        case forms::MessageStyle::Critical:
            return QMessageBox::Critical;
        case forms::MessageStyle::Exclamation:
            return QMessageBox::Warning;
        case forms::MessageStyle::Information:
            return QMessageBox::Information;
        case forms::MessageStyle::OkOnly:
            break;
    }
    return QMessageBox::NoIcon;
}

// The address of a page; a folder of the program's resources has one of another kind than one on the disk.
QUrl AddressOf(const QString& path) {
    return path.startsWith(u':') ? QUrl(QStringLiteral("qrc") + path) : QUrl::fromLocalFile(path);
}

}  // namespace

// That no window is left does not end the program: there may be another form to come.
QtToolkit::QtToolkit(const QDir& helpFolder) : helpFolder_(helpFolder) {
    QApplication::setQuitOnLastWindowClosed(false);
}

QtToolkit::~QtToolkit() = default;

void QtToolkit::RunModal(forms::Form& form) {
    FormWindow window(form, ActiveWindow());
    windows_.push_back(&window);
    window.Run();
    std::erase(windows_, &window);
    GiveBackTheScreen();
}

void QtToolkit::ShowMessage(TextView text, forms::MessageStyle style, TextView title) {
    QMessageBox box(ActiveWindow());
    box.setWindowModality(Qt::WindowModal);
    box.setIcon(IconOf(style));
    box.setTextFormat(Qt::PlainText);
    box.setText(ShownText(text).shown());
    box.setWindowTitle(title.empty() ? QGuiApplication::applicationDisplayName() : ToQString(title));
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    GiveBackTheScreen();
}

// Where no window manager does so by itself.
void QtToolkit::GiveBackTheScreen() const {
    if (FormWindow* window = ActiveWindow()) {
        window->activateWindow();
    }
}

void QtToolkit::ShowHelp(TextView /*file*/, std::int32_t context) {
    const QStringList pages = helpFolder_.entryList({QStringLiteral("%1-*.md").arg(context)}, QDir::Files);
    if (pages.isEmpty()) {
        ShowMessage(u"There is no help on this window.", forms::MessageStyle::Exclamation, u"");
        return;
    }
    if (help_ == nullptr) {
        help_ = std::make_unique<HelpWindow>();
    }
    help_->ShowPage(AddressOf(helpFolder_.filePath(pages.front())));
}

void QtToolkit::DoEvents() {
    QCoreApplication::processEvents();
}

void QtToolkit::SetMousePointer(forms::MousePointer pointer) {
    const bool isBusy = pointer == forms::MousePointer::Hourglass;
    if (isBusy == isBusy_) {
        return;
    }
    isBusy_ = isBusy;
    if (isBusy) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

forms::Color QtToolkit::Resolve(forms::Color color) const {
    const QColor resolved = ResolvedColor(color, QGuiApplication::palette());
    const auto channel = [](int value, unsigned shift) { return static_cast<std::uint32_t>(value) << shift; };
    return static_cast<forms::Color>(channel(resolved.red(), 0) | channel(resolved.green(), 8) |
                                     channel(resolved.blue(), 16));
}

forms::Rect QtToolkit::ScreenArea() const {
    const Scale scale(DesktopFont({}));
    const QRect area = QGuiApplication::primaryScreen()->availableVirtualGeometry();
    return {scale.TwipsOfX(area.left()), scale.TwipsOfY(area.top()), scale.TwipsOfX(area.width()),
            scale.TwipsOfY(area.height())};
}

FormWindow* QtToolkit::ActiveWindow() const {
    return windows_.empty() ? nullptr : windows_.back();
}

}  // namespace lintara::ui

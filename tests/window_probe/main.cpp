// Shows a window as `lintara-window` does, looks at it and closes it: for the pictures in the documentation
// and for measuring how long a window takes to open.
//
// Usage: window_probe first-paint <REQUEST          prints the monotonic clock, in seconds, after the first
// paint
//        window_probe picture light|dark FILE <REQUEST    writes a picture of the screen's part with the
//        window
#include "dialogs/window_placement.h"
#include "platform/toml_settings.h"
#include "platform/user_folders.h"
#include "ui/qt/form_window.h"
#include "ui/qt/qt_toolkit.h"
#include "window/show_window.h"

#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QPalette>
#include <QPixmap>
#include <QScreen>
#include <QStyleFactory>
#include <QTimer>
#include <chrono>
#include <functional>
#include <iostream>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using lintara::ui::FormWindow;
using lintara::ui::QtToolkit;

QPalette DarkPalette() {
    QPalette palette(QColor(49, 54, 59), QColor(42, 46, 50));
    palette.setColor(QPalette::Base, QColor(27, 30, 32));
    palette.setColor(QPalette::Light, QColor(82, 88, 94));
    palette.setColor(QPalette::Dark, QColor(20, 22, 24));
    palette.setColor(QPalette::Highlight, QColor(61, 174, 233));
    palette.setColor(QPalette::HighlightedText, QColor(15, 15, 15));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(252, 252, 252));
        palette.setColor(QPalette::Disabled, role, QColor(120, 125, 130));
    }
    return palette;
}

// Calls `then` once, when the form's window has been painted.
class FirstPaint final : public QObject {
  public:
    explicit FirstPaint(std::function<void()> then) : then_(std::move(then)) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (then_ && event->type() == QEvent::Paint && dynamic_cast<FormWindow*>(watched) != nullptr) {
            QTimer::singleShot(0, std::exchange(then_, nullptr));
        }
        return false;
    }

  private:
    std::function<void()> then_;
};

void PrintTime(QtToolkit& toolkit) {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    std::cout << std::fixed << std::chrono::duration<double>(now).count() << std::endl;
    toolkit.ActiveWindow()->close();
}

// Some time later: the window manager's frame comes, fades and animations end.
void TakePicture(QtToolkit& toolkit, const QString& file) {
    constexpr int settled = 600;
    QTimer::singleShot(settled, [&toolkit, file] {
        FormWindow* window = toolkit.ActiveWindow();
        const QRect frame = window->frameGeometry();
        const QPixmap picture =
            window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height());
        if (!picture.save(file)) {
            std::cerr << "window_probe: cannot write the picture\n";
        }
        window->close();
    });
}

int Show(const std::function<void(QtToolkit&)>& look) {
    QtToolkit toolkit(QDir(QStringLiteral(":/help")));
    lintara::platform::TomlSettings settings(lintara::platform::UserConfigFolder());
    const lintara::dialogs::DialogHost host{
        .toolkit = toolkit,
        .settings = settings,
        .placement = std::make_shared<lintara::dialogs::WindowPlacement>(settings, toolkit.ScreenArea())};
    FirstPaint firstPaint([&] { look(toolkit); });
    qApp->installEventFilter(&firstPaint);
    const std::string request(std::istreambuf_iterator<char>(std::cin), {});
    const auto answer = lintara::window::ShowWindow(request, host);
    if (!answer) {
        std::cerr << "window_probe: " << answer.error() << '\n';
    }
    return answer ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv, argv + argc);
    QApplication application(argc, argv);
    if (arguments.size() == 2 && arguments[1] == "first-paint") {
        return Show(PrintTime);
    }
    if (arguments.size() != 4 || arguments[1] != "picture") {
        std::cerr << "Usage: window_probe first-paint | window_probe picture light|dark FILE\n";
        return 2;
    }
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    if (arguments[2] == "dark") {
        QApplication::setPalette(DarkPalette());
    }
    const QString file = QString::fromLocal8Bit(argv[3]);
    return Show([&](QtToolkit& toolkit) { TakePicture(toolkit, file); });
}

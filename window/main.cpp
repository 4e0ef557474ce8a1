// `lintara-window`: shows one window with the user's settings, as standard input asks, and answers on
// standard output; see show_window.h. It is a program of its own so that `lintara` needs no windowing
// toolkit.
//
// When standard output is a pipe and its reader is gone, nobody waits for the answer, and the window goes
// too.
//
// Exit status: 0 when the window was shown, whatever the user did with it; 2 for a request that cannot be
// used; 3 where there is no display.
#include "base/constants.h"
#include "dialogs/window_placement.h"
#include "platform/toml_settings.h"
#include "platform/user_folders.h"
#include "ui/qt/qt_toolkit.h"
#include "ui/qt/text_conversion.h"
#include "window/display.h"
#include "window/show_window.h"

#include <QApplication>
#include <QDir>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr int badRequest = 2;

void Warn(const lintara::platform::SettingsNotice& notice) {
    std::cerr << "lintara-window: warning: " << notice.file.string();
    if (notice.line > 0) {
        std::cerr << ':' << notice.line;
    }
    std::cerr << ": " << notice.text << '\n';
}

int Complain(const std::string& sentence) {
    std::cerr << "lintara-window: error: " << sentence << '\n';
    return badRequest;
}

int Show(const std::string& request) {
    lintara::ui::QtToolkit toolkit(QDir(QStringLiteral(":/help")));
    lintara::platform::TomlSettings settings(lintara::platform::UserConfigFolder(), Warn);
    const lintara::dialogs::DialogHost host{
        .toolkit = toolkit,
        .settings = settings,
        .placement = std::make_shared<lintara::dialogs::WindowPlacement>(settings, toolkit.ScreenArea()),
        .libraryFolder = lintara::ui::ToText(QCoreApplication::applicationDirPath())};
    const auto answer = lintara::window::ShowWindow(request, host);
    if (!answer) {
        return Complain(answer.error());
    }
    std::cout << *answer << std::endl;
    return std::cout ? 0 : badRequest;
}

}  // namespace

int main(int argc, char** argv) {
    lintara::window::RequireDisplay();
    QApplication application(argc, argv);
    lintara::window::DisplayIsReached();
    // Not the display name, which Qt would add to the windows' captions.
    QApplication::setApplicationName(QStringLiteral("Tarnwick Lintara"));
    if (argc > 1) {
        return Complain("\"" + std::string(argv[1]) +
                        "\" is not known; the request is read from standard input");
    }
    QSocketNotifier reader(STDOUT_FILENO, QSocketNotifier::Exception);
    QObject::connect(&reader, &QSocketNotifier::activated, &application, [&reader] {
        reader.setEnabled(false);
        QCoreApplication::exit();
    });
    return Show(std::string(std::istreambuf_iterator<char>(std::cin), {}));
}

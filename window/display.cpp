#include "window/display.h"

#include <QString>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace lintara::window {
namespace {

constexpr int noDisplay = 3;

[[noreturn]] void EndWithout(std::string_view what) {
    std::fprintf(stderr, "lintara-window: error: cannot show a window: %.*s\n", static_cast<int>(what.size()),
                 what.data());
    std::fflush(stderr);
    std::_Exit(noDisplay);
}

bool IsSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

void EndWhenFatal(QtMsgType type, const QMessageLogContext& /*context*/, const QString& /*message*/) {
    if (type == QtFatalMsg) {
        EndWithout("the display that DISPLAY or WAYLAND_DISPLAY names cannot be reached");
    }
}

}  // namespace

void RequireDisplay() {
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY") && !IsSet("QT_QPA_PLATFORM")) {
        EndWithout("there is no display; neither DISPLAY nor WAYLAND_DISPLAY is set");
    }
    qInstallMessageHandler(EndWhenFatal);
}

void DisplayIsReached() {
    qInstallMessageHandler(nullptr);
}

}  // namespace lintara::window

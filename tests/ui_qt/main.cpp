// The windows are tested on a screen in memory, in one look, whatever the desktop of the machine is.
#include <QApplication>
#include <QFont>
#include <QStyleFactory>

#include <gtest/gtest.h>

// What the font library keeps to the end is no leak of ours.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\nleak:libQt6\nleak:libglib\n";
}

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_PLATFORMTHEME", "none");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Sample"));
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
    return RUN_ALL_TESTS();
}

#include "ui/qt/fonts.h"

#include "ui/qt/text_conversion.h"

#include <QApplication>
#include <QFontDatabase>

namespace lintara::ui {
namespace {

bool IsForCode(const QString& family) {
    return family.contains(QLatin1String("Courier")) || family.contains(QLatin1String("Mono"));
}

}  // namespace

QFont DesktopFont(const forms::Font& font) {
    QFont result = QApplication::font();
    const double factor = font.points / forms::Font{}.points;
    if (result.pointSizeF() > 0) {
        result.setPointSizeF(result.pointSizeF() * factor);
    } else {
        result.setPixelSize(qRound(result.pixelSize() * factor));
    }
    const QString family = ToQString(font.name);
    if (QFontDatabase::hasFamily(family)) {
        result.setFamily(family);
    } else if (IsForCode(family)) {
        // The system's own rules know which font takes the place of which.
        result.setFamilies({family, QFontDatabase::systemFont(QFontDatabase::FixedFont).family()});
        result.setStyleHint(QFont::Monospace);
        result.setFixedPitch(true);
    }
    result.setBold(font.bold);
    return result;
}

}  // namespace lintara::ui

// Texts as the library has them and as Qt has them. Both are UTF-16, so every code unit survives.
#pragma once

#include "base/text.h"

#include <QString>

namespace lintara::ui {

[[nodiscard]] inline QString ToQString(TextView text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

[[nodiscard]] inline Text ToText(QStringView text) {
    return {text.utf16(), static_cast<std::size_t>(text.size())};
}

}  // namespace lintara::ui

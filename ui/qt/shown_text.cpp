#include "ui/qt/shown_text.h"

#include "forms/text_difference.h"

#include <algorithm>

namespace lintara::ui {
namespace {

// Qt's documents keep these two for frames of their own, and break the line at them.
bool IsFrameMark(QChar unit) {
    return unit == QChar(0xFDD0) || unit == QChar(0xFDD1);
}

bool IsBreak(QChar unit) {
    return unit == u'\n' || unit == u'\r' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator || IsFrameMark(unit);
}

}  // namespace

ShownText::ShownText(TextView text) {
    shown_.reserve(static_cast<qsizetype>(text.size()));
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') {
            breaks_.push_back(static_cast<std::size_t>(shown_.size()));
            ++i;
        }
        shown_ += IsBreak(text[i]) ? QChar(u'\n') : QChar(text[i]);
    }
}

std::size_t ShownText::ToShown(std::size_t position) const {
    // Each break in front of the position is shown one code unit shorter.
    std::size_t before = 0;
    while (before < breaks_.size() && breaks_[before] + before + 1 < position) {
        ++before;
    }
    const bool isInside = before < breaks_.size() && breaks_[before] + before + 1 == position;
    const std::size_t shown = position - before - (isInside ? 1 : 0);
    return std::min(shown, static_cast<std::size_t>(shown_.size()));
}

std::size_t ShownText::ToText(std::size_t position) const {
    const std::size_t shown = std::min(position, static_cast<std::size_t>(shown_.size()));
    const auto behind = std::ranges::lower_bound(breaks_, shown);
    return shown + static_cast<std::size_t>(behind - breaks_.begin());
}

Text WithFormBreaks(QStringView shown) {
    Text text;
    text.reserve(static_cast<std::size_t>(shown.size()));
    for (const QChar unit : shown) {
        if (IsBreak(unit)) {
            text += u"\r\n";
        } else {
            text += unit.unicode();
        }
    }
    return text;
}

QString WithPlainBreaks(QString text) {
    for (QChar& unit : text) {
        if (IsBreak(unit)) {
            unit = u'\n';
        }
    }
    return text;
}

Difference DifferenceOf(QStringView before, QStringView after) {
    const auto unitsOf = [](QStringView text) {
        return TextView(text.utf16(), static_cast<std::size_t>(text.size()));
    };
    const forms::TextDifference difference = forms::DifferenceOf(unitsOf(before), unitsOf(after));
    const auto at = static_cast<qsizetype>(difference.at);
    return {.at = at,
            .removed = static_cast<qsizetype>(difference.removed),
            .inserted = after.sliced(at, static_cast<qsizetype>(difference.inserted.size())).toString()};
}

}  // namespace lintara::ui

// The text of a box of many lines as Qt shows it. There a line break is one code unit, "\n", where the form
// has two, "\r\n". A carriage return or line feed that stands alone is shown as a break as well and stays
// what it is, as do the separators of lines and paragraphs.
#pragma once

#include "base/text.h"

#include <QString>
#include <cstddef>
#include <vector>

namespace lintara::ui {

class ShownText {
  public:
    explicit ShownText(TextView text);

    [[nodiscard]] const QString& shown() const { return shown_; }

    // Where a position of the text stands in what is shown, and back. A position inside a break is the one in
    // front of it. What lies behind the end is the end.
    [[nodiscard]] std::size_t ToShown(std::size_t position) const;
    [[nodiscard]] std::size_t ToText(std::size_t position) const;

  private:
    QString shown_;
    // Where the breaks of two code units are shown.
    std::vector<std::size_t> breaks_;
};

// What the user has written, as forms have it: each break becomes "\r\n".
[[nodiscard]] Text WithFormBreaks(QStringView shown);

// A document's own text in the form of ShownText: with "\n" for each kind of break.
[[nodiscard]] QString WithPlainBreaks(QString text);

// The one piece in which two texts differ.
struct Difference {
    qsizetype at = 0;
    qsizetype removed = 0;
    QString inserted;

    [[nodiscard]] bool IsNone() const { return removed == 0 && inserted.isEmpty(); }
};

// How `after` comes of `before`. Halves of a surrogate pair are not torn apart.
[[nodiscard]] Difference DifferenceOf(QStringView before, QStringView after);

}  // namespace lintara::ui

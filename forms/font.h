// The font of a control. A renderer takes a similar one where it has no such font.
#pragma once

#include "base/text.h"

namespace lintara::forms {

struct Font {
    Text name = u"Tahoma";
    double points = 8.25;
    bool bold = false;

    friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace lintara::forms

// Places and sizes on a form, in twips: a twentieth of a point, a fifteenth of a pixel at the usual density
// of 96 dots per inch. A renderer turns them into the pixels of its screen.
#pragma once

#include <cstdint>

namespace lintara::forms {

using Twips = std::int32_t;

inline constexpr Twips TwipsPerPixel = 15;

struct Size {
    Twips width = 0;
    Twips height = 0;

    friend bool operator==(const Size&, const Size&) = default;
};

// A place in the coordinates of a control's container.
struct Rect {
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;

    friend bool operator==(const Rect&, const Rect&) = default;
};

// The ends of a straight line.
struct Segment {
    Twips x1 = 0;
    Twips y1 = 0;
    Twips x2 = 0;
    Twips y2 = 0;

    friend bool operator==(const Segment&, const Segment&) = default;
};

}  // namespace lintara::forms

// The marker lines of custom code blocks among the lines of a procedure: what removal goes by, looked at
// closer than the library does.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

struct CustomCodeMarker {
    std::size_t line = 0;  // its index
    bool isBegin = false;
    Text id = {};       // the digits that the marker ends with, and their sign
    bool alone = true;  // there is nothing on the line but the marker and, in front, a line number

    friend bool operator==(const CustomCodeMarker&, const CustomCodeMarker&) = default;
};

// From the first line to the last, in any letter case.
[[nodiscard]] std::vector<CustomCodeMarker> FindCustomCodeMarkers(std::span<const Text> lines);

// Whether the library takes the marker for one of `id`: it compares the beginning of the number only.
[[nodiscard]] bool IsTakenFor(const CustomCodeMarker& marker, TextView id);

// Whether `code` holds the text of a marker, of custom code or of error handlers, in any letter case.
[[nodiscard]] bool HoldsMarkerText(TextView code);

}  // namespace lintara::cli

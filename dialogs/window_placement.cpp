#include "dialogs/window_placement.h"

#include "base/constants.h"
#include "base/numbers.h"
#include "base/statement.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace lintara::dialogs {

using forms::Rect;
using forms::Twips;

namespace {

constexpr TextView WindowsSection = u"Windows";

// Decimal digits, with at most a sign in front: stricter than the language's own reading of numbers, to which
// commas belong as well.
std::optional<Twips> ReadNumber(TextView text) {
    const TextView digits = text.starts_with(u'-') ? text.substr(1) : text;
    Twips number = 0;
    if (digits.find_first_not_of(u"0123456789") != TextView::npos || !Assign(number, CLng(text))) {
        return std::nullopt;
    }
    return number;
}

std::optional<Rect> ReadPlacement(TextView text) {
    std::array<Twips, 4> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const bool isLast = i + 1 == numbers.size();
        const std::size_t end = isLast ? text.size() : text.find(u',');
        const auto number = end == TextView::npos ? std::nullopt : ReadNumber(text.substr(0, end));
        if (!number) {
            return std::nullopt;
        }
        numbers[i] = *number;
        text.remove_prefix(isLast ? end : end + 1);
    }
    const Rect place{numbers[0], numbers[1], numbers[2], numbers[3]};
    return place.width > 0 && place.height > 0 ? std::optional(place) : std::nullopt;
}

// The start nearest to `start` from which a piece of `length` lies between `from` and `from + room`; the
// beginning when the piece is too long.
Twips Within(Twips start, Twips length, Twips from, Twips room) {
    return std::clamp(start, from, from + std::max(room - length, 0));
}

}  // namespace

bool WindowPlacement::Load(hostmodel::PlacedWindow& window) const {
    const Text name = window.Name();
    const auto place =
        ReadPlacement(settings_.Get({constants::SettingsApplication, WindowsSection, name}, u""));
    if (!place) {
        return false;
    }
    // The window may take another size than the one it is given, and is moved by the size it took.
    window.Move(window.Left(), window.Top(), std::min(place->width, screen_.width),
                std::min(place->height, screen_.height));
    const Twips width = window.Width();
    const Twips height = window.Height();
    window.Move(Within(place->left, width, screen_.left, screen_.width),
                Within(place->top, height, screen_.top, screen_.height), width, height);
    return true;
}

void WindowPlacement::Save(const hostmodel::PlacedWindow& window) const {
    Text value;
    for (const Twips number : {window.Left(), window.Top(), window.Width(), window.Height()}) {
        if (!value.empty()) {
            value += u',';
        }
        AppendDecimal(value, number);
    }
    const Text name = window.Name();
    Attempt(settings_.Save({constants::SettingsApplication, WindowsSection, name}, value));
}

}  // namespace lintara::dialogs

#include "cli/guards/custom_code_markers.h"

#include "base/constants.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>
#include <optional>

namespace lintara::cli {
namespace {

bool BeginsWith(TextView text, TextView beginning) {
    return text.size() >= beginning.size() && std::ranges::equal(text.substr(0, beginning.size()), beginning,
                                                                 {}, workspace::Fold, workspace::Fold);
}

bool IsAsciiDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// The number at the beginning of `text`; "" when there is none.
TextView LeadingNumber(TextView text) {
    const std::size_t sign = text.starts_with(u'-') ? 1 : 0;
    std::size_t end = sign;
    while (end < text.size() && IsAsciiDigit(text[end])) {
        ++end;
    }
    return end == sign ? TextView() : text.substr(0, end);
}

// The marker of that text at the apostrophe `at` of the line.
std::optional<CustomCodeMarker> MarkerAt(TextView line, std::size_t at, TextView marker) {
    TextView rest = line.substr(at);
    if (!BeginsWith(rest, marker) || !rest.substr(marker.size()).starts_with(u' ')) {
        return std::nullopt;
    }
    rest.remove_prefix(marker.size() + 1);
    const TextView id = LeadingNumber(rest);
    if (id.empty()) {
        return std::nullopt;
    }
    const TextView front = line.substr(0, at);
    const TextView behind = rest.substr(id.size());
    const bool alone = workspace::SkipLineNumberAndLabel(front) == front.size() &&
                       workspace::SkipBlanks(behind) == behind.size();
    return CustomCodeMarker{.line = 0, .isBegin = false, .id = Text(id), .alone = alone};
}

}  // namespace

std::vector<CustomCodeMarker> FindCustomCodeMarkers(std::span<const Text> lines) {
    std::vector<CustomCodeMarker> markers;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const TextView line = lines[i];
        for (auto at = line.find(u'\''); at != TextView::npos; at = line.find(u'\'', at + 1)) {
            auto marker = MarkerAt(line, at, constants::CustomCodeBegin);
            const bool isBegin = marker.has_value();
            if (!isBegin) {
                marker = MarkerAt(line, at, constants::CustomCodeEnd);
            }
            if (marker) {
                marker->line = i;
                marker->isBegin = isBegin;
                markers.push_back(*std::move(marker));
            }
        }
    }
    return markers;
}

bool IsTakenFor(const CustomCodeMarker& marker, TextView id) {
    return marker.id.starts_with(id);
}

bool HoldsMarkerText(TextView code) {
    static constexpr std::array<TextView, 3> texts{constants::CustomCodeBegin, constants::CustomCodeEnd,
                                                   constants::ErrorHandlerBegin};
    for (auto at = code.find(u'\''); at != TextView::npos; at = code.find(u'\'', at + 1)) {
        if (std::ranges::any_of(texts, [&](TextView text) { return BeginsWith(code.substr(at), text); })) {
            return true;
        }
    }
    return false;
}

}  // namespace lintara::cli

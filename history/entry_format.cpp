#include "history/entry_format.h"

#include "base/numbers.h"
#include "base/strings.h"

namespace lintara::history {
namespace {

// What stands in front of the first `separator`, and what stands behind it.
struct Parts {
    TextView front;
    TextView back;
};

Parts SplitAtFirst(TextView text, TextView separator) {
    const std::size_t at = separator.empty() ? TextView::npos : text.find(separator);
    if (at == TextView::npos) {
        return {text, {}};
    }
    return {text.substr(0, at), text.substr(at + separator.size())};
}

}  // namespace

Entry ReadEntry(TextView entry, TextView separator) {
    const auto [place, line] = SplitAtFirst(entry, separator);
    const auto [component, member] = SplitAtFirst(place, u".");
    Text caption(member.empty() ? TextView(u"(Declarations)") : member);
    const TextView shownLine = Trim(line);
    if (!shownLine.empty()) {
        caption.append(u": ").append(shownLine);
    }
    return {.component = Text(component), .caption = std::move(caption)};
}

TextView GroupOf(std::size_t slot) {
    return slot < EntriesPerGroup ? u"Back" : u"Next";
}

Text KeyOf(std::size_t slot, TextView separator) {
    Text key(GroupOf(slot));
    key.append(separator);
    AppendDecimal(key, static_cast<std::int32_t>(slot % EntriesPerGroup));
    return key;
}

}  // namespace lintara::history

// How an entry of the navigation history is written, and what becomes of it in the window's tree.
//
// An entry is a place and, behind the separator that the services object gives (`Globals.HistSeparator`), the
// text of the line there: "Component.Member|line text" for the separator "|". In the declarations there is
// no ".Member". Only the first separator counts, so the line may hold others.
//
// The tree has three levels: the groups "Back" and "Next", the components, the entries. Groups and components
// have no keys. The key of an entry is its group, the separator, and its index from 0 to 9: "Back|0". So it
// is unique even where the same place stands in several slots, and it alone holds the separator, by which a
// node can be chosen. Its tag is the whole entry string.
#pragma once

#include "base/text.h"

#include <cstddef>

namespace lintara::history {

// The number of entries in each of the two lists.
inline constexpr std::size_t EntriesPerGroup = 10;
// Slots 0 to 9 hold the entries of the group "Back", slots 10 to 19 those of "Next".
inline constexpr std::size_t SlotCount = 2 * EntriesPerGroup;

struct Entry {
    Text component;
    Text caption;  // the member and the line text, as the node shows them
};

// Splits an entry. With an empty separator, or without one in it, all of it is the place.
[[nodiscard]] Entry ReadEntry(TextView entry, TextView separator);

[[nodiscard]] TextView GroupOf(std::size_t slot);
[[nodiscard]] Text KeyOf(std::size_t slot, TextView separator);

}  // namespace lintara::history

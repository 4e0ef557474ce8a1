// Places in the code that commands were pointed at, and the two lists of them between which the user moves as
// in a browser.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "history/entry_format.h"
#include "workspace/workspace.h"

#include <cstddef>
#include <vector>

namespace lintara::cli {

// Stands between the place and the line's text in an entry.
inline constexpr TextView historySeparator = u"|";

struct RecordedPlace {
    Text project;
    Text component;
    Text member;  // "" in the declarations
    Text text;    // of the line, without the blanks around it
    Line line;    // as the IDE shows it, when the place was recorded

    friend bool operator==(const RecordedPlace&, const RecordedPlace&) = default;
};

// The latest place first; no more than history::EntriesPerGroup in each list.
struct History {
    std::vector<RecordedPlace> back;  // its first one is where the user is
    std::vector<RecordedPlace> next;
};

// As the history window takes it.
[[nodiscard]] Text EntryOf(const RecordedPlace& place);

// The place of a line of a component. A line outside the module counts as the nearest one in it.
[[nodiscard]] RecordedPlace PlaceAt(const workspace::Project& project, const workspace::Component& component,
                                    Line line);

// Where the place is now: its own line while that has its text, line numbers aside, else the nearest one with
// that text, those of the member first, else the member's header, else what is left of the module.
[[nodiscard]] Line LineNow(const RecordedPlace& place, const workspace::Module& module);

// Null when the component is gone.
[[nodiscard]] const workspace::Component* ComponentOf(const RecordedPlace& place,
                                                      const workspace::Workspace& workspace);

// Goes to a place: it heads `back`, and there is nothing to go forward to. Being there already changes
// nothing.
void Visit(RecordedPlace place, History& history);

// Goes to the entry of that index: what was visited after it is in `next` then, the nearest first. The index
// must be below the size of its list.
void GoBack(std::size_t index, History& history);
void GoForward(std::size_t index, History& history);

}  // namespace lintara::cli

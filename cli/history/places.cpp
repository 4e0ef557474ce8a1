#include "cli/history/places.h"

#include "base/strings.h"
#include "workspace/characters.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>

namespace lintara::cli {
namespace {

using workspace::Module;

Line Nearest(Line line, const Module& module) {
    return Line(std::clamp(line.value(), 1, std::max(module.CountOfLines(), 1)));
}

Text TextAt(const Module& module, Line line) {
    Text text;
    if (line.value() <= module.CountOfLines()) {
        module.ReadLine(line, text);
    }
    return Text(Trim(text));
}

// The text without the line number that it begins with, which comes and goes.
TextView WithoutNumber(TextView text) {
    const std::size_t digits = std::min(text.find_first_not_of(u"0123456789"), text.size());
    text.remove_prefix(digits);
    if (digits > 0 && text.starts_with(u':')) {
        text.remove_prefix(1);
    }
    return Trim(text);
}

bool HasTextOf(const RecordedPlace& place, const Module& module, Line line) {
    const Text text = TextAt(module, line);
    return WithoutNumber(text) == WithoutNumber(place.text);
}

Text MemberAt(const Module& module, Line line) {
    const auto procedure = module.ProcedureAt(line);
    return procedure ? procedure->name : Text();
}

// The line nearest to `place`'s that has its text; with `inMember`, in its member alone.
std::optional<Line> FindText(const RecordedPlace& place, const Module& module, bool inMember) {
    std::optional<Line> found;
    for (std::int32_t number = 1; number <= module.CountOfLines(); ++number) {
        const Line line(number);
        const bool isNearer =
            !found || std::abs(number - place.line.value()) < std::abs(found->value() - place.line.value());
        if (isNearer && HasTextOf(place, module, line) &&
            (!inMember || workspace::SameName(MemberAt(module, line), place.member))) {
            found = line;
        }
    }
    return found;
}

void KeepNewest(std::vector<RecordedPlace>& places) {
    if (places.size() > history::EntriesPerGroup) {
        places.resize(history::EntriesPerGroup);
    }
}

// Moves the first `count` of one list, one after the other, to the head of the other.
void MoveHeads(std::size_t count, std::vector<RecordedPlace>& from, std::vector<RecordedPlace>& to) {
    const auto end = from.begin() + static_cast<std::ptrdiff_t>(count);
    to.insert(to.begin(), std::make_reverse_iterator(end), std::make_reverse_iterator(from.begin()));
    from.erase(from.begin(), end);
    KeepNewest(to);
}

}  // namespace

Text EntryOf(const RecordedPlace& place) {
    Text entry = place.component;
    if (!place.member.empty()) {
        entry.append(u".").append(place.member);
    }
    return entry.append(historySeparator).append(place.text);
}

RecordedPlace PlaceAt(const workspace::Project& project, const workspace::Component& component, Line line) {
    const Module& module = *component.module;
    const Line nearest = Nearest(line, module);
    return {.project = project.name(),
            .component = component.name,
            .member = MemberAt(module, nearest),
            .text = TextAt(module, nearest),
            .line = nearest};
}

Line LineNow(const RecordedPlace& place, const Module& module) {
    const Line same = Nearest(place.line, module);
    if (same == place.line && HasTextOf(place, module, same)) {
        return same;
    }
    if (!place.text.empty()) {
        for (const bool inMember : {true, false}) {
            if (const auto found = FindText(place, module, inMember)) {
                return *found;
            }
        }
    }
    for (const workspace::ProcedureInfo& procedure : module.Procedures()) {
        if (workspace::SameName(procedure.name, place.member)) {
            return procedure.header;
        }
    }
    return same;
}

const workspace::Component* ComponentOf(const RecordedPlace& place, const workspace::Workspace& workspace) {
    const workspace::Project* project = workspace.Find(place.project);
    return project == nullptr ? nullptr : project->Find(place.component);
}

void Visit(RecordedPlace place, History& history) {
    if (!history.back.empty() && history.back.front() == place) {
        return;
    }
    history.back.insert(history.back.begin(), std::move(place));
    KeepNewest(history.back);
    history.next.clear();
}

void GoBack(std::size_t index, History& history) {
    MoveHeads(index, history.back, history.next);
}

void GoForward(std::size_t index, History& history) {
    MoveHeads(index + 1, history.next, history.back);
}

}  // namespace lintara::cli

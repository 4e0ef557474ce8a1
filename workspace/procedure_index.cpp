#include "workspace/procedure_index.h"

#include "workspace/characters.h"

#include <algorithm>
#include <bit>
#include <ranges>
#include <utility>

namespace lintara::workspace {

using hostmodel::MemberKind;

ProcedureIndex::ProcedureIndex(const LineBuffer& lines) : lines_(&lines), reader_(lines) {
    LinesChanged(Line{1}, 0, lines.count(), false);
}

ProcedureIndex::Procedure ProcedureIndex::operator[](std::size_t i) const {
    Procedure procedure = procedures_.Stored(i);
    procedure.header = HeaderOf(i);
    procedure.extent.closing = LastLineOf(i);
    return procedure;
}

Line ProcedureIndex::HeaderOf(std::size_t i) const {
    return procedures_.Stored(i).header + procedures_.PendingShift(i);
}

ProcedureIndex::Extent ProcedureIndex::ExtentOf(std::size_t i) const {
    Extent extent = procedures_.Stored(i).extent;
    extent.closing += procedures_.PendingShift(i);
    return extent;
}

Line ProcedureIndex::LastLineOf(std::size_t i) const {
    const Extent extent = ExtentOf(i);
    return extent.closed ? extent.closing : lines_->last();
}

std::size_t ProcedureIndex::CountAbove(Line line) const {
    return procedures_.CountWhile([&](std::size_t i) { return HeaderOf(i) < line; });
}

std::optional<std::size_t> ProcedureIndex::Find(TextView name, std::optional<MemberKind> kind) const {
    if (procedures_.empty()) {
        return std::nullopt;
    }
    if (names_.empty()) {
        BuildNames();
    }
    const std::size_t mask = names_.size() - 1;
    for (std::size_t slot = HashName(name) & mask; names_[slot] != 0; slot = (slot + 1) & mask) {
        const std::size_t i = names_[slot] - 1;
        if ((!kind || KindOf(i) == *kind) && SameName(NameOf(i), name)) {
            return i;
        }
    }
    return std::nullopt;
}

bool ProcedureIndex::SameNameAndKind(std::size_t i, MemberKind kind, TextView name) const {
    return KindOf(i) == kind && SameName(NameOf(i), name);
}

// Procedures enter in order of appearance, so that the first of a name is the first met; those that have the
// name and kind of an earlier one are never asked for.
void ProcedureIndex::BuildNames() const {
    names_.assign(std::bit_ceil(procedures_.size() * 2 + 1), 0);
    const std::size_t mask = names_.size() - 1;
    for (std::size_t i = 0; i < procedures_.size(); ++i) {
        std::size_t slot = HashName(NameOf(i)) & mask;
        while (names_[slot] != 0 && !SameNameAndKind(names_[slot] - 1, KindOf(i), NameOf(i))) {
            slot = (slot + 1) & mask;
        }
        if (names_[slot] == 0) {
            names_[slot] = static_cast<std::uint32_t>(i + 1);
        }
    }
}

bool ProcedureIndex::IsNoEdge(Line line, TextView newText) const {
    const std::size_t above = CountAbove(line);
    if (above > 0 && ExtentOf(above - 1).IsOpenAt(line)) {
        return LastLineOf(above - 1) != line && !ClosesProcedure(newText, ExtentOf(above - 1).word);
    }
    const bool wasHeader = above < size() && HeaderOf(above) == line;
    return !wasHeader && !ParseHeader(newText);
}

// Scans the logical lines from the edit on, side by side with what was open at the same place before it,
// until both agree: from there on the procedures are the old ones, moved.
void ProcedureIndex::LinesChanged(Line line, std::int32_t removed, std::int32_t added, bool lastContinued) {
    const std::int32_t delta = added - removed;
    Line at = reader_.StartOf(line);
    const std::size_t begin = CountAbove(at);
    procedures_.MoveShiftTo(begin);
    const Extent outer = begin > 0 ? ExtentOf(begin - 1) : Extent{};
    std::size_t end = begin;  // the first procedure that stays

    std::vector<Procedure> found;
    // The procedure that is open where the scan stands: the last one found, or the one that the edit lies in.
    Extent* open = outer.IsOpenAt(at) ? &procedures_.Settled(begin - 1).extent : nullptr;
    bool settled = false;
    while (true) {
        if (at > line + added || (at == line + added && !lastContinued)) {
            const Line oldAt = at - delta;
            while (end < procedures_.size() && HeaderOf(end) < oldAt) {
                ++end;
            }
            const Extent old = end > begin ? ExtentOf(end - 1) : outer;
            settled = (open != nullptr) == old.IsOpenAt(oldAt) && (open == nullptr || open->word == old.word);
            if (settled && open != nullptr) {
                open->closed = old.closed;
                open->closing = old.closing + delta;
            }
        }
        if (settled || at > lines_->last()) {
            break;
        }
        const Line first = at;
        at = reader_.Read(first);
        if (open != nullptr) {
            if (ClosesProcedure(reader_.text(), open->word)) {
                open->closed = true;
                open->closing = at - 1;
                open = nullptr;
            }
        } else if (const auto header = ParseHeader(reader_.text())) {
            found.push_back({.name = Text(header->name),
                             .kind = header->kind,
                             .header = first,
                             .headerLines = at - first,
                             .extent = {header->word, header->closesItself, at - 1}});
            open = header->closesItself ? nullptr : &found.back().extent;
        }
    }
    if (!settled) {
        end = procedures_.size();
        if (open != nullptr) {
            open->closed = false;
        }
    }
    Replace(begin, end, std::move(found));
    procedures_.Shift(delta);
}

// Procedures [begin, end) give way to `found`; those behind them are the ones that move with the edit.
void ProcedureIndex::Replace(std::size_t begin, std::size_t end, std::vector<Procedure> found) {
    const bool sameNames =
        end - begin == found.size() &&
        std::ranges::all_of(std::views::iota(std::size_t{0}, found.size()), [&](std::size_t i) {
            return SameNameAndKind(begin + i, found[i].kind, found[i].name);
        });
    if (!sameNames) {
        names_.clear();
    }
    procedures_.MoveShiftTo(end);
    procedures_.Replace(begin, end, std::move(found));
}

}  // namespace lintara::workspace

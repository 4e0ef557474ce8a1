#include "cli/edits/custom_code_removal.h"

#include "cli/edits/custom_code_insertion.h"
#include "cli/edits/refusal.h"
#include "cli/guards/block_jumps.h"
#include "cli/guards/hidden_lines.h"
#include "cli/output/terminal_text.h"
#include "workspace/encoding.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

Line LineOf(const ProcedureText::Part& part, const CustomCodeMarker& marker) {
    return part.body.begin + static_cast<std::int32_t>(marker.line);
}

std::string_view KindOf(const CustomCodeMarker& marker) {
    return marker.isBegin ? "begin" : "end";
}

}  // namespace

CustomCodeRemoval::CustomCodeRemoval(std::int16_t id) : id_(id), number_(MarkerNumber(id)) {}

std::expected<bool, Skip> CustomCodeRemoval::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                   ComponentReport& report) {
    if (!FindBlocks(target, group)) {
        return false;
    }
    if (auto skip = CheckRanges(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    if (auto skip = Check(target)) {
        return std::unexpected(*std::move(skip));
    }
    for (const Block& block : blocks_) {
        RemarkFurtherBlocks(target, block, report);
    }
    const std::size_t procedures = target.module.CountOfProcedures();
    Remove(target, group);
    if (!IsAsForeseen(target, group, procedures)) {
        throw Refusal(std::string(KindWord(group)) + " " + Printable(group.name) + " in " +
                      Printable(target.component.name) + ": something else than the block would go");
    }
    return true;
}

bool CustomCodeRemoval::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    const std::int32_t lines = target.module.CountOfLines();
    Remove(target, group);
    return target.module.CountOfLines() != lines;
}

bool CustomCodeRemoval::HasWork(const workspace::Module& module,
                                const workspace::ProcedureInfo& procedure) const {
    std::vector<Text> lines;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, lines.emplace_back());
    }
    return std::ranges::any_of(FindCustomCodeMarkers(lines),
                               [&](const CustomCodeMarker& marker) { return marker.id == number_; });
}

void CustomCodeRemoval::Remove(const EditTarget& target, const ProcedureGroup& group) const {
    target.lintara.CustomCodeRemover(target.project.name(), target.component.name, group.name, id_);
}

bool CustomCodeRemoval::FindBlocks(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, group);
    blocks_.clear();
    bool any = false;
    for (const Part& part : text_.parts()) {
        Block& block = blocks_.emplace_back();
        block.part = part;
        block.markers = FindCustomCodeMarkers(text_.body(part));
        any |= std::ranges::find(block.markers, number_, &CustomCodeMarker::id) != block.markers.end();
    }
    return any;
}

std::optional<Skip> CustomCodeRemoval::Check(const EditTarget& target) {
    for (Block& block : blocks_) {
        // There the library's search goes on into the procedures below.
        if (block.part.body.count() == 0) {
            const Line header = block.part.lines.begin;
            return Skip{SkipReason::EmptyBody, header,
                        "its body at " + target.Place(header) +
                            " has no lines; blocks of later procedures could go in its place"};
        }
        for (auto check : {&CustomCodeRemoval::CheckPrefix, &CustomCodeRemoval::CheckMarkerLines}) {
            if (auto skip = (this->*check)(target, block)) {
                return skip;
            }
        }
        if (auto skip = Delimit(target, block)) {
            return skip;
        }
        if (block.lines.count() == 0) {
            continue;
        }
        for (auto check : {&CustomCodeRemoval::CheckNesting, &CustomCodeRemoval::CheckDirectives,
                           &CustomCodeRemoval::CheckJumps}) {
            if (auto skip = (this->*check)(target, block)) {
                return skip;
            }
        }
    }
    return std::nullopt;
}

// The library searches for the beginning of the number, for each marker by itself.
std::optional<Skip> CustomCodeRemoval::CheckPrefix(const EditTarget& target, const Block& block) const {
    for (const bool isBegin : {true, false}) {
        const auto first = std::ranges::find_if(block.markers, [&](const CustomCodeMarker& marker) {
            return marker.isBegin == isBegin && IsTakenFor(marker, number_);
        });
        if (first != block.markers.end() && first->id != number_) {
            const Line line = LineOf(block.part, *first);
            return Skip{SkipReason::MarkerPrefix, line,
                        "the " + std::string(KindOf(*first)) + " marker of block " +
                            workspace::ToUtf8(first->id) + " at " + target.Place(line) +
                            " would be taken for one of block " + workspace::ToUtf8(number_)};
        }
    }
    return std::nullopt;
}

std::optional<Skip> CustomCodeRemoval::CheckMarkerLines(const EditTarget& target, const Block& block) const {
    const auto body = text_.lines(block.part);
    for (const CustomCodeMarker& marker : block.markers) {
        if (marker.id != number_) {
            continue;
        }
        const Line line = LineOf(block.part, marker);
        const auto above = static_cast<std::size_t>(line - block.part.lines.begin) - 1;
        if (!marker.alone || workspace::Continues(body[above])) {
            return Skip{SkipReason::MarkerMismatch, line,
                        target.Place(line) + " holds more than a marker, which would go with it"};
        }
    }
    return std::nullopt;
}

std::optional<Skip> CustomCodeRemoval::Delimit(const EditTarget& target, Block& block) const {
    const auto first = [&](bool isBegin) {
        return std::ranges::find_if(block.markers, [&](const CustomCodeMarker& marker) {
            return marker.isBegin == isBegin && marker.id == number_;
        });
    };
    const auto begin = first(true);
    const auto end = first(false);
    const auto none = block.markers.end();
    if (begin == none && end == none) {
        return std::nullopt;
    }
    const Line at = LineOf(block.part, begin == none ? *end : *begin);
    const auto mismatch = [&](const std::string& message) {
        return Skip{SkipReason::MarkerMismatch, at, message};
    };
    if (begin == none) {
        return mismatch("the end marker at " + target.Place(at) + " has no begin marker in the procedure");
    }
    if (end == none) {
        return mismatch("the begin marker at " + target.Place(at) + " has no end marker in the procedure");
    }
    const Line last = LineOf(block.part, *end);
    if (last <= at) {
        return mismatch("the end marker at " + target.Place(last) + " stands before the begin marker at " +
                        target.Place(at));
    }
    block.lines = {at, last + 1};
    return std::nullopt;
}

// What goes must hold whole blocks of other numbers only, no second one of this number, and no line that the
// IDE hides.
std::optional<Skip> CustomCodeRemoval::CheckNesting(const EditTarget& target, const Block& block) const {
    std::vector<const CustomCodeMarker*> open;
    const CustomCodeMarker* odd = nullptr;
    for (const CustomCodeMarker& marker : block.markers) {
        const Line line = LineOf(block.part, marker);
        if (odd != nullptr || line <= block.lines.begin || line >= block.lines.end - 1) {
            continue;
        }
        if (marker.isBegin && marker.id != number_) {
            open.push_back(&marker);
        } else if (!marker.isBegin && !open.empty() && open.back()->id == marker.id) {
            open.pop_back();
        } else {
            odd = &marker;
        }
    }
    if (odd == nullptr && !open.empty()) {
        odd = open.back();
    }
    if (odd != nullptr) {
        const Line line = LineOf(block.part, *odd);
        return Skip{SkipReason::MarkerMismatch, line,
                    "the block holds the " + std::string(KindOf(*odd)) + " marker at " + target.Place(line) +
                        " alone, without the other one of block " + workspace::ToUtf8(odd->id)};
    }
    if (HoldsHiddenLines(target.module, block.lines)) {
        return Skip{SkipReason::HiddenLines, block.lines.begin,
                    "the block at " + target.Place(block.lines.begin) +
                        " holds attribute lines that the IDE hides, which would go with it"};
    }
    return std::nullopt;
}

std::optional<Skip> CustomCodeRemoval::CheckDirectives(const EditTarget& target, const Block& block) const {
    const auto lines = text_.lines(block.part)
                           .subspan(static_cast<std::size_t>(block.lines.begin - block.part.lines.begin),
                                    static_cast<std::size_t>(block.lines.count()));
    return CheckDirectivesThatGo(target, lines, block.lines.begin, "the block");
}

std::optional<Skip> CustomCodeRemoval::CheckJumps(const EditTarget& target, const Block& block) const {
    const Line first = block.part.lines.begin;
    const auto jump =
        FindJumpIntoBlock(text_.lines(block.part), static_cast<std::size_t>(block.lines.begin - first),
                          static_cast<std::size_t>(block.lines.end - first));
    if (!jump) {
        return std::nullopt;
    }
    const Line line = first + static_cast<std::int32_t>(jump->line);
    return Skip{SkipReason::JumpTarget, line,
                target.Place(line) + " jumps to " + Printable(jump->target) + ", which would go"};
}

bool CustomCodeRemoval::IsAsForeseen(const EditTarget& target, const ProcedureGroup& group,
                                     std::size_t proceduresBefore) const {
    if (target.module.CountOfProcedures() != proceduresBefore) {
        return false;
    }
    return std::ranges::all_of(group.reached, [&](const workspace::ProcedureInfo& before) {
        const workspace::ProcedureInfo now = target.module.Procedure(before.number);
        std::int32_t above = 0;
        std::int32_t inside = 0;
        for (const Block& block : blocks_) {
            above += block.part.lines.begin < before.header ? block.lines.count() : 0;
            inside += block.part.lines.begin == before.header ? block.lines.count() : 0;
        }
        return now.name == before.name && now.kind == before.kind && now.closed == before.closed &&
               now.header == before.header - above && now.closing == before.closing - above - inside;
    });
}

void CustomCodeRemoval::RemarkFurtherBlocks(const EditTarget& target, const Block& block,
                                            ComponentReport& report) const {
    const auto further = std::ranges::find_if(block.markers, [&](const CustomCodeMarker& marker) {
        return marker.isBegin && marker.id == number_ && LineOf(block.part, marker) >= block.lines.end;
    });
    if (block.lines.count() > 0 && further != block.markers.end()) {
        const Line line = LineOf(block.part, *further);
        report.remarks.push_back({"more-blocks", target.Input(line),
                                  target.Place(line) + " begins another block " + workspace::ToUtf8(number_) +
                                      "; run the command again to remove it"});
    }
}

}  // namespace lintara::cli

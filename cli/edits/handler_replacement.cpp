#include "cli/edits/handler_replacement.h"

#include "cli/guards/custom_code_markers.h"
#include "cli/guards/existing_numbers.h"
#include "cli/output/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <iterator>

namespace lintara::cli {
namespace {

Line At(const ProcedureText::Part& part, std::size_t index) {
    return part.body.begin + static_cast<std::int32_t>(index);
}

// Of each part whether a line above its handler leads to the label.
std::vector<bool> LedParts(const ProcedureText& text, const HandlerRemoval::Blocks& blocks, TextView label) {
    std::vector<bool> led;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto above = text.body(text.parts()[i]).first(blocks[i] ? blocks[i]->begin : 0);
        led.push_back(std::ranges::any_of(above, [&](const Text& line) { return LeadsTo(line, label); }));
    }
    return led;
}

}  // namespace

std::optional<Skip> HandlerReplacement::Replace(const EditTarget& target, const ProcedureGroup& group,
                                                ProcedureText& text, Blocks& blocks,
                                                ComponentReport& report) {
    const auto label = LabelOf(target, text, blocks);
    if (!label) {
        return label.error();
    }
    const bool isNumbered = std::ranges::any_of(
        text.parts(), [&](const Part& part) { return FindNumericLabel(text.body(part)).has_value(); });
    std::vector<Remark> remarks;
    if (isNumbered) {
        if (auto skip = TakeNumbersOut(target, group, text, blocks, remarks)) {
            return skip;
        }
    }
    auto skip = ReplaceUnnumbered(target, group, text, blocks, *label, report);
    if (skip && isNumbered) {
        numbered_.PutBackAll(target.module);
    }
    if (!skip) {
        std::ranges::move(remarks, std::back_inserter(report.remarks));
    }
    return skip;
}

std::optional<Skip> HandlerReplacement::ReplaceUnnumbered(const EditTarget& target,
                                                          const ProcedureGroup& group, ProcedureText& text,
                                                          Blocks& blocks, TextView label,
                                                          ComponentReport& report) {
    auto skip = HandlerRemoval::Check(target, text, blocks, label, wanted_.label);
    for (std::size_t i = 0; !skip && i < blocks.size(); ++i) {
        const Part& part = text.parts()[i];
        skip = CheckBody(target, text, part, blocks[i]);
    }
    if (!skip) {
        skip = writer_.CheckCode(group);
    }
    if (skip) {
        return skip;
    }
    std::vector<Remark> remarks = removal_.RemarksOnTyped(target, group, text, blocks);
    const std::vector<bool> led = LedParts(text, blocks, label);
    removal_.Remove(target, group, text, blocks, label);
    ProcedureGroup now = group;
    Refresh(now, target.module);
    ProcedureText rest;
    rest.Read(target.module, now);
    skip = writer_.Write(target, now, rest, Blocks(blocks.size()), led, report);
    if (skip) {
        HandlerRemoval::PutBack(target, text, blocks);
        return skip;
    }
    std::ranges::move(remarks, std::back_inserter(report.remarks));
    return std::nullopt;
}

std::optional<Skip> HandlerReplacement::CheckBody(const EditTarget& target, const ProcedureText& text,
                                                  const Part& part,
                                                  const std::optional<HandlerBlock>& block) const {
    const auto body = text.body(part);
    if (const auto foreign = FindForeignNumber(body)) {
        const Line line = At(part, *foreign);
        return Skip{SkipReason::ForeignNumbers, line,
                    target.Place(line) + " has a number that another tool wrote; remove it there first"};
    }
    const auto kept = body.first(block ? block->begin : body.size());
    if (kept.empty()) {
        return Skip{SkipReason::EmptyBody, part.lines.begin,
                    "its body at " + target.Place(part.lines.begin) + " has no lines but the handler"};
    }
    const auto markers = FindCustomCodeMarkers(body.subspan(kept.size()));
    if (!markers.empty()) {
        const Line line = At(part, kept.size() + markers.front().line);
        return Skip{SkipReason::MarkerMismatch, line,
                    "block " + workspace::ToUtf8(markers.front().id) + " of custom code at " +
                        target.Place(line) +
                        " stands inside the handler and would go with it; remove it first"};
    }
    return writer_.CheckLabels(target, text, part, block);
}

std::optional<Skip> HandlerReplacement::TakeNumbersOut(const EditTarget& target, const ProcedureGroup& group,
                                                       ProcedureText& text, Blocks& blocks,
                                                       std::vector<Remark>& remarks) {
    for (const Part& part : text.parts()) {
        const auto number = FindNumericLabel(text.body(part));
        if (number && !numbersToo_) {
            const Line line = At(part, *number);
            return Skip{SkipReason::AlreadyNumbered, line,
                        target.Place(line) +
                            " has a number; give --line-numbers, too, to replace handler and numbers"};
        }
    }
    std::swap(numbered_, text);
    if (const auto removed = numberRemoval_.RemoveFrom(target, group, numbered_, remarks); !removed) {
        return removed.error();
    }
    text.Read(target.module, group);
    blocks = HandlerRemoval::FindBlocks(text);
    return std::nullopt;
}

std::expected<Text, Skip> HandlerReplacement::LabelOf(const EditTarget& target, const ProcedureText& text,
                                                      const Blocks& blocks) const {
    Text label;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (!blocks[i] || blocks[i]->label.empty()) {
            continue;
        }
        if (!label.empty() && !workspace::SameName(label, blocks[i]->label)) {
            const Line line = At(text.parts()[i], blocks[i]->begin);
            return std::unexpected(Skip{SkipReason::LabelMismatch, line,
                                        "its handlers have different labels: " + Printable(label) +
                                            ", and at " + target.Place(line) + " " +
                                            Printable(blocks[i]->label)});
        }
        label = blocks[i]->label;
    }
    return label.empty() ? wanted_.label : label;
}

}  // namespace lintara::cli

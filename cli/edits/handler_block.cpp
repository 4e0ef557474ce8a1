#include "cli/edits/handler_block.h"

#include "base/constants.h"
#include "base/text_scan.h"
#include "cli/guards/code_text.h"
#include "cli/guards/inserted_code.h"
#include "cli/guards/labels.h"
#include "cli/output/terminal_text.h"
#include "transform/line_numbers.h"
#include "transform/line_text.h"
#include "transform/templates.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::cli {
namespace {

constexpr TextView NumberColumn = u"       ";
static_assert(NumberColumn.size() == transform::NumberColumnWidth);

// Stands for what an open placeholder has become. No text holds this character.
constexpr TextView Anything = u"\uFFFF";

constexpr std::array OpenPlaceholders = {constants::ComputerNamePlaceholder, constants::UserNamePlaceholder,
                                         constants::DatePlaceholder, constants::TimePlaceholder};

constexpr std::size_t LabelLine = 2;

bool IsBlankLine(TextView line) {
    return workspace::SkipBlanks(line) == line.size();
}

std::span<const Text> WithoutBlankEnd(std::span<const Text> lines) {
    while (!lines.empty() && IsBlankLine(lines.back())) {
        lines = lines.first(lines.size() - 1);
    }
    return lines;
}

TextView WithoutNumber(TextView line) {
    const transform::LineLabel label = transform::GetLineLabel(line);
    if (!label.isLabel || !transform::IsNumericLabel(label.label)) {
        return line;
    }
    line.remove_prefix(label.label.size() + 1);
    return line.starts_with(u' ') ? line.substr(1) : line;
}

// Whether `line` is the pieces of `wanted` with any text in place of each open placeholder.
bool FitsOpen(TextView line, TextView wanted) {
    std::size_t open = wanted.find(Anything);
    if (open == TextView::npos) {
        return IsSameCode(line, wanted);
    }
    if (!line.starts_with(wanted.substr(0, open))) {
        return false;
    }
    line.remove_prefix(open);
    wanted.remove_prefix(open + 1);
    while ((open = wanted.find(Anything)) != TextView::npos) {
        const std::size_t found = line.find(wanted.substr(0, open));
        if (found == TextView::npos) {
            return false;
        }
        line.remove_prefix(found + open);
        wanted.remove_prefix(open + 1);
    }
    return line.ends_with(wanted);
}

bool IsAsWanted(TextView line, TextView wanted) {
    line = WithoutNumber(line);
    if (IsBlankLine(line) && IsBlankLine(wanted)) {
        return true;
    }
    return FitsOpen(line, wanted) ||
           (line.starts_with(NumberColumn) && FitsOpen(line.substr(NumberColumn.size()), wanted)) ||
           (wanted.starts_with(NumberColumn) && FitsOpen(line, wanted.substr(NumberColumn.size())));
}

bool IsMarkerAlone(TextView line) {
    line = WithoutNumber(line);
    line = line.substr(workspace::SkipBlanks(line));
    return FindText(line, constants::ErrorHandlerBegin) == 0;
}

HandlerFinding OutOfDate(Line at, std::string why) {
    return {HandlerState::OutOfDate, at, std::move(why)};
}

// What is wrong with the block; none when it is as wanted.
std::optional<HandlerFinding> ChangeOf(const EditTarget& target, Line begin, const HandlerBlock& block,
                                       std::span<const Text> lines, std::span<const Text> wanted,
                                       TextView label) {
    const auto change = FindHandlerChange(lines, wanted);
    if (!change) {
        return std::nullopt;
    }
    const Line line = begin + static_cast<std::int32_t>(*change);
    if (*change == LabelLine && !block.label.empty()) {
        return OutOfDate(line, "its label at " + target.Place(line) + " is " + Printable(block.label) +
                                   ", not " + Printable(label));
    }
    if (*change == lines.size()) {
        return OutOfDate(line - 1, "it ends at " + target.Place(line - 1) + ", ahead of the template's end");
    }
    return OutOfDate(line, target.Place(line) + " is not what the template gives there");
}

}  // namespace

bool HoldsOpenPlaceholder(TextView code) {
    return std::ranges::any_of(OpenPlaceholders, [&](TextView placeholder) {
        return FindExactly(code, placeholder) != TextView::npos;
    });
}

std::optional<HandlerBlock> FindHandlerBlock(std::span<const Text> body) {
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (FindText(body[i], constants::ErrorHandlerBegin) == TextView::npos) {
            continue;
        }
        HandlerBlock block{.begin = i,
                           .alone = IsMarkerAlone(body[i]) && (i == 0 || !workspace::Continues(body[i - 1]))};
        if (i + LabelLine < body.size()) {
            block.label = LabelOfLine(body[i + LabelLine]);
        }
        return block;
    }
    return std::nullopt;
}

std::vector<Text> WantedBlock(const EditTarget& target, const ProcedureGroup& group,
                              const WantedHandler& wanted) {
    Text code = wanted.code;
    for (const TextView placeholder : OpenPlaceholders) {
        if (FindExactly(code, placeholder) != TextView::npos) {
            code = transform::ReplaceAll(code, placeholder, Anything);
        }
    }
    std::vector<Text> lines = {Text(constants::ErrorHandlerBegin),
                               u"Exit " + target.lintara.GetMemberTypeEx(target.component.name, group.name),
                               wanted.label + u":"};
    for (Text& line : SplitLines(target.lintara.ParsePseudoCodeEx(code, target.component.name, group.name))) {
        lines.push_back(std::move(line));
    }
    return lines;
}

std::optional<std::size_t> FindHandlerChange(std::span<const Text> block, std::span<const Text> wanted) {
    block = WithoutBlankEnd(block);
    wanted = WithoutBlankEnd(wanted);
    const auto [differing, other] = std::ranges::mismatch(block, wanted, IsAsWanted);
    if (differing == block.end() && other == wanted.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(differing - block.begin());
}

HandlerFinding StateOfHandler(const EditTarget& target, const ProcedureGroup& group,
                              const WantedHandler& wanted) {
    ProcedureText text;
    text.Read(target.module, group);
    HandlerFinding finding;
    std::optional<HandlerFinding> change;
    const ProcedureText::Part* without = nullptr;
    std::vector<Text> lines;
    for (const ProcedureText::Part& part : text.parts()) {
        const auto block = FindHandlerBlock(text.body(part));
        if (!block) {
            without = without == nullptr ? &part : without;
            continue;
        }
        if (lines.empty()) {
            lines = WantedBlock(target, group, wanted);
        }
        const Line begin = part.body.begin + static_cast<std::int32_t>(block->begin);
        if (finding.state == HandlerState::None) {
            finding = {HandlerState::UpToDate, begin, {}};
        }
        if (!change) {
            change =
                ChangeOf(target, begin, *block, text.body(part).subspan(block->begin), lines, wanted.label);
        }
    }
    if (change) {
        return *std::move(change);
    }
    if (finding.state == HandlerState::UpToDate && without != nullptr) {
        return OutOfDate(without->lines.begin,
                         "the procedure at " + target.Place(without->lines.begin) + " has none");
    }
    return finding;
}

}  // namespace lintara::cli

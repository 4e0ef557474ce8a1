#include "cli/invariants/body_check.h"

#include "base/constants.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <string_view>

namespace lintara::cli {
namespace {

using transform::CodePlace;
using workspace::SameName;

constexpr std::size_t LabelLine = 2;  // of a handler; the code is behind it

constexpr const char* NotGivenBack = "taking out what was inserted would not give it back";
constexpr const char* MoreThanMeant = "more of it would go than was to be removed";

bool StartsWithAnyCase(TextView text, TextView beginning) {
    return text.size() >= beginning.size() && SameName(text.substr(0, beginning.size()), beginning);
}

Text BareLine(const CodeLines& lines, std::size_t index) {
    Text line;
    lines.Read(index, line);
    return Text(BareText(line));
}

// The label that the line begins with; "" without one.
Text LabelAt(const CodeLines& lines, std::size_t index) {
    const Text line = BareLine(lines, index);
    const std::size_t end = workspace::SkipWord(line, 0);
    return end < line.size() && line[end] == u':' ? line.substr(0, end) : Text();
}

// Whether the line might hold the marker; told without decoding it, as nearly no line does.
bool MayHoldMarker(std::string_view line) {
    for (std::size_t at = line.find('\''); at != std::string_view::npos; at = line.find('\'', at + 1)) {
        const std::string_view rest = line.substr(at + 1);
        if (rest.starts_with(" T") || rest.starts_with(" t")) {
            return true;
        }
    }
    return false;
}

}  // namespace

std::optional<BodyFault> BodyCheck::Check(const ProcedureLines& before, const ProcedureLines& after) {
    const Part b{before.body, before.closing};
    const Part a{after.body, after.closing};
    if (before_.piece(b.begin, b.end) == after_.piece(a.begin, a.end)) {
        return std::nullopt;
    }
    if (rules_.customCode.in) {
        return CheckCustomInsertion(b, a);
    }
    if (rules_.customCode.out) {
        return CheckCustomRemoval(b, a);
    }
    return CheckHandlers(b, a);
}

std::optional<BodyFault> BodyCheck::CheckHandlers(Part b, Part a) {
    if (!rules_.handlers.in && !rules_.handlers.out) {
        return CheckUnhandled(b, a, b.end);
    }
    const std::size_t handlerBefore = FindHandler(before_, b);
    const std::size_t handlerAfter = FindHandler(after_, a);
    return rules_.handlers.in ? CheckInsertion(b, a, handlerBefore, handlerAfter)
                              : CheckRemoval(b, a, handlerBefore, handlerAfter);
}

std::optional<BodyFault> BodyCheck::CheckInsertion(Part b, Part a, std::size_t handlerBefore,
                                                   std::size_t handlerAfter) {
    const bool hadHandler = handlerBefore < b.end;
    if (hadHandler || handlerAfter == a.end) {
        // A handler that was to be replaced and stayed may have been written again as it was.
        auto fault = CheckUnhandled(b, a, rules_.handlers.out ? handlerBefore : b.end);
        if (!fault || !rules_.handlers.out || handlerAfter == a.end) {
            return fault;
        }
    }
    Redirection redirection{.from = {Text(constants::NoErrorHandler)}, .to = rules_.handlers.label};
    if (hadHandler) {
        std::ranges::move(LabelsOfHandlers(b, handlerBefore), std::back_inserter(redirection.from));
    }
    return CheckNewHandler({b.begin, handlerBefore}, a, handlerAfter, redirection);
}

std::optional<BodyFault> BodyCheck::CheckNewHandler(Part b, Part a, std::size_t handlerAfter,
                                                    const Redirection& redirection) {
    const Part above{a.begin, handlerAfter};
    BodyFault atEnd{b.end > b.begin ? b.end - 1 : b.begin, NotGivenBack};
    if (above.size() != b.size() && above.size() != b.size() + 1) {
        return atEnd;
    }
    const std::size_t added = above.size() - b.size();
    if (added == 1) {
        const Text lead = BareLine(after_, above.begin + HiddenAtBegin(before_, b));
        if (!SameName(lead, Text(constants::CommittedOnErrorGoTo).append(rules_.handlers.label))) {
            return BodyFault{b.begin,
                             "another statement than the one that leads to the handler would stand "
                             "in front of it"};
        }
    }
    if (auto fault = CompareLines(b, above, added, b.end, redirection)) {
        return fault;
    }
    if (a.end - handlerAfter <= LabelLine ||
        !StartsWithAnyCase(BareLine(after_, handlerAfter), constants::ErrorHandlerBegin) ||
        !StartsWithAnyCase(BareLine(after_, handlerAfter + 1), u"Exit ") ||
        !SameName(LabelAt(after_, handlerAfter + LabelLine), rules_.handlers.label)) {
        return BodyFault{atEnd.line, "the handler behind it would not have its marker, Exit and its label"};
    }
    return std::nullopt;
}

std::optional<BodyFault> BodyCheck::CheckRemoval(Part b, Part a, std::size_t handlerBefore,
                                                 std::size_t handlerAfter) {
    const bool isGone = handlerBefore < b.end && handlerAfter == a.end;
    if (!isGone) {
        return CheckUnhandled(b, a, b.end);
    }
    const Part kept{b.begin, handlerBefore};
    if (kept.size() != a.size()) {
        return BodyFault{handlerBefore, kept.size() > a.size() ? MoreThanMeant : "a part of it would stay"};
    }
    return CompareLines(kept, a, 0, kept.end,
                        {.from = {rules_.handlers.label}, .to = Text(constants::NoErrorHandler)});
}

// The lines as they are, but for numbers.
std::optional<BodyFault> BodyCheck::CheckUnhandled(Part b, Part a, std::size_t rewritten) {
    if (b.size() != a.size()) {
        return BodyFault{b.begin, b.size() > a.size()
                                      ? "lines of the procedure would go"
                                      : "the procedure would get lines that nobody asked for"};
    }
    return CompareLines(b, a, 0, rewritten, {});
}

std::optional<BodyFault> BodyCheck::CompareLines(Part b, Part a, std::size_t added, std::size_t rewritten,
                                                 const Redirection& redirection) {
    LineComparison change(before_, after_, rules_.numbers);
    const std::size_t first = added == 0 ? b.begin : b.begin + HiddenAtBegin(before_, b);
    const char* const message = rules_.numbers.out || rules_.handlers.out ? MoreThanMeant : NotGivenBack;
    for (std::size_t i = b.begin; i < b.end; ++i) {
        const std::size_t j = a.begin + (i - b.begin) + (i < first ? 0 : added);
        const bool same =
            i < rewritten ? change.IsSame(i, j, redirection) : change.IsSameText(i, j, redirection);
        if (!same) {
            return BodyFault{i, message};
        }
    }
    // Code that nothing was numbered in, or whose numbers were not taken out, is not moved either. Handlers
    // have numbers of their own, which are not counted here.
    const bool oneWay = rules_.numbers.in != rules_.numbers.out;
    const bool handlers = rules_.handlers.in || rules_.handlers.out;
    if (oneWay && !handlers && change.count().shifted > 0 && change.count().numbered == 0) {
        return BodyFault{b.begin, "its lines would be moved, though it has no numbers"};
    }
    return std::nullopt;
}

std::optional<BodyFault> BodyCheck::CheckCustomInsertion(Part b, Part a) const {
    if (a.size() <= b.size()) {
        return BodyFault{b.begin, NotGivenBack};
    }
    const std::size_t count = a.size() - b.size();
    std::size_t at = b.end;
    if (rules_.customCode.place != CodePlace::BeforeLastLine) {
        std::int32_t shown =
            rules_.customCode.place == CodePlace::AfterFirstLine ? 1 : rules_.customCode.line;
        for (at = b.begin; at < b.end; ++at) {
            if (!before_.IsHidden(at) && --shown == 0) {
                break;
            }
        }
    }
    if (auto fault = CompareAround(b, a, at, 0, count)) {
        return fault;
    }
    const std::size_t first = a.begin + (at - b.begin);
    if (rules_.customCode.markers && !(IsCustomMarker(after_, first, constants::CustomCodeBegin) &&
                                       IsCustomMarker(after_, first + count - 1, constants::CustomCodeEnd))) {
        return BodyFault{std::min(at, b.end - 1), "the code in front of it would not be between its markers"};
    }
    return std::nullopt;
}

std::optional<BodyFault> BodyCheck::CheckCustomRemoval(Part b, Part a) const {
    if (a.size() >= b.size()) {
        return BodyFault{b.begin, MoreThanMeant};
    }
    const std::size_t count = b.size() - a.size();
    std::size_t at = b.begin;
    while (at < b.end && !IsCustomMarker(before_, at, constants::CustomCodeBegin)) {
        ++at;
    }
    if (at + count > b.end || !IsCustomMarker(before_, at + count - 1, constants::CustomCodeEnd)) {
        return BodyFault{std::min(at, b.end - 1), MoreThanMeant};
    }
    return CompareAround(b, a, at, count, 0);
}

std::optional<BodyFault> BodyCheck::CompareAround(Part b, Part a, std::size_t at, std::size_t inBefore,
                                                  std::size_t inAfter) const {
    LineComparison change(before_, after_, {});
    const auto differs = [&](std::size_t i) {
        const std::size_t j = a.begin + (i - b.begin) + (i < at ? 0 : inAfter - inBefore);
        return !change.IsSame(i, j, {});
    };
    for (std::size_t i = b.begin; i < b.end; ++i) {
        if ((i < at || i >= at + inBefore) && differs(i)) {
            return BodyFault{i, rules_.customCode.in ? NotGivenBack : MoreThanMeant};
        }
    }
    return std::nullopt;
}

bool BodyCheck::IsCustomMarker(const CodeLines& lines, std::size_t index, TextView marker) const {
    if (lines.hasByteUnits() && !MayHoldMarker(lines.line(index))) {
        return false;
    }
    const Text line = BareLine(lines, index);
    const Text sought = Text(marker).append(u" ").append(rules_.customCode.number);
    const TextView text = TextView(line).substr(std::min(workspace::SkipBlanks(line), line.size()));
    return StartsWithAnyCase(text, sought) && workspace::SkipBlanks(text, sought.size()) == text.size();
}

std::size_t BodyCheck::FindHandler(const CodeLines& lines, Part part) {
    Text text;
    for (std::size_t i = part.begin; i < part.end; ++i) {
        if (lines.hasByteUnits() && !MayHoldMarker(lines.line(i))) {
            continue;
        }
        lines.Read(i, text);
        if (!lines.IsHidden(i) &&
            workspace::FindWithoutCase(text, constants::ErrorHandlerBegin) != TextView::npos) {
            return i;
        }
    }
    return part.end;
}

std::size_t BodyCheck::HiddenAtBegin(const CodeLines& lines, Part part) {
    std::size_t at = part.begin;
    while (at < part.end && lines.IsHidden(at)) {
        ++at;
    }
    return at - part.begin;
}

// The label of the handler; the labels of all handlers when it has none, as those of a property share one.
std::vector<Text> BodyCheck::LabelsOfHandlers(Part b, std::size_t handler) const {
    std::vector<Text> labels;
    if (handler + LabelLine < b.end) {
        labels.push_back(LabelAt(before_, handler + LabelLine));
    }
    if (!labels.empty() && !labels.front().empty()) {
        return labels;
    }
    labels = {rules_.handlers.label};
    for (const ProcedureLines& procedure : before_.procedures()) {
        const Part other{procedure.body, procedure.closing};
        const std::size_t found = FindHandler(before_, other);
        if (found + LabelLine < other.end) {
            labels.push_back(LabelAt(before_, found + LabelLine));
        }
    }
    return labels;
}

}  // namespace lintara::cli

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
constexpr const char* OtherNumbers = "its numbers would not be those that numbering gives";
constexpr const char* OtherCode = "other code would come than the template stands for";

bool StartsWithAnyCase(TextView text, TextView beginning) {
    return text.size() >= beginning.size() && SameName(text.substr(0, beginning.size()), beginning);
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

BodyCheck::BodyCheck(const CodeLines& before, const CodeLines& after, const EditRules& rules,
                     const CodeNames& names)
    : before_(before),
      after_(after),
      rules_(rules),
      numbering_(after, rules.numbers),
      code_(rules.customCode.in ? rules.customCode.code : rules.handlers.code, names) {}

std::optional<BodyFault> BodyCheck::Check(const ProcedureLines& before, const ProcedureLines& after) {
    const Part b{before.body, before.closing};
    const Part a{after.body, after.closing};
    if (before_.piece(b.begin, b.end) == after_.piece(a.begin, a.end)) {
        return std::nullopt;
    }
    procedure_ = &before;
    numbering_.Forget();
    if (rules_.customCode.in) {
        return CheckCustomInsertion(b, a);
    }
    if (rules_.customCode.out) {
        return CheckCustomRemoval(b, a);
    }
    return rules_.numbers.in ? CheckNumbered(b, a) : CheckHandlers(b, a, rules_.numbers.out);
}

std::optional<BodyFault> BodyCheck::CheckNumbered(Part b, Part a) {
    const NumberingReader::Reading reading = numbering_.Read(a.begin, a.end);
    std::optional<BodyFault> fault;
    if (reading.breach) {
        const std::size_t last = b.end > b.begin ? b.end - 1 : b.begin;
        fault = BodyFault{std::min(b.begin + (*reading.breach - a.begin), last), OtherNumbers};
    } else if (reading.any) {
        fault = CheckHandlers(b, a, rules_.numbers.out);
    }
    if (reading.any && !fault) {
        return std::nullopt;
    }
    // Numbers that it had may have been left as they were, and no other ones inserted.
    numbering_.Forget();
    auto unnumbered = CheckHandlers(b, a, false);
    if (unnumbered && rules_.numbers.out && numbering_.GivesNone(a.begin, a.end)) {
        unnumbered = CheckHandlers(b, a, true);
    }
    return unnumbered && reading.any ? fault : unnumbered;
}

std::optional<BodyFault> BodyCheck::CheckHandlers(Part b, Part a, bool numbersMayGo) {
    if (!rules_.handlers.in && !rules_.handlers.out) {
        return CheckUnhandled(b, a, b.end, numbersMayGo);
    }
    const std::size_t handlerBefore = FindHandler(before_, b);
    const std::size_t handlerAfter = FindHandler(after_, a);
    return rules_.handlers.in ? CheckInsertion(b, a, handlerBefore, handlerAfter, numbersMayGo)
                              : CheckRemoval(b, a, handlerBefore, handlerAfter, numbersMayGo);
}

std::optional<BodyFault> BodyCheck::CheckInsertion(Part b, Part a, std::size_t handlerBefore,
                                                   std::size_t handlerAfter, bool numbersMayGo) {
    const bool hadHandler = handlerBefore < b.end;
    if (hadHandler || handlerAfter == a.end) {
        // A handler that was to be replaced and stayed may have been written again as it was.
        auto fault = CheckUnhandled(b, a, rules_.handlers.out ? handlerBefore : b.end, numbersMayGo);
        if (!fault || !rules_.handlers.out || handlerAfter == a.end) {
            return fault;
        }
    }
    Redirection redirection{.from = {Text(constants::NoErrorHandler)}, .to = rules_.handlers.label};
    if (hadHandler) {
        std::ranges::move(LabelsOfHandlers(b, handlerBefore), std::back_inserter(redirection.from));
    }
    return CheckNewHandler({b.begin, handlerBefore}, a, handlerAfter, redirection, numbersMayGo);
}

std::optional<BodyFault> BodyCheck::CheckNewHandler(Part kept, Part a, std::size_t handlerAfter,
                                                    const Redirection& redirection, bool numbersMayGo) {
    const Part above{a.begin, handlerAfter};
    const std::size_t last = kept.end > kept.begin ? kept.end - 1 : kept.begin;
    if (above.size() != kept.size() && above.size() != kept.size() + 1) {
        return BodyFault{last, NotGivenBack};
    }
    const std::size_t added = above.size() - kept.size();
    if (auto fault = CheckLead(kept, above, added)) {
        return fault;
    }
    if (auto fault = CompareLines(kept, above, added, kept.end, redirection, numbersMayGo)) {
        return fault;
    }
    const Text ahead[] = {Text(constants::ErrorHandlerBegin), u"Exit " + Text(WordOf(procedure_->word)),
                          rules_.handlers.label + u":"};
    if (!AreWritten({handlerAfter, a.end}, ahead, {})) {
        return BodyFault{last, OtherCode};
    }
    return std::nullopt;
}

// The first line leads to the handler when one was added, and else some other one does.
std::optional<BodyFault> BodyCheck::CheckLead(Part kept, Part above, std::size_t added) {
    const Text lead = Text(constants::CommittedOnErrorGoTo).append(rules_.handlers.label);
    if (added == 1) {
        if (!IsWritten(above.begin + HiddenAtBegin(before_, kept), u"    " + lead)) {
            return BodyFault{kept.begin,
                             "another statement than the one that leads to the handler would stand "
                             "in front of it"};
        }
        return std::nullopt;
    }
    for (std::size_t i = above.begin; i < above.end; ++i) {
        after_.Read(i, text_);
        if (workspace::FindWithoutCase(text_, lead) != TextView::npos) {
            return std::nullopt;
        }
    }
    return BodyFault{kept.begin, "no statement of it would lead to its handler"};
}

std::optional<BodyFault> BodyCheck::CheckRemoval(Part b, Part a, std::size_t handlerBefore,
                                                 std::size_t handlerAfter, bool numbersMayGo) {
    const bool isGone = handlerBefore < b.end && handlerAfter == a.end;
    if (!isGone) {
        return CheckUnhandled(b, a, b.end, numbersMayGo);
    }
    const Part kept{b.begin, handlerBefore};
    if (kept.size() != a.size()) {
        return BodyFault{handlerBefore, kept.size() > a.size() ? MoreThanMeant : "a part of it would stay"};
    }
    return CompareLines(kept, a, 0, kept.end,
                        {.from = {rules_.handlers.label}, .to = Text(constants::NoErrorHandler)},
                        numbersMayGo);
}

// The lines as they are, but for numbers.
std::optional<BodyFault> BodyCheck::CheckUnhandled(Part b, Part a, std::size_t rewritten, bool numbersMayGo) {
    if (b.size() != a.size()) {
        return BodyFault{b.begin, b.size() > a.size()
                                      ? "lines of the procedure would go"
                                      : "the procedure would get lines that nobody asked for"};
    }
    return CompareLines(b, a, 0, rewritten, {}, numbersMayGo);
}

std::optional<BodyFault> BodyCheck::CompareLines(Part b, Part a, std::size_t added, std::size_t rewritten,
                                                 const Redirection& redirection, bool numbersMayGo) {
    LineComparison change(before_, after_, numbersMayGo);
    const std::size_t first = added == 0 ? b.begin : b.begin + HiddenAtBegin(before_, b);
    const char* const message = rules_.numbers.out || rules_.handlers.out ? MoreThanMeant : NotGivenBack;
    for (std::size_t i = b.begin; i < b.end; ++i) {
        const std::size_t j = a.begin + (i - b.begin) + (i < first ? 0 : added);
        const std::size_t width = numbering_.WidthAt(j);
        const bool same = i < rewritten ? change.IsSame(i, j, width, redirection)
                                        : change.IsSameText(i, j, width, redirection);
        if (!same) {
            return BodyFault{i, message};
        }
    }
    return CheckNumbersGone(b, change.numbers());
}

std::optional<BodyFault> BodyCheck::CheckNumbersGone(Part b, const NumbersGone& numbers) const {
    if (numbers.gone > 0 && numbers.stayed > 0) {
        return BodyFault{b.begin, "only some of its numbers would go"};
    }
    if (numbers.shifted == 0 || numbers.gone > 0) {
        return std::nullopt;
    }
    // All its numbers may have stood in a handler that went, too.
    Text line;
    for (std::size_t i = procedure_->body; i < procedure_->closing; ++i) {
        before_.Read(i, line);
        if (IsNumberColumn(TextView(line))) {
            return std::nullopt;
        }
    }
    return BodyFault{b.begin, "its lines would be moved, though it has no numbers"};
}

std::optional<BodyFault> BodyCheck::CheckCustomInsertion(Part b, Part a) {
    const CustomCodeRules& rules = rules_.customCode;
    if (a.size() <= b.size()) {
        return BodyFault{b.begin, NotGivenBack};
    }
    const std::size_t count = a.size() - b.size();
    std::size_t at = b.end;
    if (rules.place != CodePlace::BeforeLastLine) {
        std::int32_t shown = rules.place == CodePlace::AfterFirstLine ? 1 : rules.line;
        for (at = b.begin; at < b.end; ++at) {
            if (!before_.IsHidden(at) && --shown == 0) {
                break;
            }
        }
    }
    const std::size_t first = a.begin + (at - b.begin);
    if (auto fault = CompareAround(b, a, {at, 0}, {first, count})) {
        return fault;
    }
    const auto marker = [&](TextView text) { return Text(text).append(u" ").append(rules.number); };
    std::vector<Text> ahead;
    std::vector<Text> behind;
    if (rules.markers) {
        ahead.push_back(marker(constants::CustomCodeBegin));
        behind.push_back(marker(constants::CustomCodeEnd));
    }
    if (!AreWritten({first, first + count}, ahead, behind)) {
        return BodyFault{std::min(at, b.end - 1), OtherCode};
    }
    return std::nullopt;
}

std::optional<BodyFault> BodyCheck::CheckCustomRemoval(Part b, Part a) const {
    const std::size_t at = FindCustomMarker(b, constants::CustomCodeBegin);
    const std::size_t end = FindCustomMarker(b, constants::CustomCodeEnd) + 1;
    if (end > b.end || end <= at || b.size() - a.size() != end - at) {
        return BodyFault{std::min(at, b.end - 1), MoreThanMeant};
    }
    return CompareAround(b, a, {at, end - at}, {});
}

std::optional<BodyFault> BodyCheck::CompareAround(Part b, Part a, Added gone, Added came) const {
    LineComparison change(before_, after_, false);
    std::size_t j = a.begin;
    for (std::size_t i = b.begin; i < b.end; ++i) {
        if (i == gone.at) {
            i += gone.count;
        }
        if (j == came.at) {
            j += came.count;
        }
        if (i < b.end && !change.IsSame(i, j++, 0, {})) {
            return BodyFault{i, rules_.customCode.in ? NotGivenBack : MoreThanMeant};
        }
    }
    return std::nullopt;
}

std::size_t BodyCheck::FindCustomMarker(Part part, TextView marker) const {
    std::size_t at = part.begin;
    while (at < part.end && !IsCustomMarker(before_, at, marker)) {
        ++at;
    }
    return at;
}

// A number and a label may stand in front.
bool BodyCheck::IsCustomMarker(const CodeLines& lines, std::size_t index, TextView marker) const {
    if (lines.hasByteUnits() && !MayHoldMarker(lines.line(index))) {
        return false;
    }
    Text line;
    lines.Read(index, line);
    const Text sought = Text(marker).append(u" ").append(rules_.customCode.number);
    const TextView text = TextView(line).substr(workspace::SkipLineNumberAndLabel(line));
    return StartsWithAnyCase(text, sought) && workspace::SkipBlanks(text, sought.size()) == text.size();
}

bool BodyCheck::AreWritten(Part a, std::span<const Text> ahead, std::span<const Text> behind) {
    const Text name = before_.NameOf(*procedure_);
    const auto areWritten = [&](TextView member) {
        return AreWritten(a, ahead, member, true, behind) ||
               (code_.asksForControl() && AreWritten(a, ahead, member, false, behind));
    };
    if (areWritten(name)) {
        return true;
    }
    // The procedures of a property are called as the first of them is.
    const Text first = FirstNameLike(name);
    return first != name && areWritten(first);
}

bool BodyCheck::AreWritten(Part a, std::span<const Text> ahead, TextView member, bool isControl,
                           std::span<const Text> behind) {
    const std::span<const TextView> code = code_.LinesFor(member, procedure_->word, isControl);
    if (a.size() != ahead.size() + code.size() + behind.size()) {
        return false;
    }
    std::size_t line = a.begin;
    const auto isNext = [&](TextView expected) { return IsWritten(line++, expected); };
    return std::ranges::all_of(ahead, isNext) && std::ranges::all_of(code, isNext) &&
           std::ranges::all_of(behind, isNext);
}

bool BodyCheck::IsWritten(std::size_t line, TextView expected) {
    after_.Read(line, text_);
    const TextView written = TextView(text_).substr(numbering_.WidthAt(line));
    // A number that the template brought goes like any other when code is numbered anew.
    const bool isRenumbered = rules_.numbers.in && rules_.numbers.out && IsNumberColumn(expected);
    return IsAsExpected(written, expected) ||
           (isRenumbered && IsAsExpected(written, expected.substr(numberWidth)));
}

Text BodyCheck::FirstNameLike(TextView name) {
    if (firstNames_.empty()) {
        for (const ProcedureLines& procedure : before_.procedures()) {
            Text each = before_.NameOf(procedure);
            Text folded = workspace::FoldCase(each);
            firstNames_.try_emplace(std::move(folded), std::move(each));
        }
    }
    return firstNames_[workspace::FoldCase(name)];
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
std::vector<Text> BodyCheck::LabelsOfHandlers(Part b, std::size_t handler) {
    if (handler + LabelLine < b.end) {
        if (Text label = LabelAt(handler + LabelLine); !label.empty()) {
            return {std::move(label)};
        }
    }
    if (allLabels_.empty()) {
        allLabels_ = {rules_.handlers.label};
        for (const ProcedureLines& procedure : before_.procedures()) {
            const std::size_t found = FindHandler(before_, {procedure.body, procedure.closing});
            if (found + LabelLine < procedure.closing) {
                allLabels_.push_back(LabelAt(found + LabelLine));
            }
        }
    }
    return allLabels_;
}

// The label that the line begins with; "" without one.
Text BodyCheck::LabelAt(std::size_t lineOfBefore) const {
    Text text;
    before_.Read(lineOfBefore, text);
    const TextView line = BareText(text);
    const std::size_t end = workspace::SkipWord(line, 0);
    return Text(end < line.size() && line[end] == u':' ? line.substr(0, end) : TextView());
}

}  // namespace lintara::cli

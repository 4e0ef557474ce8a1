#include "cli/invariants/exact_check.h"

#include "base/constants.h"
#include "cli/invariants/expected_code.h"
#include "cli/invariants/line_comparison.h"
#include "cli/invariants/numbering_reader.h"
#include "cli/invariants/replace_check.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

bool IsDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

// Whether the text is numbers with ": " and blanks, any number of them: what numbering writes, again and
// again, in front of lines that two procedures seem to have.
bool IsNumbering(TextView text) {
    while (!text.empty()) {
        std::size_t at = text.front() == u'-' ? 1 : 0;
        while (at < text.size() && IsDigit(text[at])) {
            ++at;
        }
        if (at > 0 && text.substr(at).starts_with(u": ")) {
            text.remove_prefix(at + 2);
        } else if (text.front() == u' ') {
            text.remove_prefix(1);
        } else {
            return false;
        }
    }
    return true;
}

// The line with the target of each "On Error GoTo" left out, in one letter case.
Text WithoutTargets(TextView line) {
    constexpr TextView statement = constants::CommittedOnErrorGoTo;
    Text result;
    std::size_t copied = 0;
    for (std::size_t at = workspace::FindWithoutCase(line, statement); at != TextView::npos;
         at = workspace::FindWithoutCase(line, statement, copied)) {
        result.append(line.substr(copied, at - copied)).append(statement);
        copied = workspace::SkipWord(line, at + statement.size());
    }
    return workspace::FoldCase(result.append(line.substr(copied)));
}

// What insertion may write, in one letter case and without targets.
std::vector<Text> LinesThatMayCome(const EditRules& rules) {
    std::vector<Text> lines;
    const auto add = [&](TextView code) {
        std::ranges::transform(OpenLinesOf(code), std::back_inserter(lines), WithoutTargets);
    };
    if (rules.handlers.in) {
        add(constants::ErrorHandlerBegin);
        add(Text(u"Exit ").append(constants::MemberTypePlaceholder));
        add(rules.handlers.label + u":");
        add(rules.handlers.code);
        add(Text(u"    ").append(constants::OnErrorGoto).append(rules.handlers.label));
    }
    if (rules.customCode.in) {
        for (const TextView marker : {constants::CustomCodeBegin, constants::CustomCodeEnd}) {
            add(Text(marker).append(u" ").append(rules.customCode.number));
        }
        add(rules.customCode.code);
    }
    return lines;
}

class ExactEdit {
  public:
    ExactEdit(const CodeLines& before, const CodeLines& after, const EditRules& rules)
        : before_(before), after_(after), rules_(rules), mayCome_(LinesThatMayCome(rules)) {}

    // Line by line.
    [[nodiscard]] std::optional<BodyFault> CheckNumbered() {
        if (before_.count() != after_.count()) {
            return BodyFault{0, "lines would be added or go, though only numbers were to change"};
        }
        for (std::size_t i = 0; i < before_.count(); ++i) {
            if (!IsSame(i, i)) {
                return BodyFault{i, "more than its beginning would change"};
            }
        }
        return std::nullopt;
    }

    // Each line of before stands in after, in the same order.
    [[nodiscard]] std::optional<BodyFault> CheckNothingLost() {
        std::size_t a = 0;
        for (std::size_t b = 0; b < before_.count(); ++b, ++a) {
            while (a < after_.count() && !IsSame(b, a)) {
                ++a;
            }
            if (a == after_.count()) {
                return BodyFault{b, "it would be lost"};
            }
        }
        return std::nullopt;
    }

    // Each line of after stood in before, in the same order, or may have come.
    [[nodiscard]] std::optional<BodyFault> CheckNothingNew() {
        std::size_t b = 0;
        for (std::size_t a = 0; a < after_.count(); ++a) {
            if (MayHaveCome(a)) {
                continue;
            }
            const std::size_t first = b;
            while (b < before_.count() && !IsSame(b, a)) {
                ++b;
            }
            if (b == before_.count()) {
                const std::size_t last = before_.count() == 0 ? 0 : before_.count() - 1;
                return BodyFault{std::min(first, last), "a new line would stand in its place"};
            }
            ++b;
        }
        return std::nullopt;
    }

    // The library edits from behind a header on, which it finds by the name: the lines of before above the
    // first that holds one of the names stay.
    [[nodiscard]] std::optional<BodyFault> CheckAbove(const EditableProcedures& editable) {
        const std::size_t end = FirstLineWithName(editable);
        std::size_t a = 0;
        for (std::size_t b = 0; b < end; ++b, ++a) {
            while (a < after_.count() && !IsUntouched(before_, b, after_, a) && MayHaveCome(a)) {
                ++a;
            }
            if (a == after_.count() || !IsUntouched(before_, b, after_, a)) {
                return BodyFault{b, "it would change, though it stands above what was to be edited"};
            }
        }
        return std::nullopt;
    }

  private:
    [[nodiscard]] std::size_t FirstLineWithName(const EditableProcedures& editable) {
        std::vector<Text> names;
        for (const std::size_t number : editable) {
            names.push_back(before_.NameOf(before_.procedures()[number]));
        }
        std::size_t line = 0;
        for (; line < before_.count(); ++line) {
            before_.Read(line, textBefore_);
            if (std::ranges::any_of(names, [&](const Text& name) {
                    return workspace::FindWithoutCase(textBefore_, name) != TextView::npos;
                })) {
                break;
            }
        }
        return line;
    }

    // Whether insertion may have written the line, and numbering gone over it.
    [[nodiscard]] bool MayHaveCome(std::size_t a) {
        if (mayCome_.empty()) {
            return false;
        }
        after_.Read(a, textAfter_);
        const Text line = WithoutTargets(textAfter_);
        return std::ranges::any_of(mayCome_, [&](const Text& expected) {
            if (expected.contains(u'\uFFFF')) {
                return rules_.numbers.in || rules_.numbers.out || IsAsExpected(line, expected);
            }
            return IsRenumbered(expected, line);
        });
    }

    [[nodiscard]] bool IsSame(std::size_t b, std::size_t a) {
        if (before_.textBytes(b) == after_.textBytes(a)) {
            return true;
        }
        before_.Read(b, textBefore_);
        after_.Read(a, textAfter_);
        if (IsRenumbered(textBefore_, textAfter_)) {
            return true;
        }
        const bool handlers = rules_.handlers.in || rules_.handlers.out;
        return handlers && IsRenumbered(WithoutTargets(textBefore_), WithoutTargets(textAfter_));
    }

    // Numbering writes in front; removal takes the width of a number off, once for each time that it meets
    // the line, and from behind a label, too.
    [[nodiscard]] bool IsRenumbered(TextView before, TextView after) const {
        for (std::size_t gone = 0; gone <= before.size(); gone += numberWidth) {
            const TextView rest = before.substr(gone);
            if (after.ends_with(rest) && IsAllowedNumbering(after.substr(0, after.size() - rest.size()))) {
                return true;
            }
            if (!rules_.numbers.out) {
                return false;
            }
        }
        const std::size_t colon = before.find(u':');
        if (colon == TextView::npos || before.size() < colon + 1 + numberWidth) {
            return false;
        }
        const Text unshifted =
            Text(before.substr(0, colon + 1)).append(before.substr(colon + 1 + numberWidth));
        return after.ends_with(unshifted) &&
               IsAllowedNumbering(after.substr(0, after.size() - unshifted.size()));
    }

    [[nodiscard]] bool IsAllowedNumbering(TextView text) const {
        return text.empty() || (rules_.numbers.in && IsNumbering(text));
    }

    const CodeLines& before_;
    const CodeLines& after_;
    const EditRules& rules_;
    std::vector<Text> mayCome_;
    Text textBefore_;
    Text textAfter_;
};

}  // namespace

std::optional<BodyFault> CheckExactEdit(const CodeLines& before, const CodeLines& after,
                                        const EditRules& rules, const EditableProcedures& editable) {
    if (rules.replace) {
        return CheckExactReplacement(before, after, *rules.replace);
    }
    ExactEdit edit(before, after, rules);
    if (auto fault = edit.CheckAbove(editable)) {
        return fault;
    }
    const bool addsLines = rules.handlers.in || rules.customCode.in;
    const bool takesLines = rules.handlers.out || rules.customCode.out;
    if (!addsLines && !takesLines) {
        return edit.CheckNumbered();
    }
    if (auto fault = takesLines ? std::nullopt : edit.CheckNothingLost()) {
        return fault;
    }
    return edit.CheckNothingNew();
}

}  // namespace lintara::cli

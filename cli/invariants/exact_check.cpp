#include "cli/invariants/exact_check.h"

#include "base/constants.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr std::size_t ColumnWidth = 7;

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

class ExactEdit {
  public:
    ExactEdit(const CodeLines& before, const CodeLines& after, const EditRules& rules)
        : before_(before), after_(after), rules_(rules) {}

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

    // Each line of after stood in before, in the same order.
    [[nodiscard]] std::optional<BodyFault> CheckNothingNew() {
        std::size_t b = 0;
        for (std::size_t a = 0; a < after_.count(); ++a, ++b) {
            const std::size_t first = b;
            while (b < before_.count() && !IsSame(b, a)) {
                ++b;
            }
            if (b == before_.count()) {
                return BodyFault{std::min(first, before_.count() - 1), "a new line would stand in its place"};
            }
        }
        return std::nullopt;
    }

  private:
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
        for (std::size_t gone = 0; gone <= before.size(); gone += ColumnWidth) {
            const TextView rest = before.substr(gone);
            if (after.ends_with(rest) && IsAllowedNumbering(after.substr(0, after.size() - rest.size()))) {
                return true;
            }
            if (!rules_.numbers.out) {
                return false;
            }
        }
        const std::size_t colon = before.find(u':');
        if (colon == TextView::npos || before.size() < colon + 1 + ColumnWidth) {
            return false;
        }
        const Text unshifted =
            Text(before.substr(0, colon + 1)).append(before.substr(colon + 1 + ColumnWidth));
        return after.ends_with(unshifted) &&
               IsAllowedNumbering(after.substr(0, after.size() - unshifted.size()));
    }

    [[nodiscard]] bool IsAllowedNumbering(TextView text) const {
        return text.empty() || (rules_.numbers.in && IsNumbering(text));
    }

    const CodeLines& before_;
    const CodeLines& after_;
    const EditRules& rules_;
    Text textBefore_;
    Text textAfter_;
};

// A replacement by itself may meet its own output, and change a line any number of times.
std::optional<BodyFault> CheckAbove(const CodeLines& before, const CodeLines& after, std::int32_t from) {
    std::int32_t shown = 0;
    for (std::size_t i = 0; i < before.count(); ++i) {
        if (!before.IsHidden(i) && ++shown >= from) {
            break;
        }
        if (i >= after.count() || before.line(i) != after.line(i)) {
            return BodyFault{i, "it would change, though it stands above the lines to be changed"};
        }
    }
    return std::nullopt;
}

}  // namespace

std::optional<BodyFault> CheckExactEdit(const CodeLines& before, const CodeLines& after,
                                        const EditRules& rules) {
    if (rules.replace) {
        return CheckAbove(before, after, rules.replace->from);
    }
    ExactEdit edit(before, after, rules);
    const bool addsLines = rules.handlers.in || rules.customCode.in;
    const bool takesLines = rules.handlers.out || rules.customCode.out;
    if (!addsLines && !takesLines) {
        return edit.CheckNumbered();
    }
    if (!takesLines) {
        return edit.CheckNothingLost();
    }
    return addsLines ? std::nullopt : edit.CheckNothingNew();
}

}  // namespace lintara::cli

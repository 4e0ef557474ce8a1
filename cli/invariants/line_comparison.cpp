#include "cli/invariants/line_comparison.h"

#include "base/constants.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <string_view>

namespace lintara::cli {
namespace {

using workspace::SameName;

constexpr std::size_t ColumnWidth = 7;
constexpr std::size_t Digits = 5;

template <class View>
bool IsNumberColumn(View text) {
    return text.size() >= ColumnWidth && text[Digits] == ':' && text[Digits + 1] == ' ' &&
           std::ranges::all_of(text.substr(0, Digits), [](auto c) { return c >= '0' && c <= '9'; });
}

template <class View>
bool IsBlankColumn(View text) {
    return text.size() >= ColumnWidth &&
           std::ranges::all_of(text.substr(0, ColumnWidth), [](auto c) { return c == ' '; });
}

bool StartsWithAnyCase(TextView text, TextView beginning) {
    return text.size() >= beginning.size() && SameName(text.substr(0, beginning.size()), beginning);
}

TextView WordAt(TextView text, std::size_t at) {
    return text.substr(at, workspace::SkipWord(text, at) - at);
}

}  // namespace

UnnumberedForms::UnnumberedForms(TextView line) : forms{line, line}, isNumber(IsNumberColumn(line)) {
    if (isNumber || IsBlankColumn(line)) {
        forms[1] = line.substr(ColumnWidth);
        count = 2;
    }
}

TextView BareText(TextView line) {
    const UnnumberedForms forms(line);
    const TextView text = forms.forms[forms.count - 1];
    return text.substr(std::min(text.find_first_not_of(u' '), text.size()));
}

bool IsRedirected(TextView before, TextView after, const Redirection& redirection) {
    constexpr TextView statement = constants::CommittedOnErrorGoTo;
    std::size_t b = 0;
    std::size_t a = 0;
    while (b < before.size() && a < after.size()) {
        if (StartsWithAnyCase(before.substr(b), statement) && StartsWithAnyCase(after.substr(a), statement)) {
            const TextView was = WordAt(before, b + statement.size());
            const TextView is = WordAt(after, a + statement.size());
            const bool mayHaveBecome =
                std::ranges::any_of(redirection.from, [&](const Text& from) { return SameName(was, from); });
            if (mayHaveBecome && SameName(is, redirection.to)) {
                b += statement.size() + was.size();
                a += statement.size() + is.size();
                continue;
            }
        }
        if (before[b] != after[a]) {
            return false;
        }
        ++b;
        ++a;
    }
    return b == before.size() && a == after.size();
}

bool LineComparison::IsSame(std::size_t b, std::size_t a, const Redirection& redirection) {
    const std::string_view was = before_.line(b);
    const std::string_view is = after_.line(a);
    // Nearly all lines are the same or were numbered; endings and all.
    if (was == is || (before_.hasByteUnits() && !was.starts_with('A') && IsNumberedBytes(was, is))) {
        return true;
    }
    return HasSameEnding(b, a) && IsSameText(b, a, redirection);
}

bool LineComparison::IsSameText(std::size_t b, std::size_t a, const Redirection& redirection) {
    const std::string_view bytesBefore = before_.textBytes(b);
    const std::string_view bytesAfter = after_.textBytes(a);
    if (bytesBefore == bytesAfter) {
        return true;
    }
    if (before_.IsHidden(b)) {
        return false;
    }
    before_.Read(b, textBefore_);
    after_.Read(a, textAfter_);
    const UnnumberedForms formsBefore(textBefore_);
    const UnnumberedForms formsAfter(textAfter_);
    for (std::size_t i = 0; i < (numbers_.out ? formsBefore.count : 1); ++i) {
        for (std::size_t j = 0; j < (numbers_.in ? formsAfter.count : 1); ++j) {
            if (formsBefore.forms[i] == formsAfter.forms[j] ||
                (!redirection.empty() &&
                 IsRedirected(formsBefore.forms[i], formsAfter.forms[j], redirection))) {
                count_.numbered += (i > 0 && formsBefore.isNumber) || (j > 0 && formsAfter.isNumber) ? 1 : 0;
                count_.shifted += (i > 0 && !formsBefore.isNumber) || (j > 0 && !formsAfter.isNumber) ? 1 : 0;
                return true;
            }
        }
    }
    return false;
}

// Whether a number or the blanks of its width came in front of the line, or went, as the rules allow.
bool LineComparison::IsNumberedBytes(std::string_view was, std::string_view is) {
    const bool hasGrown = is.size() > was.size();
    const std::string_view longer = hasGrown ? is : was;
    const std::string_view shorter = hasGrown ? was : is;
    const bool isAllowed = hasGrown ? numbers_.in : numbers_.out;
    if (!isAllowed || longer.size() != shorter.size() + ColumnWidth) {
        return false;
    }
    const bool isNumber = IsNumberColumn(longer);
    if ((!isNumber && !IsBlankColumn(longer)) || !longer.ends_with(shorter)) {
        return false;
    }
    ++(isNumber ? count_.numbered : count_.shifted);
    return true;
}

// A line feed below a carriage return would be read as its second half, so one of the two gets both; and
// something may stand behind a last line now that had no ending.
bool LineComparison::HasSameEnding(std::size_t b, std::size_t a) const {
    const std::string_view was = before_.ending(b);
    const std::string_view is = after_.ending(a);
    if (was == is || (was.empty() && b + 1 == before_.count())) {
        return true;
    }
    if (is.size() != 2 * before_.encoding().unitSize()) {
        return false;
    }
    const auto isLineFeedAlone = [&](const CodeLines& lines, std::size_t index) {
        return lines.textBytes(index).empty() && lines.line(index).contains('\n') &&
               !lines.line(index).contains('\r');
    };
    const auto isReturn = [](std::string_view ending) {
        return ending.contains('\r') && !ending.contains('\n');
    };
    // The line may have become empty: a number was all that it held.
    const bool becameLineFeed = was.contains('\n') && !was.contains('\r') && after_.textBytes(a).empty();
    return (isReturn(was) && a + 1 < after_.count() && isLineFeedAlone(after_, a + 1)) ||
           (becameLineFeed && a > 0 && isReturn(after_.ending(a - 1)));
}

}  // namespace lintara::cli

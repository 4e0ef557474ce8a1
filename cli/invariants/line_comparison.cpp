#include "cli/invariants/line_comparison.h"

#include "base/constants.h"
#include "cli/invariants/numbering_reader.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <string_view>

namespace lintara::cli {
namespace {

using workspace::SameName;

bool StartsWithAnyCase(TextView text, TextView beginning) {
    return text.size() >= beginning.size() && SameName(text.substr(0, beginning.size()), beginning);
}

TextView WordAt(TextView text, std::size_t at) {
    return text.substr(at, workspace::SkipWord(text, at) - at);
}

}  // namespace

TextView BareText(TextView line) {
    if (IsNumberColumn(line) || IsBlankColumn(line)) {
        line.remove_prefix(numberWidth);
    }
    return line.substr(std::min(line.find_first_not_of(u' '), line.size()));
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

bool LineComparison::IsSame(std::size_t b, std::size_t a, std::size_t width, const Redirection& redirection) {
    const std::string_view was = before_.line(b);
    const std::string_view is = after_.line(a).substr(width * after_.encoding().unitSize());
    // Nearly all lines are the same or were numbered; endings and all.
    if (was == is && !numbersMayGo_) {
        return true;
    }
    if (before_.hasByteUnits() && !was.starts_with('A') && (was == is || LostItsNumber(b, was, is))) {
        numbers_.stayed += was == is && IsNumberColumn(was) && !IsContinuation(b) ? 1 : 0;
        return true;
    }
    return HasSameEnding(before_, b, after_, a) && IsSameText(b, a, width, redirection);
}

bool LineComparison::IsSameText(std::size_t b, std::size_t a, std::size_t width,
                                const Redirection& redirection) {
    before_.Read(b, textBefore_);
    after_.Read(a, textAfter_);
    const TextView is = TextView(textAfter_).substr(width);
    const auto isSame = [&](TextView was) {
        return was == is || (!redirection.empty() && IsRedirected(was, is, redirection));
    };
    if (isSame(textBefore_)) {
        numbers_.stayed += IsNumberColumn(TextView(textBefore_)) && !IsContinuation(b) ? 1 : 0;
        return true;
    }
    if (textBefore_.size() < numberWidth || before_.IsHidden(b) ||
        !isSame(TextView(textBefore_).substr(numberWidth))) {
        return false;
    }
    return LostItsNumber(b, TextView(textBefore_), TextView(textBefore_).substr(numberWidth));
}

// Whether only a number went, or the blanks of its width.
template <class View>
bool LineComparison::LostItsNumber(std::size_t b, View was, View is) {
    if (!numbersMayGo_ || was.size() != is.size() + numberWidth || !was.ends_with(is)) {
        return false;
    }
    if (IsNumberColumn(was)) {
        ++numbers_.gone;
        return !IsContinuation(b);
    }
    // A line of blanks alone never had any in front.
    const bool isBlank = std::ranges::all_of(is, [](auto c) { return c == ' ' || c == '\r' || c == '\n'; });
    if (!IsBlankColumn(was) || isBlank) {
        return false;
    }
    ++numbers_.shifted;
    return true;
}

// Whether the line goes on with the statement above it: what looks like its number is none.
bool LineComparison::IsContinuation(std::size_t b) const {
    while (b > 0 && before_.IsHidden(b - 1)) {
        --b;
    }
    return b > 0 && before_.IsContinued(b - 1);
}

// A line feed below a carriage return would be read as its second half, so one of the two gets both; and
// something may stand behind a last line now that had no ending.
bool HasSameEnding(const CodeLines& before, std::size_t b, const CodeLines& after, std::size_t a) {
    const std::string_view was = before.ending(b);
    const std::string_view is = after.ending(a);
    if (was == is || (was.empty() && b + 1 == before.count())) {
        return true;
    }
    if (is.size() != 2 * before.encoding().unitSize()) {
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
    const bool becameLineFeed = was.contains('\n') && !was.contains('\r') && after.textBytes(a).empty();
    return (isReturn(was) && a + 1 < after.count() && isLineFeedAlone(after, a + 1)) ||
           (becameLineFeed && a > 0 && isReturn(after.ending(a - 1)));
}

bool IsUntouched(const CodeLines& before, std::size_t b, const CodeLines& after, std::size_t a) {
    return before.line(b) == after.line(a) ||
           (before.textBytes(b) == after.textBytes(a) && HasSameEnding(before, b, after, a));
}

}  // namespace lintara::cli

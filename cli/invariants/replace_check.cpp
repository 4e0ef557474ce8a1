#include "cli/invariants/replace_check.h"

#include "base/constants.h"
#include "cli/invariants/line_comparison.h"
#include "workspace/characters.h"
#include "workspace/keyword_case.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

namespace lintara::cli {
namespace {

using workspace::IsWordCharacter;

// Where the text next stands at or behind `from`; npos when it does not.
std::size_t FindNext(TextView line, const ReplaceRules& rules, std::size_t from) {
    while (true) {
        const std::size_t found = workspace::FindWithoutCase(line, rules.sought, from);
        if (found == TextView::npos || !rules.wholeWord) {
            return found;
        }
        const std::size_t end = found + rules.sought.size();
        if ((found == 0 || !IsWordCharacter(line[found - 1])) &&
            (end == line.size() || !IsWordCharacter(line[end]))) {
            return found;
        }
        from = found + 1;
    }
}

// A line with each occurrence replaced.
struct Replacement {
    Text text;
    std::vector<workspace::TextPart> parts = {};  // of the text: what came
};

// None when there is no occurrence.
std::optional<Replacement> Replaced(TextView line, const ReplaceRules& rules) {
    std::size_t found = rules.sought.empty() ? TextView::npos : FindNext(line, rules, 0);
    if (found == TextView::npos) {
        return std::nullopt;
    }
    Replacement result;
    std::size_t copied = 0;
    for (; found != TextView::npos; found = FindNext(line, rules, copied)) {
        result.text.append(line.substr(copied, found - copied));
        const std::size_t begin = result.text.size();
        result.text.append(rules.replacement);
        result.parts.push_back({begin, result.text.size()});
        copied = found + rules.sought.size();
    }
    result.text.append(line.substr(copied));
    return result;
}

// The words that what came is part of, or touches: one replacement after the other may have made keywords of
// them, which the IDE gives a letter case.
void MarkTouchedWords(const Replacement& replacement, std::vector<bool>& marked) {
    const TextView text = replacement.text;
    marked.assign(text.size(), false);
    for (const workspace::TextPart& part : replacement.parts) {
        std::size_t at = part.begin;
        while (at > 0 && IsWordCharacter(text[at - 1])) {
            marked[--at] = true;
        }
        for (at = part.begin; at < text.size() && (at < part.end || IsWordCharacter(text[at])); ++at) {
            marked[at] = true;
        }
    }
}

std::vector<workspace::TextPart> LinesIn(TextView text) {
    std::vector<workspace::TextPart> lines;
    for (std::size_t at = 0;;) {
        const std::size_t end = std::min(text.find(constants::LineBreak, at), text.size());
        lines.push_back({at, end});
        if (end == text.size()) {
            return lines;
        }
        at = end + constants::LineBreak.size();
    }
}

// Reads the lines of after from the top, one by one.
class Walk {
  public:
    Walk(const CodeLines& before, const CodeLines& after) : before_(before), after_(after) {}

    [[nodiscard]] bool isAtEnd() const { return at_ == after_.count(); }

    // Whether the next line is line `b` of before.
    [[nodiscard]] bool TakeSame(std::size_t b) {
        if (isAtEnd()) {
            return false;
        }
        const std::size_t a = at_++;
        // A last line without an ending may have lines behind it now.
        return after_.line(a) == before_.line(b) || (b + 1 == before_.count() && before_.ending(b).empty() &&
                                                     after_.textBytes(a) == before_.textBytes(b));
    }
    // Whether the next line is that part of the replacement's text, but for the letter case of keywords and
    // of what came. `b` is the line that was replaced, when the part is its beginning.
    [[nodiscard]] bool TakePart(const Replacement& replacement, workspace::TextPart part,
                                std::optional<std::size_t> b) {
        if (isAtEnd()) {
            return false;
        }
        const std::size_t a = at_++;
        after_.Read(a, line_);
        const TextView expected = TextView(replacement.text).substr(part.begin, part.end - part.begin);
        if (b && !HasSameEnding(before_, *b, after_, a)) {
            return false;
        }
        if (line_ == expected) {
            return true;
        }
        if (!workspace::SameName(line_, expected)) {
            return false;
        }
        Text recased(expected);
        workspace::SetKeywordCase(recased, {0, recased.size()});
        MarkTouchedWords(replacement, marked_);
        for (std::size_t i = 0; i < line_.size(); ++i) {
            if (line_[i] != expected[i] && line_[i] != recased[i] && !marked_[part.begin + i]) {
                return false;
            }
        }
        return true;
    }

  private:
    const CodeLines& before_;
    const CodeLines& after_;
    std::size_t at_ = 0;
    Text line_;
    std::vector<bool> marked_;
};

// Which lines of before are to be changed: [begin, end), hidden ones among them.
struct ChangedLines {
    std::size_t begin = 0;
    std::size_t end = 0;
};

ChangedLines LinesToChange(const CodeLines& before, const ReplaceRules& rules) {
    const std::int32_t last = rules.to.value_or(std::numeric_limits<std::int32_t>::max());
    ChangedLines lines{before.count(), before.count()};
    std::int32_t shown = 0;
    for (std::size_t i = 0; i < before.count(); ++i) {
        if (before.IsHidden(i)) {
            continue;
        }
        ++shown;
        if (shown == rules.from) {
            lines.begin = i;
        }
        if (shown > last) {
            lines.end = i;
            break;
        }
    }
    return lines;
}

}  // namespace

std::optional<BodyFault> CheckReplacement(const CodeLines& before, const CodeLines& after,
                                          const ReplaceRules& rules) {
    const ChangedLines toChange = LinesToChange(before, rules);
    Walk walk(before, after);
    Text line;
    for (std::size_t i = 0; i < before.count();) {
        // A line goes with the lines that the IDE hides behind it.
        const std::size_t first = i++;
        std::optional<Replacement> expected;
        if (first >= toChange.begin && first < toChange.end && !before.IsHidden(first)) {
            before.Read(first, line);
            expected = Replaced(line, rules);
        }
        const auto pieces = expected ? LinesIn(expected->text) : std::vector<workspace::TextPart>();
        bool same = expected ? walk.TakePart(*expected, pieces.front(), first) : walk.TakeSame(first);
        for (; i < before.count() && before.IsHidden(i); ++i) {
            same = walk.TakeSame(i) && same;
        }
        for (std::size_t piece = 1; piece < pieces.size(); ++piece) {
            same = walk.TakePart(*expected, pieces[piece], std::nullopt) && same;
        }
        if (!same) {
            return BodyFault{first, expected ? "it would not be the line with the text replaced"
                                             : "it would change, though it does not hold the text there"};
        }
    }
    if (!walk.isAtEnd()) {
        return BodyFault{before.count() == 0 ? 0 : before.count() - 1, "lines would be added behind it"};
    }
    return std::nullopt;
}

std::optional<BodyFault> CheckExactReplacement(const CodeLines& before, const CodeLines& after,
                                               const ReplaceRules& rules) {
    const ChangedLines toChange = LinesToChange(before, rules);
    const std::size_t below = before.count() - toChange.end;
    for (std::size_t i = 0; i < toChange.begin; ++i) {
        if (i >= after.count() || !IsUntouched(before, i, after, i)) {
            return BodyFault{i, "it would change, though it stands above the lines to be changed"};
        }
    }
    for (std::size_t i = 0; i < below; ++i) {
        const std::size_t b = before.count() - 1 - i;
        if (i >= after.count() || !IsUntouched(before, b, after, after.count() - 1 - i)) {
            return BodyFault{b, "it would change, though it stands below the lines to be changed"};
        }
    }
    // In between, what does not hold the text stays, in its order.
    std::size_t a = toChange.begin;
    const std::size_t end = after.count() - std::min(below, after.count());
    Text line;
    for (std::size_t b = toChange.begin; b < toChange.end; ++b) {
        before.Read(b, line);
        if (!before.IsHidden(b) && workspace::FindWithoutCase(line, rules.sought) != TextView::npos) {
            continue;
        }
        while (a < end && !IsUntouched(before, b, after, a)) {
            ++a;
        }
        if (a >= end) {
            return BodyFault{b, "it would change, though it does not hold the text"};
        }
        ++a;
    }
    if (!rules.replacement.contains(constants::LineBreak) && before.count() != after.count()) {
        return BodyFault{toChange.begin, "lines would be added or go, though none was to"};
    }
    return std::nullopt;
}

}  // namespace lintara::cli

#include "cli/invariants/replace_check.h"

#include "base/constants.h"
#include "workspace/characters.h"

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

// The line with each occurrence replaced; none when there is no occurrence.
std::optional<Text> Replaced(TextView line, const ReplaceRules& rules) {
    std::size_t found = rules.sought.empty() ? TextView::npos : FindNext(line, rules, 0);
    if (found == TextView::npos) {
        return std::nullopt;
    }
    Text result;
    std::size_t copied = 0;
    for (; found != TextView::npos; found = FindNext(line, rules, copied)) {
        result.append(line.substr(copied, found - copied)).append(rules.replacement);
        copied = found + rules.sought.size();
    }
    return result.append(line.substr(copied));
}

std::vector<TextView> LinesIn(TextView text) {
    std::vector<TextView> lines;
    for (std::size_t at = 0;;) {
        const std::size_t end = text.find(constants::LineBreak, at);
        lines.push_back(text.substr(at, end - at));
        if (end == TextView::npos) {
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
    // Whether the next line has that text; the IDE gives its keywords their letter case.
    [[nodiscard]] bool TakeText(TextView text) {
        if (isAtEnd()) {
            return false;
        }
        after_.Read(at_++, line_);
        return workspace::SameName(line_, text);
    }

  private:
    const CodeLines& before_;
    const CodeLines& after_;
    std::size_t at_ = 0;
    Text line_;
};

}  // namespace

std::optional<BodyFault> CheckReplacement(const CodeLines& before, const CodeLines& after,
                                          const ReplaceRules& rules) {
    const std::int32_t last = rules.to.value_or(std::numeric_limits<std::int32_t>::max());
    Walk walk(before, after);
    Text line;
    std::int32_t shown = 0;
    for (std::size_t i = 0; i < before.count();) {
        // A line goes with the lines that the IDE hides behind it.
        const std::size_t first = i++;
        std::optional<Text> expected;
        if (!before.IsHidden(first) && ++shown >= rules.from && shown <= last) {
            before.Read(first, line);
            expected = Replaced(line, rules);
        }
        const std::vector<TextView> pieces = expected ? LinesIn(*expected) : std::vector<TextView>();
        bool same = expected ? walk.TakeText(pieces.front()) : walk.TakeSame(first);
        for (; i < before.count() && before.IsHidden(i); ++i) {
            same = walk.TakeSame(i) && same;
        }
        for (std::size_t piece = 1; piece < pieces.size(); ++piece) {
            same = walk.TakeText(pieces[piece]) && same;
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

}  // namespace lintara::cli

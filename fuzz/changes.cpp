// Any two states of a file: what is told to have changed makes the one of the other, the diff that is piped
// can be applied, and the one that is shown has nothing that steers a terminal.
#include "cli/output/line_changes.h"
#include "cli/output/terminal_text.h"
#include "cli/output/unified_diff.h"
#include "fuzz/input.h"
#include "fuzz/require.h"
#include "tests/support/text_lines.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::fuzz {
namespace {

using support::LinesOf;

using cli::FileLines;

constexpr std::array codePages = {"1252", "932", "65001", "1200"};

std::string Joined(const FileLines& lines, std::size_t begin, std::size_t end) {
    std::string text;
    for (; begin < end; ++begin) {
        text += lines[begin];
    }
    return text;
}

void CheckChanges(const FileLines& before, const FileLines& after,
                  const std::vector<cli::LineChange>& changes) {
    std::size_t at = 0;
    std::size_t atAfter = 0;
    for (const cli::LineChange& change : changes) {
        Require(change.beforeBegin >= at && change.afterBegin >= atAfter, "changes stand in order");
        Require(&change == changes.data() || change.beforeBegin > at, "a line stayed between two changes");
        Require(Joined(before, at, change.beforeBegin) == Joined(after, atAfter, change.afterBegin),
                "what did not change is the same");
        Require(change.beforeEnd > change.beforeBegin || change.afterEnd > change.afterBegin,
                "a change changes something");
        at = change.beforeEnd;
        atAfter = change.afterEnd;
    }
    Require(at <= before.size() && atAfter <= after.size(), "changes lie in the file");
    Require(Joined(before, at, before.size()) == Joined(after, atAfter, after.size()),
            "what did not change is the same");
}

// The file as the diff makes it of `before`. What `patch` does, and nothing more.
std::string Applied(const std::vector<std::string>& diff, const std::vector<std::string>& before) {
    std::string made;
    std::size_t at = 0;
    for (std::size_t i = 2; i < diff.size(); ++i) {
        const std::string& line = diff[i];
        const bool bare = i + 1 < diff.size() && diff[i + 1].starts_with('\\');
        const std::string text = line.substr(1, line.size() - (bare ? 2 : 1));
        if (line.starts_with("@@ -")) {
            std::size_t begin = 0;
            const char* const end = line.data() + line.size();
            const char* const behind = std::from_chars(line.data() + 4, end, begin).ptr;
            begin -= std::string_view(behind, end).starts_with(",0 ") ? 0 : 1;
            for (; at < std::min(begin, before.size()); ++at) {
                made += before[at];
            }
        } else if (line.starts_with('+')) {
            made += text;
        } else if (!line.starts_with('\\')) {
            Require(at < before.size() && before[at] == text, "a diff shows the lines of the file", line);
            made += line.starts_with(' ') ? text : "";
            ++at;
        }
    }
    for (; at < before.size(); ++at) {
        made += before[at];
    }
    return made;
}

void CheckText(std::string_view shown) {
    std::string text;
    for (const std::string& line : LinesOf(shown)) {
        Require(line.ends_with('\n'), "a shown line ends in a line feed", line);
        const std::string content = line.substr(0, line.size() - 1);
        RequireSame(cli::Printable(content), content, "nothing that is shown steers a terminal");
    }
}

void Check(Input& input) {
    const auto codePage = input.Between<std::size_t>(0, codePages.size() - 1);
    const auto encoding = *workspace::FindEncoding(codePages[codePage]);
    const std::string before = input.Bytes(2000);
    const std::string after = input.Flag() ? input.Rest() : before + input.Rest();
    const FileLines old = cli::SplitFile(before, *encoding);
    const FileLines now = cli::SplitFile(after, *encoding);
    RequireSame(Joined(old, 0, old.size()), before, "all lines are all of the file");
    const auto changes = cli::CompareLines(old, now);
    CheckChanges(old, now, changes);
    Require(changes.empty() == (before == after), "files are the same, or something changed");
    Require(cli::CountChangedLines(changes) <= old.size() + now.size(), "no line changes twice");

    std::string piped;
    cli::AppendUnifiedDiff("M.bas", old, now, changes, *encoding, {}, piped);
    if (encoding->unitSize() == 1) {
        RequireSame(Applied(LinesOf(piped), LinesOf(before)), after, "a diff can be applied");
    }
    std::string shown;
    cli::AppendUnifiedDiff("M.bas", old, now, changes, *encoding, {.printable = true}, shown);
    CheckText(shown);
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::Check(input);
    return 0;
}

// What the diff of an edited module is worth: applied to the file as it was, it gives the file as it is, byte
// for byte.
#include "cli/output/unified_diff.h"
#include "tests/support/random.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/text_lines.h"
#include "workspace/module.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using support::LinesOf;

using support::Random;

std::string DiffOf(std::string_view before, std::string_view after) {
    const auto encoding = workspace::DefaultEncoding();
    const FileLines old = SplitFile(before, *encoding);
    const FileLines now = SplitFile(after, *encoding);
    std::string out;
    AppendUnifiedDiff("A.bas", old, now, CompareLines(old, now), *encoding, {}, out);
    return out;
}

struct HunkHead {
    std::size_t before = 0;
    std::size_t countBefore = 1;
    std::size_t after = 0;
    std::size_t countAfter = 1;
};

HunkHead ParseHead(const std::string& line) {
    HunkHead head;
    const char* at = line.data() + 4;
    const char* const end = line.data() + line.size();
    const auto read = [&](std::size_t& number) { at = std::from_chars(at, end, number).ptr; };
    read(head.before);
    if (*at == ',') {
        ++at;
        read(head.countBefore);
    }
    at += 2;
    read(head.after);
    if (*at == ',') {
        ++at;
        read(head.countAfter);
    }
    EXPECT_TRUE(line.starts_with("@@ -") && std::string_view(at, end) == " @@\n") << line;
    return head;
}

// Applies a diff and checks all that it says; none when something in it is wrong.
std::optional<std::string> Applied(const std::string& diff, std::string_view before) {
    const std::vector<std::string> old = LinesOf(before);
    const std::vector<std::string> lines = LinesOf(diff);
    std::vector<std::string> made;
    std::size_t at = 0;
    for (std::size_t i = 2; i < lines.size();) {
        const HunkHead head = ParseHead(lines[i++]);
        const std::size_t begin = head.countBefore == 0 ? head.before : head.before - 1;
        if (begin < at || begin > old.size()) {
            return std::nullopt;
        }
        made.insert(made.end(), old.begin() + static_cast<std::ptrdiff_t>(at),
                    old.begin() + static_cast<std::ptrdiff_t>(begin));
        if (made.size() != (head.countAfter == 0 ? head.after : head.after - 1)) {
            return std::nullopt;
        }
        at = begin;
        const std::size_t afterEnd = made.size() + head.countAfter;
        for (; i < lines.size() && !lines[i].starts_with('@'); ++i) {
            std::string text = lines[i].substr(1);
            if (i + 1 < lines.size() && lines[i + 1].starts_with('\\')) {
                text.pop_back();
            }
            const char mark = lines[i].front();
            if (mark == '\\') {
                continue;
            }
            if (mark != '+' && (at == old.size() || old[at++] != text)) {
                return std::nullopt;
            }
            if (mark != '-') {
                made.push_back(text);
            }
        }
        if (at != begin + head.countBefore || made.size() != afterEnd) {
            return std::nullopt;
        }
    }
    made.insert(made.end(), old.begin() + static_cast<std::ptrdiff_t>(at), old.end());
    std::string result;
    for (const std::string& line : made) {
        result += line;
    }
    return result;
}

constexpr std::array<std::string_view, 14> lines{"Public Sub A()",
                                                 "End Sub",
                                                 "    x = 1",
                                                 "    x = 0",
                                                 "",
                                                 "Attribute A.VB_Description = \"a\"",
                                                 "    On Error GoTo hErr",
                                                 "    Beep",
                                                 "' remark",
                                                 "\xe4",
                                                 "Sub B()",
                                                 "Attribute B.VB_UserMemId = 0",
                                                 "    y = x",
                                                 "@@ -1 +1 @@"};

std::string RandomFile(Random& random, bool withLoneCr) {
    constexpr std::array<std::string_view, 3> endings{"\r\n", "\n", "\r"};
    std::string file;
    for (std::size_t count = random.Below(60); count > 0; --count) {
        file += random.Pick(lines);
        const std::size_t ending = random.Chance(80) ? 0 : random.Below(withLoneCr ? 3 : 2);
        file += count == 1 && random.Chance(30) ? std::string_view() : endings[ending];
    }
    return file;
}

void Edit(workspace::Module& module, Random& random) {
    const std::int32_t count = module.CountOfLines();
    const Line line{static_cast<std::int32_t>(random.Below(static_cast<std::size_t>(count) + 1)) + 1};
    const Text text = random.Chance(50) ? Text(u"    new = 1") : Text(u"    On Error GoTo hErr\r\nhErr:");
    if (line.value() > count || random.Chance(50)) {
        ASSERT_TRUE(module.InsertLines(line, text));
    } else if (random.Chance(50)) {
        ASSERT_TRUE(module.DeleteLines(line, 1));
    } else {
        ASSERT_TRUE(module.ReplaceLine(line, text));
    }
}

struct States {
    std::string before;
    std::string after;
};

States RandomStates(Random& random, bool withLoneCr) {
    States states{RandomFile(random, withLoneCr), {}};
    workspace::Module module(states.before, 0, workspace::DefaultEncoding());
    for (std::size_t edits = 1 + random.Below(12); edits > 0; --edits) {
        Edit(module, random);
    }
    module.AppendCurrentBytes(states.after);
    return states;
}

TEST(UnifiedDiffOfEditedModules, GivesTheNewFile) {
    for (std::uint64_t seed = 1; seed <= 1500; ++seed) {
        Random random(seed);
        const States states = RandomStates(random, seed % 3 == 0);
        const std::string diff = DiffOf(states.before, states.after);
        ASSERT_EQ(Applied(diff, states.before), states.after) << "seed " << seed << "\n" << diff;
        ASSERT_EQ(diff.empty(), states.before == states.after) << "seed " << seed;
    }
}

TEST(UnifiedDiffOfEditedModules, IsAppliedByPatch) {
    if (std::system("patch --version > /dev/null 2>&1") != 0) {
        GTEST_SKIP() << "there is no patch";
    }
    const support::TemporaryFolder folder;
    const std::string command = "cd '" + folder.path().string() + "' && patch --binary -s -p1 < changes.diff";
    for (std::uint64_t seed = 1; seed <= 60; ++seed) {
        Random random(seed);
        const States states = RandomStates(random, seed % 3 == 0);
        if (states.before.empty() || states.after.empty() || states.before == states.after) {
            continue;
        }
        folder.Write("A.bas", states.before);
        folder.Write("changes.diff", DiffOf(states.before, states.after));
        ASSERT_EQ(std::system(command.c_str()), 0) << "seed " << seed;
        ASSERT_EQ(folder.Read("A.bas"), states.after) << "seed " << seed;
    }
}

TEST(UnifiedDiffOfEditedModules, HiddenLinesStayBehindTheirLineAndGoWithIt) {
    const std::string before =
        "Sub A()\r\nAttribute A.VB_Description = \"a\"\r\n    x = 1\r\nEnd Sub\r\nSub B()\r\n"
        "Attribute B.VB_Description = \"b\"\r\nEnd Sub\r\n";
    workspace::Module module(before, 0, workspace::DefaultEncoding());
    ASSERT_TRUE(module.InsertLines(Line{2}, u"    y = 1"));
    ASSERT_TRUE(module.DeleteLines(Line{5}, 1));
    std::string after;
    module.AppendCurrentBytes(after);
    EXPECT_EQ(DiffOf(before, after),
              "--- a/A.bas\n+++ b/A.bas\n@@ -1,7 +1,6 @@\n Sub A()\r\n"
              " Attribute A.VB_Description = \"a\"\r\n+    y = 1\r\n     x = 1\r\n End Sub\r\n"
              "-Sub B()\r\n-Attribute B.VB_Description = \"b\"\r\n End Sub\r\n");
}

}  // namespace
}  // namespace lintara::cli

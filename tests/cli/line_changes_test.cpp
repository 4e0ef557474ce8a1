#include "cli/output/line_changes.h"

#include "tests/support/random.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using support::Random;

// Each character is a line of its own.
FileLines LinesOf(std::string_view text) {
    FileLines lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        lines.push_back(text.substr(i, 1));
    }
    return lines;
}

// "ab-[c]+[xy]d": what stays, what goes and what comes, a change in brackets.
std::string Shown(const FileLines& before, const FileLines& after, const std::vector<LineChange>& changes) {
    std::string shown;
    std::size_t at = 0;
    const auto write = [&](const FileLines& lines, std::size_t begin, std::size_t end) {
        for (; begin < end; ++begin) {
            shown += lines[begin];
        }
    };
    for (const LineChange& change : changes) {
        write(before, at, change.beforeBegin);
        shown += "-[";
        write(before, change.beforeBegin, change.beforeEnd);
        shown += "]+[";
        write(after, change.afterBegin, change.afterEnd);
        shown += "]";
        at = change.beforeEnd;
    }
    write(before, at, before.size());
    return shown;
}

struct Case {
    std::string_view before;
    std::string_view after;
    std::string_view shown;
    std::size_t changedLines;
};

TEST(CompareLines, FindsWhatWasInsertedDeletedAndReplaced) {
    const std::vector<Case> cases{
        {"", "", "", 0},
        {"abc", "abc", "abc", 0},
        {"", "ab", "-[]+[ab]", 2},
        {"ab", "", "-[ab]+[]", 2},
        {"abc", "axc", "a-[b]+[x]c", 1},
        {"abcd", "axyd", "a-[bc]+[xy]d", 2},
        {"abcd", "axd", "a-[bc]+[x]d", 2},
        {"abcd", "abxycd", "ab-[]+[xy]cd", 2},
        {"abcd", "ad", "a-[bc]+[]d", 2},
        // As many lines as before, yet not line by line.
        {"abcdefg", "xabcdef", "-[]+[x]abcdef-[g]+[]", 2},
        {"abcdefg", "abdefxg", "ab-[c]+[]def-[]+[x]g", 2},
        // A handler in each of two procedures: first statement and block.
        {"s12es34e", "sh12HResh34HRe", "s-[]+[h]12-[]+[HR]es-[]+[h]34-[]+[HR]e", 6},
        // The same, and numbers in front of the statements.
        {"s12es34e", "shABHReshCDHRe", "s-[12]+[hABHR]es-[34]+[hCDHR]e", 10},
        // The same lines again and again; nothing stands once.
        {"abab", "ababab", "abab-[]+[ab]", 2},
        {"aabbaabb", "abab", "a-[a]+[]b-[b]+[]a-[ab]+[]b", 4},
        // Lines that changed places.
        {"abcdef", "defabc", "-[abc]+[]def-[]+[abc]", 6},
    };
    for (const Case& c : cases) {
        const FileLines before = LinesOf(c.before);
        const FileLines after = LinesOf(c.after);
        const std::vector<LineChange> changes = CompareLines(before, after);
        EXPECT_EQ(Shown(before, after, changes), c.shown) << c.before << " to " << c.after;
        EXPECT_EQ(CountChangedLines(changes), c.changedLines) << c.before << " to " << c.after;
    }
}

// Whether the changes make `after` of `before`, in order and none without a line that stayed in between.
void ExpectWhole(const FileLines& before, const FileLines& after, const std::vector<LineChange>& changes) {
    FileLines made;
    std::size_t at = 0;
    for (std::size_t i = 0; i < changes.size(); ++i) {
        const LineChange& change = changes[i];
        ASSERT_TRUE(i == 0 || change.beforeBegin > at) << "change " << i;
        ASSERT_LT(change.beforeBegin + change.afterBegin, change.beforeEnd + change.afterEnd);
        made.insert(made.end(), before.begin() + static_cast<std::ptrdiff_t>(at),
                    before.begin() + static_cast<std::ptrdiff_t>(change.beforeBegin));
        ASSERT_EQ(made.size(), change.afterBegin) << "change " << i;
        made.insert(made.end(), after.begin() + static_cast<std::ptrdiff_t>(change.afterBegin),
                    after.begin() + static_cast<std::ptrdiff_t>(change.afterEnd));
        at = change.beforeEnd;
    }
    made.insert(made.end(), before.begin() + static_cast<std::ptrdiff_t>(at), before.end());
    ASSERT_EQ(made, after);
}

std::string RandomLetters(Random& random, std::size_t size, std::size_t letters) {
    std::string text;
    for (; size > 0; --size) {
        text += static_cast<char>('a' + random.Below(letters));
    }
    return text;
}

TEST(CompareLines, AnyTwoStatesAreMadeOfEachOther) {
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
        Random random(seed);
        const std::size_t letters = 1 + random.Below(26);
        const std::string before = RandomLetters(random, random.Below(40), letters);
        const std::string after = RandomLetters(random, random.Below(40), letters);
        const FileLines old = LinesOf(before);
        const FileLines now = LinesOf(after);
        ASSERT_NO_FATAL_FAILURE(ExpectWhole(old, now, CompareLines(old, now))) << before << " " << after;
    }
}

// Beyond what one search for the shortest way covers.
TEST(CompareLines, LongStatesAreMadeOfEachOtherWithoutMuchAdo) {
    for (std::uint64_t seed = 1; seed <= 30; ++seed) {
        Random random(seed);
        const std::string before = RandomLetters(random, 2000, 3);
        std::string after = before;
        std::size_t edited = 0;
        for (std::size_t at = random.Below(20); at < after.size(); at += 5 + random.Below(20)) {
            random.Chance(50) ? after.insert(at, "X") : after.erase(at, 1);
            ++edited;
        }
        const FileLines old = LinesOf(before);
        const FileLines now = LinesOf(after);
        const std::vector<LineChange> changes = CompareLines(old, now);
        ASSERT_NO_FATAL_FAILURE(ExpectWhole(old, now, changes)) << "seed " << seed;
        EXPECT_LE(CountChangedLines(changes), edited + edited / 4) << "seed " << seed;
    }
}

// What every procedure of a long module got, with no line in it that stands once.
TEST(CompareLines, ManyInsertionsAreEachTheirOwn) {
    std::string before;
    std::string after;
    constexpr std::size_t Procedures = 1000;
    for (std::size_t i = 0; i < Procedures; ++i) {
        before += "sabcabcae";
        after += "shabcabcaHREe";
    }
    const FileLines old = LinesOf(before);
    const FileLines now = LinesOf(after);
    const std::vector<LineChange> changes = CompareLines(old, now);
    ASSERT_NO_FATAL_FAILURE(ExpectWhole(old, now, changes));
    EXPECT_EQ(changes.size(), 2 * Procedures);
    EXPECT_EQ(CountChangedLines(changes), 4 * Procedures);
}

}  // namespace
}  // namespace lintara::cli

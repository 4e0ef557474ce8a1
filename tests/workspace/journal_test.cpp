#include "workspace/journal.h"

#include "tests/support/temporary_folder.h"
#include "workspace/checksum.h"

#include <string>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using support::TemporaryFolder;

constexpr const char* temporaryName = ".lintara-0123456789abcdef-0.tmp";

Journal SampleJournal(const fs::path& folder) {
    Journal journal;
    journal.path = folder / "p" / journalName;
    journal.replacements = {
        {folder / "p/a b%\n\xE4.bas", folder / "p" / temporaryName, {}, MarkOf("old"), MarkOf("new")},
        {folder / "q/x.bas", folder / "q" / temporaryName, folder / "q/x.bas.bak", {}, {}},
    };
    journal.links = {folder / "q" / journalLinkName};
    return journal;
}

TEST(Journal, IsReadAsItWasWritten) {
    const TemporaryFolder folder;
    const Journal written = SampleJournal(folder.path());
    const std::string head = JournalHead(written);
    folder.Write("p/.lintara-journal", head + JournalCommit(written, head));
    const auto read = ReadJournal(written.path);
    ASSERT_TRUE(read.has_value()) << read.error().ToString();
    EXPECT_TRUE(read->committed);
    ASSERT_EQ(read->replacements.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(read->replacements[i].target, written.replacements[i].target);
        EXPECT_EQ(read->replacements[i].temporary, written.replacements[i].temporary);
        EXPECT_EQ(read->replacements[i].backup, written.replacements[i].backup);
        EXPECT_EQ(read->replacements[i].oldContent, written.replacements[i].oldContent);
        EXPECT_EQ(read->replacements[i].newContent, written.replacements[i].newContent);
    }
    EXPECT_EQ(read->links, written.links);
}

TEST(Journal, CutOffAnywhereIsNotCommittedAndNamesNothingWrong) {
    const TemporaryFolder folder;
    const Journal written = SampleJournal(folder.path());
    const std::string head = JournalHead(written);
    const std::string whole = head + JournalCommit(written, head);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        folder.Write("p/.lintara-journal", whole.substr(0, size));
        const auto read = ReadJournal(written.path);
        ASSERT_TRUE(read.has_value()) << size << read.error().ToString();
        EXPECT_FALSE(read->committed) << size;
        for (std::size_t i = 0; i < read->replacements.size(); ++i) {
            EXPECT_EQ(read->replacements[i].temporary, written.replacements[i].temporary) << size;
        }
    }
}

TEST(Journal, AnyChangedByteIsNoticed) {
    const TemporaryFolder folder;
    const Journal written = SampleJournal(folder.path());
    const std::string head = JournalHead(written);
    const std::string whole = head + JournalCommit(written, head);
    for (std::size_t at = 0; at < whole.size(); ++at) {
        std::string changed = whole;
        changed[at] ^= 1;
        folder.Write("p/.lintara-journal", changed);
        const auto read = ReadJournal(written.path);
        EXPECT_FALSE(read.has_value() && read->committed) << at;
    }
}

TEST(Journal, MovesWithItsFolder) {
    const TemporaryFolder folder;
    const Journal written = SampleJournal(folder / "before");
    const std::string head = JournalHead(written);
    folder.Write("after/p/.lintara-journal", head);
    const auto read = ReadJournal(folder / "after/p/.lintara-journal");
    ASSERT_TRUE(read.has_value());
    EXPECT_EQ(read->replacements[1].target, folder / "after/q/x.bas");
}

TEST(Journal, ThatWouldTouchOtherFilesIsRefused) {
    const TemporaryFolder folder;
    for (const std::string line : {
             "replace ../x.bas precious.txt %\n",
             "replace ../x.bas ../../.lintara-1-0.tmp %\n",
             "replace x.bas .lintara-1-0.tmp ../other\n",
             "replace x.bas sub/.lintara-1-0.tmp %\n",
             "link precious.txt\n",
         }) {
        folder.Write(".lintara-journal", "lintara-journal 1\n" + line);
        EXPECT_FALSE(ReadJournal(folder / ".lintara-journal").has_value()) << line;
    }
}

TEST(Journal, OfAnotherVersionIsRefused) {
    const TemporaryFolder folder;
    folder.Write(".lintara-journal", "lintara-journal 2\nreplace ...\n");
    EXPECT_FALSE(ReadJournal(folder / ".lintara-journal").has_value());
}

TEST(JournalLink, LeadsToTheJournal) {
    const TemporaryFolder folder;
    const fs::path link = folder / "q/.lintara-journal-link";
    const fs::path journal = folder / "p q/.lintara-journal";
    const std::string content = JournalLink(link, journal);
    folder.Write("q/.lintara-journal-link", content);
    EXPECT_EQ(ReadJournalLink(link), journal);
    for (std::size_t size = 0; size < content.size(); ++size) {
        folder.Write("q/.lintara-journal-link", content.substr(0, size));
        EXPECT_EQ(ReadJournalLink(link), std::nullopt);
    }
}

TEST(Checksum, IsTheSameOnEveryMachine) {
    EXPECT_EQ(Checksum(""), 0x7956d31ec40f871dU);
    EXPECT_EQ(Checksum("Option Explicit\r\nDim a As Long\r\n"), 0x2e750334582479e3U);
}

TEST(Checksum, TellsSmallChanges) {
    std::string text(100, 'x');
    const std::uint64_t before = Checksum(text);
    for (std::size_t at = 0; at < text.size(); ++at) {
        text[at] = 'y';
        EXPECT_NE(Checksum(text), before) << at;
        text[at] = 'x';
    }
    EXPECT_NE(Checksum(text + '\0'), before);
    EXPECT_NE(Checksum(""), Checksum(std::string(1, '\0')));
}

}  // namespace
}  // namespace lintara::workspace

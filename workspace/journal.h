// The journal of a save: which files it replaces by which, written down before the first one is touched. It
// lies in the project's folder as long as the save lasts; after an interruption it tells how to finish.
//
// The file begins with what is to be written. What was written follows when all of it is on the disk, with a
// checksum over the whole as the last line: from that line on the save counts. Other folders that the save
// touches get a link, a small file that leads to the journal, so that a run on a path there finds it, too.
#pragma once

#include "workspace/content_mark.h"
#include "workspace/diagnostic.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::workspace {

inline constexpr const char* journalName = ".lintara-journal";
inline constexpr const char* journalLinkName = ".lintara-journal-link";

// Names of temporary files begin and end so.
inline constexpr std::string_view temporaryPrefix = ".lintara-";
inline constexpr std::string_view temporarySuffix = ".tmp";
[[nodiscard]] bool IsTemporaryName(const std::filesystem::path& path);

struct Replacement {
    std::filesystem::path target;
    std::filesystem::path temporary;  // beside the target: the new content, and once replaced the old one
    std::filesystem::path backup;     // where the old content is kept; empty: nowhere
    // Both are told by a committed journal. Without them the file turned out not to need a new content.
    std::optional<ContentMark> oldContent;
    std::optional<ContentMark> newContent;
};

struct Journal {
    std::filesystem::path path;
    std::vector<Replacement> replacements;
    std::vector<std::filesystem::path> links;  // the link files
    bool committed = false;
};

// The journal's beginning, and the rest that commits it.
[[nodiscard]] std::string JournalHead(const Journal& journal);
[[nodiscard]] std::string JournalCommit(const Journal& journal, std::string_view head);

// A journal that was cut off is one that is not committed. The error tells that it cannot be read.
[[nodiscard]] std::expected<Journal, Diagnostic> ReadJournal(const std::filesystem::path& path);

// A link's content, and the journal it leads to; nothing when it was cut off.
[[nodiscard]] std::string JournalLink(const std::filesystem::path& link,
                                      const std::filesystem::path& journal);
[[nodiscard]] std::optional<std::filesystem::path> ReadJournalLink(const std::filesystem::path& link);

}  // namespace lintara::workspace

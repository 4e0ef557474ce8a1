#include "workspace/journal.h"

#include "workspace/checksum.h"
#include "workspace/path_resolver.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view firstLine = "lintara-journal 1\n";

// A path as one word: blanks, controls and "%" become "%" and two digits.
std::string Escaped(std::string_view path) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string word;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte <= 0x20 || byte == '%' || byte == 0x7F) {
            word += {'%', digits[byte >> 4], digits[byte & 0xF]};
        } else {
            word += c;
        }
    }
    return word.empty() ? "%" : word;
}

std::optional<std::string> Unescaped(std::string_view word) {
    std::string path;
    if (word == "%") {
        return path;
    }
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (word[at] != '%') {
            path += word[at];
            continue;
        }
        unsigned char byte = 0;
        const char* const end = word.data() + at + 3;
        if (at + 3 > word.size() || std::from_chars(word.data() + at + 1, end, byte, 16).ptr != end) {
            return std::nullopt;
        }
        path += static_cast<char>(byte);
        at += 2;
    }
    return path;
}

std::string Hex(std::uint64_t value) {
    char digits[16];
    return {digits, std::to_chars(digits, digits + sizeof digits, value, 16).ptr};
}

// Relative to the journal, so that the folder may have been moved since.
std::string Relative(const fs::path& path, const fs::path& journal) {
    const fs::path relative = path.lexically_relative(journal.parent_path());
    return Escaped((relative.empty() ? path : relative).string());
}

// The words of a line, one by one.
class Words {
  public:
    Words(std::string_view line, const fs::path& journal) : rest_(line), folder_(FolderOf(journal)) {}

    std::string_view Word() {
        const std::size_t end = std::min(rest_.find(' '), rest_.size());
        const std::string_view word = rest_.substr(0, end);
        rest_.remove_prefix(std::min(end + 1, rest_.size()));
        return word;
    }
    fs::path Path() {
        const auto path = Unescaped(Word());
        valid_ &= path.has_value();
        return !path || path->empty() ? fs::path() : (folder_ / *path).lexically_normal();
    }
    std::uint64_t Number() {
        const std::string_view word = Word();
        std::uint64_t number = 0;
        const char* const end = word.data() + word.size();
        valid_ &= !word.empty() && std::from_chars(word.data(), end, number, 16).ptr == end;
        return number;
    }
    [[nodiscard]] bool valid() const { return valid_ && rest_.empty(); }

  private:
    std::string_view rest_;
    fs::path folder_;
    bool valid_ = true;
};

bool ParseLine(std::string_view line, Journal& journal) {
    Words words(line, journal.path);
    const std::string_view kind = words.Word();
    if (kind == "replace") {
        Replacement replacement;
        replacement.target = words.Path();
        replacement.temporary = words.Path();
        replacement.backup = words.Path();
        journal.replacements.push_back(std::move(replacement));
    } else if (kind == "link") {
        journal.links.push_back(words.Path());
    } else if (kind == "content") {
        const std::uint64_t index = words.Number();
        const ContentMark oldContent{words.Number(), words.Number()};
        const ContentMark newContent{words.Number(), words.Number()};
        if (index >= journal.replacements.size()) {
            return false;
        }
        journal.replacements[index].oldContent = oldContent;
        journal.replacements[index].newContent = newContent;
    } else {
        return false;
    }
    return words.valid();
}

// A journal may come with a folder from anywhere. It must not lead to other files than a save makes.
bool IsHarmless(const Journal& journal) {
    const auto harmless = [](const Replacement& each) {
        const fs::path folder = each.target.parent_path();
        return !each.target.filename().empty() && IsTemporaryName(each.temporary) &&
               each.temporary.parent_path() == folder &&
               (each.backup.empty() || (each.backup.parent_path() == folder &&
                                        each.backup.string().starts_with(each.target.string())));
    };
    const auto isLink = [](const fs::path& link) { return link.filename() == journalLinkName; };
    return std::ranges::all_of(journal.replacements, harmless) && std::ranges::all_of(journal.links, isLink);
}

// What the last line of a committed journal must be.
std::string CommitLine(std::string_view before) {
    return "commit " + Hex(Checksum(before)) + "\n";
}

bool IsCommitted(std::string_view bytes) {
    const std::size_t last = bytes.size() < 2 ? std::string_view::npos : bytes.rfind('\n', bytes.size() - 2);
    return last != std::string_view::npos && bytes.substr(last + 1) == CommitLine(bytes.substr(0, last + 1));
}

}  // namespace

bool IsTemporaryName(const fs::path& path) {
    const std::string name = path.filename().string();
    return name.starts_with(temporaryPrefix) && name.ends_with(temporarySuffix);
}

std::string JournalHead(const Journal& journal) {
    std::string head(firstLine);
    for (const Replacement& each : journal.replacements) {
        head += "replace " + Relative(each.target, journal.path) + " " +
                Relative(each.temporary, journal.path) + " " +
                (each.backup.empty() ? "%" : Relative(each.backup, journal.path)) + "\n";
    }
    for (const fs::path& link : journal.links) {
        head += "link " + Relative(link, journal.path) + "\n";
    }
    return head;
}

std::string JournalCommit(const Journal& journal, std::string_view head) {
    std::string rest;
    for (std::size_t i = 0; i < journal.replacements.size(); ++i) {
        const Replacement& each = journal.replacements[i];
        if (each.oldContent && each.newContent) {
            rest += "content " + Hex(i) + " " + Hex(each.oldContent->size) + " " +
                    Hex(each.oldContent->checksum) + " " + Hex(each.newContent->size) + " " +
                    Hex(each.newContent->checksum) + "\n";
        }
    }
    return rest + CommitLine(std::string(head) + rest);
}

std::expected<Journal, Diagnostic> ReadJournal(const fs::path& path) {
    auto content = ReadFile(path);
    if (!content) {
        return std::unexpected(Diagnostic{path, 0, std::move(content.error())});
    }
    std::string_view rest = content->bytes;
    Journal journal;
    journal.path = path;
    journal.committed = IsCommitted(rest);
    if (!rest.starts_with(firstLine)) {
        // An interruption can leave any beginning of it; another first line is another version's.
        if (!firstLine.starts_with(rest.substr(0, firstLine.size()))) {
            return std::unexpected(Diagnostic{path, 1, "is the journal of another version of this program"});
        }
        return journal;
    }
    rest.remove_prefix(firstLine.size());
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        if (end == std::string_view::npos || !ParseLine(rest.substr(0, end), journal)) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    if (!IsHarmless(journal)) {
        return std::unexpected(
            Diagnostic{path, 0, "names files that no save would name; delete it if you do not know it"});
    }
    return journal;
}

std::string JournalLink(const fs::path& link, const fs::path& journal) {
    return Relative(journal, link) + "\n";
}

std::optional<fs::path> ReadJournalLink(const fs::path& link) {
    const auto content = ReadFile(link);
    if (!content || !content->bytes.ends_with('\n')) {
        return std::nullopt;
    }
    Words words(std::string_view(content->bytes).substr(0, content->bytes.size() - 1), link);
    fs::path journal = words.Path();
    return words.valid() && journal.filename() == journalName ? std::optional(std::move(journal))
                                                              : std::nullopt;
}

}  // namespace lintara::workspace

#include "cli/project/undo_store.h"

#include "base/uninterrupted.h"
#include "cli/output/terminal_text.h"
#include "workspace/checksum.h"
#include "workspace/journal.h"
#include "workspace/read_file.h"
#include "workspace/write_file.h"

#include <cerrno>
#include <charconv>
#include <string_view>
#include <system_error>
#include <utility>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

// A record is a head and behind it what the files held, one after the other. The head is numbers and strings:
// each number as decimal digits and a line feed, each string as its length and its bytes. It tells of each
// file the path and the marks of both contents, and ends with its own checksum.
constexpr std::string_view Magic = "lintara undo 1\n";

void AppendNumber(std::uint64_t number, std::string& bytes) {
    bytes += std::to_string(number);
    bytes += '\n';
}

void AppendString(std::string_view text, std::string& bytes) {
    AppendNumber(text.size(), bytes);
    bytes += text;
}

class RecordReader {
  public:
    explicit RecordReader(std::string_view bytes) : rest_(bytes) {}

    [[nodiscard]] bool failed() const { return failed_; }
    [[nodiscard]] std::size_t left() const { return rest_.size(); }

    std::uint64_t Number() {
        std::uint64_t number = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc() || end == rest_.data() + rest_.size() || *end != '\n') {
            failed_ = true;
            return 0;
        }
        rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()) + 1);
        return number;
    }

    std::string String() { return Bytes(Number()); }

    std::string Bytes(std::uint64_t size) {
        if (failed_ || size > rest_.size()) {
            failed_ = true;
            return {};
        }
        std::string text(rest_.substr(0, size));
        rest_.remove_prefix(size);
        return text;
    }

  private:
    std::string_view rest_;
    bool failed_ = false;
};

void AppendMark(const workspace::ContentMark& mark, std::string& bytes) {
    AppendNumber(mark.size, bytes);
    AppendNumber(mark.checksum, bytes);
}

std::string HeadOf(std::string_view command, std::span<const workspace::ReplacedFile> files) {
    std::string head(Magic);
    AppendString(command, head);
    AppendNumber(files.size(), head);
    for (const workspace::ReplacedFile& file : files) {
        AppendString(fs::absolute(file.path).native(), head);
        AppendMark(file.before, head);
        AppendMark(file.after, head);
    }
    AppendNumber(workspace::Checksum(head), head);
    return head;
}

workspace::WriteResult WriteRecord(int descriptor, std::string_view command,
                                   std::span<const workspace::ReplacedFile> files) {
    auto written = workspace::WriteAll(descriptor, HeadOf(command, files));
    for (const workspace::ReplacedFile& file : files) {
        if (!written) {
            break;
        }
        const auto old = workspace::ReadFile(file.old);
        if (!old || workspace::MarkOf(old->bytes) != file.before) {
            return std::unexpected("cannot be written: what " + PrintablePath(file.path) +
                                   " held cannot be read any more");
        }
        written = workspace::WriteAll(descriptor, old->bytes);
    }
    return written;
}

workspace::ContentMark MarkFrom(RecordReader& reader) {
    workspace::ContentMark mark;
    mark.size = reader.Number();
    mark.checksum = reader.Number();
    return mark;
}

std::optional<UndoRecord> Parsed(std::string_view bytes) {
    if (!bytes.starts_with(Magic)) {
        return std::nullopt;
    }
    RecordReader reader(bytes.substr(Magic.size()));
    UndoRecord record{.command = reader.String(), .files = {}};
    std::vector<workspace::ContentMark> before;
    for (std::uint64_t left = reader.Number(); left > 0 && !reader.failed(); --left) {
        UndoFile& file = record.files.emplace_back();
        file.path = reader.String();
        before.push_back(MarkFrom(reader));
        file.after = MarkFrom(reader);
    }
    const std::uint64_t checksum = workspace::Checksum(bytes.substr(0, bytes.size() - reader.left()));
    if (reader.failed() || reader.Number() != checksum) {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < record.files.size(); ++i) {
        record.files[i].content = reader.Bytes(before[i].size);
        if (reader.failed() || workspace::MarkOf(record.files[i].content) != before[i]) {
            return std::nullopt;
        }
    }
    return reader.left() > 0 ? std::nullopt : std::optional(std::move(record));
}

// The folder and those above it that are missing; itself for the user alone.
std::error_code MakeFolder(const fs::path& folder) {
    std::error_code error;
    if (Uninterrupted(error, [&] { return fs::create_directories(folder, error); }) && !error) {
        Uninterrupted(error, [&] {
            fs::permissions(folder, fs::perms::owner_all, error);
            return 0;
        });
    }
    return error;
}

// What runs that were killed while they wrote this record have left.
void RemoveLeftovers(const fs::path& target) {
    std::error_code error;
    const std::string prefix = target.filename().string() + std::string(workspace::temporaryPrefix);
    for (fs::directory_iterator entry(target.parent_path(), error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(prefix) && name.ends_with(workspace::temporarySuffix)) {
            (void)workspace::Remove(entry->path());
        }
    }
}

}  // namespace

UndoStore::UndoStore(const fs::path& stateFolder) : records_(stateFolder / "undo", "", mostUndoRecords) {}

std::expected<void, std::string> UndoStore::Write(const fs::path& project, std::string_view command,
                                                  std::span<const workspace::ReplacedFile> files) const {
    const fs::path target = records_.FileOf(project);
    const auto complain = [&](const std::string& what) {
        return std::unexpected(PrintablePath(target) + " " + what);
    };
    // What is remembered is never an earlier command than the last.
    Forget(project);
    if (const std::error_code error = MakeFolder(records_.folder())) {
        return complain("cannot be written: " + error.message());
    }
    RemoveLeftovers(target);
    fs::path temporary = workspace::TemporaryNames().Beside(target, 0);
    temporary.replace_filename(target.filename().string() + temporary.filename().string());
    const auto file = workspace::CreateNew(temporary);
    if (!file) {
        return complain(workspace::NotCreatedMessage(file.error()));
    }
    workspace::WriteResult written = WriteRecord(file->get(), command, files);
    if (written && !workspace::Rename(temporary, target)) {
        written = std::unexpected("cannot be written: " + workspace::SystemMessage(errno));
    }
    if (!written) {
        (void)workspace::Remove(temporary);
        return complain(written.error());
    }
    records_.ForgetOldest(target);
    return {};
}

std::expected<std::optional<UndoRecord>, std::string> UndoStore::Read(const fs::path& project) const {
    const fs::path path = records_.FileOf(project);
    std::error_code error;
    if (!fs::exists(path, error)) {
        return std::nullopt;
    }
    const auto content = workspace::ReadFile(path);
    if (!content) {
        return std::unexpected(PrintablePath(path) + ": " + content.error());
    }
    auto record = Parsed(content->bytes);
    if (!record) {
        return std::unexpected(PrintablePath(path) + " is damaged, so nothing can be undone");
    }
    return record;
}

void UndoStore::Forget(const fs::path& project) const {
    (void)workspace::Remove(records_.FileOf(project));
}

}  // namespace lintara::cli

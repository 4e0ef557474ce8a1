#include "cli/output/unified_diff.h"

#include "cli/output/terminal_text.h"

#include <algorithm>
#include <span>

namespace lintara::cli {
namespace {

constexpr std::size_t Context = 3;

constexpr std::string_view Reset = "\x1b[m";
constexpr std::string_view Bold = "\x1b[1m";
constexpr std::string_view Cyan = "\x1b[36m";
constexpr std::string_view Red = "\x1b[31m";
constexpr std::string_view Green = "\x1b[32m";

bool IsAscii(std::string_view bytes) {
    return std::ranges::all_of(bytes, [](char c) { return static_cast<signed char>(c) >= 0; });
}

// A path in a header line; quoted, as git and patch understand it, when it holds what would break the line or
// steer a terminal.
std::string QuotedLabel(std::string_view prefix, std::string_view label) {
    std::string path(prefix);
    path += label;
    const bool steers = Printable(std::string_view(path)) != path;
    if (!steers && path.find_first_of("\t\"\\") == std::string::npos) {
        // A tab ends the name for patch, so that blanks may be part of it.
        return path.contains(' ') ? path + '\t' : path;
    }
    std::string quoted = "\"";
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            quoted += '\\';
            quoted += c;
        } else if (byte < ' ' || byte == 0x7f || (steers && byte > 0x7f)) {
            quoted += '\\';
            quoted += static_cast<char>('0' + (byte >> 6));
            quoted += static_cast<char>('0' + ((byte >> 3) & 7));
            quoted += static_cast<char>('0' + (byte & 7));
        } else {
            quoted += c;
        }
    }
    return quoted + '"';
}

class DiffWriter {
  public:
    DiffWriter(const FileLines& before, const FileLines& after, const workspace::Encoding& encoding,
               DiffStyle style, std::string& out)
        : before_(before), after_(after), encoding_(encoding), style_(style), out_(out) {}

    void WriteHeader(std::string_view label) {
        WriteColored(Bold, "--- " + QuotedLabel("a/", label));
        WriteColored(Bold, "+++ " + QuotedLabel("b/", label));
    }

    // Changes that share context are one hunk.
    void WriteHunk(std::span<const LineChange> changes) {
        const std::size_t lead = std::min(Context, changes.front().beforeBegin);
        const std::size_t trail = std::min(Context, before_.size() - changes.back().beforeEnd);
        const std::size_t begin = changes.front().beforeBegin - lead;
        const std::size_t afterBegin = changes.front().afterBegin - lead;
        WriteColored(Cyan, "@@ -" + Span(begin, changes.back().beforeEnd + trail - begin) + " +" +
                               Span(afterBegin, changes.back().afterEnd + trail - afterBegin) + " @@");
        std::size_t at = begin;
        for (const LineChange& change : changes) {
            WriteLines(' ', {}, before_, at, change.beforeBegin);
            WriteLines('-', Red, before_, change.beforeBegin, change.beforeEnd);
            WriteLines('+', Green, after_, change.afterBegin, change.afterEnd);
            at = change.beforeEnd;
        }
        WriteLines(' ', {}, before_, at, at + trail);
    }

  private:
    // First line from 1 and count; the line before it when there are none, no count when there is one.
    static std::string Span(std::size_t begin, std::size_t count) {
        const std::string first = std::to_string(count == 0 ? begin : begin + 1);
        return count == 1 ? first : first + "," + std::to_string(count);
    }

    void WriteColored(std::string_view color, const std::string& line) {
        out_ += style_.color ? color : std::string_view();
        out_ += line;
        out_ += style_.color ? Reset : std::string_view();
        out_ += '\n';
    }

    void WriteLines(char mark, std::string_view color, const FileLines& lines, std::size_t begin,
                    std::size_t end) {
        const bool colored = style_.color && !color.empty();
        for (std::size_t i = begin; i < end; ++i) {
            out_ += colored ? color : std::string_view();
            out_ += mark;
            const bool hasEnding = WriteText(lines[i]);
            out_ += colored ? Reset : std::string_view();
            out_ += hasEnding ? "\n" : "\n\\ No newline at end of file\n";
        }
    }

    // Writes the line without its ending, and tells whether it has one. For a program a line feed alone ends
    // a line.
    bool WriteText(std::string_view line) {
        // For a program the diff holds the file's own bytes, so that it can be applied.
        if (encoding_.unitSize() != 1 || ((style_.printable || style_.utf8) && !IsAscii(line))) {
            encoding_.Decode(line, decoded_);
            utf8_ = workspace::ToUtf8(decoded_);
            line = utf8_;
        }
        const std::size_t size = line.size();
        if (line.ends_with('\n')) {
            line.remove_suffix(1);
        }
        if (style_.printable) {
            if (line.ends_with('\r')) {
                line.remove_suffix(1);
            }
            AppendPrintable(line, out_);
        } else {
            out_ += line;
        }
        return line.size() < size;
    }

    const FileLines& before_;
    const FileLines& after_;
    const workspace::Encoding& encoding_;
    DiffStyle style_;
    std::string& out_;
    Text decoded_;
    std::string utf8_;
};

void AppendChanges(std::string_view label, const FileLines& before, const FileLines& after,
                   std::span<const LineChange> changes, const workspace::Encoding& encoding, DiffStyle style,
                   std::string& out) {
    DiffWriter writer(before, after, encoding, style, out);
    writer.WriteHeader(label);
    while (!changes.empty()) {
        std::size_t end = 1;
        while (end < changes.size() && changes[end].beforeBegin - changes[end - 1].beforeEnd <= 2 * Context) {
            ++end;
        }
        writer.WriteHunk(changes.first(end));
        changes = changes.subspan(end);
    }
}

bool EndsInLoneCr(std::string_view line) {
    return line.ends_with('\r');
}

// The same bytes, as views that end in a line feed each.
FileLines JoinedAtLoneCrs(const FileLines& lines) {
    FileLines joined;
    bool open = false;
    for (const std::string_view line : lines) {
        if (open) {
            joined.back() = {joined.back().data(), joined.back().size() + line.size()};
        } else {
            joined.push_back(line);
        }
        open = EndsInLoneCr(line);
    }
    return joined;
}

}  // namespace

std::string DiffLabel(const std::filesystem::path& path) {
    std::string label = path.lexically_normal().generic_string();
    label.erase(0, label.find_first_not_of('/'));
    return label;
}

void AppendUnifiedDiff(std::string_view label, const FileLines& before, const FileLines& after,
                       const std::vector<LineChange>& changes, const workspace::Encoding& encoding,
                       DiffStyle style, std::string& out) {
    if (changes.empty()) {
        return;
    }
    // A program that applies the diff knows no line that ends in CR alone.
    const bool byLineFeeds =
        !style.printable && encoding.unitSize() == 1 &&
        (std::ranges::any_of(before, EndsInLoneCr) || std::ranges::any_of(after, EndsInLoneCr));
    if (byLineFeeds) {
        const FileLines joinedBefore = JoinedAtLoneCrs(before);
        const FileLines joinedAfter = JoinedAtLoneCrs(after);
        AppendChanges(label, joinedBefore, joinedAfter, CompareLines(joinedBefore, joinedAfter), encoding,
                      style, out);
    } else {
        AppendChanges(label, before, after, changes, encoding, style, out);
    }
}

}  // namespace lintara::cli

// The shown lines of a component as ranges of bytes in the file's own encoding. It knows nothing of the
// language: Module and its indexes build on it.
//
// A line is a view into the file's bytes until it is edited; then it is a view into an arena of the buffer's
// own. What follows a line's text up to the next shown line, its line ending and the lines that the IDE hides
// behind it, is the line's tail: it moves and goes with the line and is never decoded.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "workspace/encoding.h"
#include "workspace/gap_buffer.h"
#include "workspace/shown_lines.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::workspace {

class LineBuffer {
  public:
    // The lines of `file`, which must outlive the buffer, from byte `codeBegin` on.
    LineBuffer(std::string_view file, std::size_t codeBegin, EncodingPtr encoding);

    [[nodiscard]] std::int32_t count() const { return static_cast<std::int32_t>(records_.size()); }
    [[nodiscard]] Line last() const { return Line{count()}; }

    // The text of a line that exists, into `text`.
    void Read(Line line, Text& text) const;
    // Whether the text of a line that exists may end in an underscore; told without decoding it.
    [[nodiscard]] bool EndsInUnderscore(Line line) const;

    // Each edit takes lines that exist (Insert also the one after the last). No text holds "\r\n".
    void Replace(Line line, TextView text);
    void Insert(Line line, std::span<const TextView> texts);
    void Delete(Line line, std::int32_t lineCount);

    [[nodiscard]] bool edited() const { return edited_; }
    [[nodiscard]] const Encoding& encoding() const { return *encoding_; }
    // The file as it would be written now; every line that no edit touched byte for byte.
    void AppendBytes(std::string& bytes) const;
    // How many bytes these are, but for a line ending that has to be added here and there.
    [[nodiscard]] std::size_t CountBytes() const;

    // The first line that its encoding cannot write.
    [[nodiscard]] std::optional<Line> FirstUnencodable() const;
    // The physical line of the file, from 1, on which `line` stands now. Counts, so it is not for every line.
    [[nodiscard]] std::int64_t FileLine(Line line) const;

    // Which line `line` was before any edit: 0 for an inserted one.
    [[nodiscard]] Line OriginOf(Line line) const { return Line{At(line).origin}; }
    // Where the lines stood before any edit.
    [[nodiscard]] const ShownLines& originalLines() const { return shown_; }

  private:
    enum class Ending : unsigned char { CrLf, Lf, Cr };

    struct Record {
        const char* data = nullptr;
        std::uint32_t textSize = 0;
        std::uint32_t tailSize : 29 = 0;
        std::uint32_t bare : 1 = 0;         // its tail does not end in a line ending
        std::uint32_t edited : 1 = 0;       // lies in the arena
        std::uint32_t unencodable : 1 = 0;  // its text is in the encoding of memory
        std::int32_t origin = 0;            // the line that it was at first; 0: it was inserted

        [[nodiscard]] std::string_view text() const { return {data, textSize}; }
        [[nodiscard]] std::string_view tail() const { return {data + textSize, tailSize}; }
    };

    // Where edited lines lie. Blocks never move, so that records can point into them.
    class Arena {
      public:
        // Room for a line of `size` bytes.
        [[nodiscard]] char* Allocate(std::size_t size);
        [[nodiscard]] std::size_t allocated() const { return allocated_; }

      private:
        std::vector<std::unique_ptr<char[]>> blocks_;
        std::size_t room_ = 0;
        std::size_t blockSize_ = 0;
        std::size_t allocated_ = 0;
    };

    [[nodiscard]] static std::size_t Index(Line line) { return static_cast<std::size_t>(line.value() - 1); }
    [[nodiscard]] Record& At(Line line) { return records_[Index(line)]; }
    [[nodiscard]] const Record& At(Line line) const { return records_[Index(line)]; }

    void SplitLines(std::size_t codeBegin);
    [[nodiscard]] std::int64_t CountBreaks(std::string_view bytes) const;
    void NoteHead();
    [[nodiscard]] Record MakeRecord(TextView text, std::string_view tail);
    [[nodiscard]] std::optional<Ending> EndingOf(std::string_view tail) const;
    [[nodiscard]] bool EndsWithLineEnding(std::string_view bytes) const;
    [[nodiscard]] std::string_view NewLineEnding() const;
    void Count(const Record& record, std::int32_t change);
    void CountText(const Record& record, std::int32_t change);
    [[nodiscard]] const std::string& Bytes(Ending ending) const;
    void CompactArena();
    [[nodiscard]] bool StartsWithLineFeed(const Record& record) const;
    [[nodiscard]] std::string_view EndingOfBareLine(const Record& record, std::string_view above) const;

    std::string_view file_;
    EncodingPtr encoding_;
    std::array<std::string, 3> endings_;  // the bytes of each Ending
    std::string underscore_;
    std::size_t prefixSize_ = 0;  // the bytes ahead of the first shown line, the mark included
    GapBuffer<Record> records_;
    std::array<std::int32_t, 3> endingCounts_{};
    std::optional<Ending> prefixEnding_;
    bool prefixLacksEnding_ = false;  // and there was no line behind it
    Arena arena_;
    std::size_t linesSize_ = 0;  // bytes of all records
    std::size_t arenaLive_ = 0;  // bytes of the arena that records use
    std::int32_t unencodable_ = 0;
    ShownLines shown_;
    bool edited_ = false;
    std::string scratch_;
};

}  // namespace lintara::workspace

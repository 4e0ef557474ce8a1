#include "workspace/line_buffer.h"

#include "workspace/characters.h"
#include "workspace/raw_line.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace lintara::workspace {

namespace {

constexpr TextView attributeWord = u"Attribute ";
constexpr std::size_t smallestArenaBlock = 4 * 1024;
constexpr std::size_t largestArenaBlock = 8 * 1024;
// What of an arena may be out of use, however little of it is in use; and for each line, as all are looked at
// when it is compacted.
constexpr std::size_t arenaSlack = 32 * 1024;
constexpr std::size_t arenaSlackPerLine = 8;
constexpr std::uint32_t tailSizeMask = 0x1FFFFFFF;

// A line that the IDE keeps and never shows: "Attribute ", a name, a dot and "VB_" at column 1.
bool IsHidden(TextView line) {
    if (!line.starts_with(attributeWord)) {
        return false;
    }
    const std::size_t nameEnd = SkipWord(line, attributeWord.size());
    return nameEnd > attributeWord.size() && IsLetter(line[attributeWord.size()]) &&
           line.substr(nameEnd).starts_with(u".VB_");
}

}  // namespace

char* LineBuffer::Arena::Allocate(std::size_t size) {
    if (size > room_ || blocks_.empty()) {
        // Small modules must not pay for large blocks.
        blockSize_ = std::max(size, std::clamp(2 * blockSize_, smallestArenaBlock, largestArenaBlock));
        blocks_.push_back(std::make_unique_for_overwrite<char[]>(blockSize_));
        room_ = blockSize_;
    }
    char* place = blocks_.back().get() + (blockSize_ - room_);
    room_ -= size;
    allocated_ += size;
    return place;
}

LineBuffer::LineBuffer(std::string_view file, std::size_t codeBegin, EncodingPtr encoding)
    : file_(file), encoding_(std::move(encoding)) {
    static constexpr std::array<TextView, 3> endings{u"\r\n", u"\n", u"\r"};
    for (std::size_t i = 0; i < endings.size(); ++i) {
        // Every encoding that a component can have writes line endings.
        [[maybe_unused]] const bool written = encoding_->Encode(endings[i], endings_[i]);
    }
    [[maybe_unused]] const bool written = encoding_->Encode(u"_", underscore_);
    SplitLines(codeBegin);
}

void LineBuffer::SplitLines(std::size_t codeBegin) {
    prefixSize_ = codeBegin;
    std::vector<Record> records;
    // As many as nearly every file has lines; only files with a lone CR in them have more.
    records.reserve(static_cast<std::size_t>(std::ranges::count(file_.substr(codeBegin), '\n')) + 1);
    std::string attributeBytes;
    [[maybe_unused]] const bool written = encoding_->Encode(attributeWord, attributeBytes);
    Text decoded;
    for (std::size_t at = codeBegin; at < file_.size();) {
        const RawLine raw = NextRawLine(file_, at, *encoding_);
        const std::string_view bytes = file_.substr(raw.begin, raw.end - raw.begin);
        at = raw.next;
        if (bytes.starts_with(attributeBytes)) {
            encoding_->Decode(bytes, decoded);
            if (IsHidden(decoded)) {
                if (records.empty()) {
                    prefixSize_ = raw.next;
                } else {
                    records.back().tailSize +=
                        static_cast<std::uint32_t>(raw.next - raw.begin) & tailSizeMask;
                    shown_.hiddenBehind.push_back(records.back().origin);
                }
                continue;
            }
        }
        Record record;
        record.data = bytes.data();
        record.textSize = static_cast<std::uint32_t>(bytes.size());
        record.tailSize = static_cast<std::uint32_t>(raw.next - raw.end) & tailSizeMask;
        record.origin = static_cast<std::int32_t>(records.size()) + 1;
        Count(record, 1);
        records.push_back(record);
    }
    if (!records.empty()) {
        records.back().bare = EndsWithLineEnding(records.back().tail()) ? 0 : 1;
    }
    records_ = GapBuffer<Record>(std::move(records));
    linesSize_ = file_.size() - prefixSize_;
    NoteHead();
}

void LineBuffer::NoteHead() {
    const auto mark = DetectByteOrderMark(file_);
    const std::size_t markSize = std::min(mark ? mark->length : 0, prefixSize_);
    shown_.headLines = CountBreaks(file_.substr(markSize, prefixSize_ - markSize));
    if (prefixSize_ == markSize) {
        return;
    }
    const std::string_view prefix = file_.substr(0, prefixSize_);
    for (const Ending ending : {Ending::CrLf, Ending::Lf, Ending::Cr}) {
        if (!prefixEnding_ && prefix.ends_with(Bytes(ending))) {
            prefixEnding_ = ending;
        }
    }
    prefixLacksEnding_ = !prefixEnding_ && count() == 0;
}

void LineBuffer::Read(Line line, Text& text) const {
    const Record& record = At(line);
    if (record.unencodable != 0) {
        MemoryEncoding()->Decode(record.text(), text);
    } else {
        encoding_->Decode(record.text(), text);
    }
}

bool LineBuffer::EndsInUnderscore(Line line) const {
    const Record& record = At(line);
    return record.unencodable != 0 || record.text().ends_with(underscore_);
}

void LineBuffer::Replace(Line line, TextView text) {
    const Record old = At(line);
    Record record = MakeRecord(text, old.tail());
    record.bare = old.bare;
    record.origin = old.origin;
    // The tail, and with it the line's ending, is the same.
    CountText(old, -1);
    CountText(record, 1);
    At(line) = record;
    CompactArena();
}

// Lines that come behind a last line without an ending leave the new last line without one.
void LineBuffer::Insert(Line line, std::span<const TextView> texts) {
    const bool lastIsBare = line > last() && count() > 0 && At(last()).bare != 0;
    std::vector<Record> records;
    records.reserve(texts.size());
    for (const TextView text : texts) {
        const bool bare = lastIsBare && records.size() + 1 == texts.size();
        records.push_back(MakeRecord(text, bare ? std::string_view{} : NewLineEnding()));
        records.back().bare = bare ? 1 : 0;
        Count(records.back(), 1);
    }
    records_.Insert(Index(line), records);
}

void LineBuffer::Delete(Line line, std::int32_t lineCount) {
    for (std::int32_t i = 0; i < lineCount; ++i) {
        Count(At(line + i), -1);
    }
    records_.Erase(Index(line), static_cast<std::size_t>(lineCount));
    edited_ = true;
    CompactArena();
}

LineBuffer::Record LineBuffer::MakeRecord(TextView text, std::string_view tail) {
    edited_ = true;
    Record record;
    scratch_.clear();
    if (!encoding_->Encode(text, scratch_)) {
        record.unencodable = 1;
        [[maybe_unused]] const bool written = MemoryEncoding()->Encode(text, scratch_);
    }
    record.edited = 1;
    record.textSize = static_cast<std::uint32_t>(scratch_.size());
    record.tailSize = static_cast<std::uint32_t>(tail.size()) & tailSizeMask;
    char* place = arena_.Allocate(scratch_.size() + tail.size());
    std::ranges::copy(scratch_, place);
    std::ranges::copy(tail, place + scratch_.size());
    record.data = place;
    return record;
}

const std::string& LineBuffer::Bytes(Ending ending) const {
    return endings_[std::to_underlying(ending)];
}

std::optional<LineBuffer::Ending> LineBuffer::EndingOf(std::string_view tail) const {
    for (const Ending ending : {Ending::CrLf, Ending::Lf, Ending::Cr}) {
        if (tail.starts_with(Bytes(ending))) {
            return ending;
        }
    }
    return std::nullopt;
}

bool LineBuffer::EndsWithLineEnding(std::string_view bytes) const {
    return std::ranges::any_of(endings_, [&](const std::string& ending) { return bytes.ends_with(ending); });
}

// The ending most used in the module; before its first line there is only the head's to go by.
std::string_view LineBuffer::NewLineEnding() const {
    const auto most = std::ranges::max_element(endingCounts_);
    if (*most == 0) {
        return Bytes(prefixEnding_.value_or(Ending::CrLf));
    }
    return endings_[static_cast<std::size_t>(most - endingCounts_.begin())];
}

// Keeps the totals that depend on the records: a record comes (1) or goes (-1).
void LineBuffer::Count(const Record& record, std::int32_t change) {
    if (const auto ending = EndingOf(record.tail())) {
        endingCounts_[std::to_underlying(*ending)] += change;
    }
    CountText(record, change);
}

void LineBuffer::CountText(const Record& record, std::int32_t change) {
    const std::size_t size = record.textSize + record.tailSize;
    linesSize_ = change > 0 ? linesSize_ + size : linesSize_ - size;
    if (record.edited != 0) {
        arenaLive_ = change > 0 ? arenaLive_ + size : arenaLive_ - size;
    }
    unencodable_ += record.unencodable != 0 ? change : 0;
}

// Lines that are edited again and again leave their earlier texts behind in the arena.
void LineBuffer::CompactArena() {
    if (arena_.allocated() < 2 * arenaLive_ + arenaSlack + arenaSlackPerLine * records_.size()) {
        return;
    }
    Arena compact;
    for (std::size_t i = 0; i < records_.size(); ++i) {
        Record& record = records_[i];
        if (record.edited != 0) {
            const std::size_t size = record.textSize + record.tailSize;
            char* place = compact.Allocate(size);
            std::memcpy(place, record.data, size);
            record.data = place;
        }
    }
    arena_ = std::move(compact);
}

bool LineBuffer::StartsWithLineFeed(const Record& record) const {
    return record.textSize == 0 && record.tail().starts_with(Bytes(Ending::Lf));
}

// An edit can bring a line that ends in CR and an empty one that ends in LF together, which would be one line
// when the file is read again. One of both is given CR LF, the edited one if that tells them apart.
void LineBuffer::AppendBytes(std::string& bytes) const {
    std::string_view run = file_.substr(0, prefixSize_);  // what was passed and lies in one piece
    if (prefixLacksEnding_ && count() > 0) {
        bytes += run;
        run = NewLineEnding();
    }
    bool aboveEdited = false;
    for (std::size_t i = 0; i < records_.size(); ++i) {
        const Record& record = records_[i];
        const std::size_t size = record.textSize + record.tailSize;
        const bool adjoins = run.data() + run.size() == record.data;
        if (StartsWithLineFeed(record) && run.ends_with(Bytes(Ending::Cr)) &&
            !(adjoins && record.edited == 0)) {
            bytes += run;
            bytes += Bytes(aboveEdited ? Ending::Lf : Ending::Cr);
            run = {record.data, size};
        } else if (adjoins) {
            run = {run.data(), run.size() + size};
        } else {
            bytes += run;
            run = {record.data, size};
        }
        aboveEdited = record.edited != 0;
        // A last line with neither text nor ending would not be there when the file is read again.
        if (record.bare != 0 && (i + 1 < records_.size() || size == 0)) {
            bytes += run;
            run = EndingOfBareLine(record, bytes);
            aboveEdited = true;
        }
    }
    bytes += run;
}

std::size_t LineBuffer::CountBytes() const {
    return prefixSize_ + linesSize_;
}

std::string_view LineBuffer::EndingOfBareLine(const Record& record, std::string_view above) const {
    const std::string_view ending = NewLineEnding();
    const bool wouldJoin = record.textSize == 0 && record.tailSize == 0 && ending == Bytes(Ending::Lf) &&
                           above.ends_with(Bytes(Ending::Cr));
    return wouldJoin ? std::string_view(Bytes(Ending::CrLf)) : ending;
}

std::optional<Line> LineBuffer::FirstUnencodable() const {
    if (unencodable_ == 0) {
        return std::nullopt;
    }
    for (Line line{1}; line <= last(); ++line) {
        if (At(line).unencodable != 0) {
            return line;
        }
    }
    return std::nullopt;
}

std::int64_t LineBuffer::CountBreaks(std::string_view bytes) const {
    std::int64_t lines = 0;
    for (std::size_t at = 0; at < bytes.size(); ++lines) {
        at = NextRawLine(bytes, at, *encoding_).next;
    }
    return lines;
}

std::int64_t LineBuffer::FileLine(Line line) const {
    std::int64_t result = 1 + shown_.headLines;
    for (Line before{1}; before < line; ++before) {
        const std::string_view tail = At(before).tail();
        result += tail.empty() ? 1 : CountBreaks(tail);
    }
    return result;
}

}  // namespace lintara::workspace

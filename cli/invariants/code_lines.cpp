#include "cli/invariants/code_lines.h"

#include "workspace/characters.h"
#include "workspace/raw_line.h"

#include <algorithm>

namespace lintara::cli {
namespace {

using workspace::IsLetter;

bool IsAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// Bytes that are not one ASCII character each are left to a closer look.
bool IsForeign(char c) {
    return static_cast<unsigned char>(c) >= 0x80;
}

// Whether the statement might be "End" with something behind it. Most that begin like it are "End If".
bool MayBeEnd(std::string_view text) {
    const auto isLetter = [&](std::size_t at, char letter) { return (text[at] | 0x20) == letter; };
    if (text.size() < 5 || !isLetter(0, 'e') || !isLetter(1, 'n') || !isLetter(2, 'd') || !IsBlank(text[3])) {
        return false;
    }
    return !(isLetter(4, 'i') || isLetter(4, 'w'));
}

// Whether the line might open a procedure, or close one when `isOpen`: told from its first bytes, which are
// the characters themselves in every encoding of one-byte units. True for all that is not clear.
bool MayBeEdge(std::string_view line, bool isOpen) {
    std::size_t at = 0;
    const auto skip = [&](auto isSkipped) {
        while (at < line.size() && isSkipped(line[at])) {
            ++at;
        }
    };
    skip(IsBlank);
    if (!isOpen) {
        return at < line.size() && (IsForeign(line[at]) || std::string_view("pPfFgGsS").contains(line[at]));
    }
    skip(IsAsciiDigit);
    skip([](char c) { return c == ':' || IsBlank(c); });
    if (at == line.size()) {
        return false;
    }
    if (IsForeign(line[at]) || MayBeEnd(line.substr(at))) {
        return true;
    }
    // A label may stand in front.
    skip([](char c) { return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_'; });
    return at < line.size() && (line[at] == ':' || IsForeign(line[at]));
}

}  // namespace

CodeLines::CodeLines(std::span<const std::string_view> fileLines, std::size_t headLines,
                     const workspace::Encoding& encoding)
    : encoding_(&encoding), hasByteUnits_(encoding.unitSize() == 1) {
    headLines = std::min(headLines, fileLines.size());
    lines_ = fileLines.subspan(headLines);
    if (fileLines.empty()) {
        return;
    }
    const char* const begin = fileLines.front().data();
    const char* const end = fileLines.back().data() + fileLines.back().size();
    std::size_t headSize = lines_.empty() ? static_cast<std::size_t>(end - begin)
                                          : static_cast<std::size_t>(lines_.front().data() - begin);
    if (headLines == 0) {
        const auto mark = workspace::DetectByteOrderMark(lines_.front());
        if (mark && mark->encoding->name() == encoding.name()) {
            headSize = mark->length;
            trimmed_.assign(lines_.begin(), lines_.end());
            trimmed_.front().remove_prefix(mark->length);
            lines_ = trimmed_;
        }
    }
    head_ = {begin, headSize};
    FindProcedures();
}

std::string_view CodeLines::piece(std::size_t begin, std::size_t end) const {
    if (begin >= end) {
        return {};
    }
    const char* const first = lines_[begin].data();
    const std::string_view last = lines_[end - 1];
    return {first, static_cast<std::size_t>(last.data() + last.size() - first)};
}

std::string_view CodeLines::textBytes(std::size_t index) const {
    std::string_view line = lines_[index];
    if (!hasByteUnits_) {
        return line.empty() ? line : line.substr(0, workspace::NextRawLine(line, 0, *encoding_).end);
    }
    if (line.ends_with('\n')) {
        line.remove_suffix(1);
    }
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::string_view CodeLines::ending(std::size_t index) const {
    return lines_[index].substr(textBytes(index).size());
}

bool CodeLines::IsHidden(std::size_t index) const {
    constexpr TextView word = u"Attribute ";
    if (hasByteUnits_ && !lines_[index].starts_with("Attribute ")) {
        return false;
    }
    Read(index, hidden_);
    const TextView text = hidden_;
    if (!text.starts_with(word) || text.size() == word.size() || !IsLetter(text[word.size()])) {
        return false;
    }
    return text.substr(workspace::SkipWord(text, word.size())).starts_with(u".VB_");
}

std::size_t CodeLines::NextShown(std::size_t index) const {
    while (index < lines_.size() && IsHidden(index)) {
        ++index;
    }
    return index;
}

std::size_t CodeLines::ReadLogical(std::size_t first, bool isOpen, bool& mayBeEdge) {
    const std::string_view bytes = textBytes(first);
    const bool mayContinue = !hasByteUnits_ || bytes.ends_with('_');
    mayBeEdge = mayContinue || MayBeEdge(bytes, isOpen);
    if (!mayBeEdge) {
        return first + 1;
    }
    Read(first, logical_);
    std::size_t end = first + 1;
    bool continues = workspace::Continues(logical_);
    for (std::size_t next = NextShown(end); continues && next < lines_.size(); next = NextShown(end)) {
        logical_.pop_back();
        Read(next, piece_);
        continues = workspace::Continues(piece_);
        logical_ += piece_;
        end = next + 1;
    }
    return end;
}

void CodeLines::FindProcedures() {
    bool isOpen = false;
    auto word = workspace::ProcedureWord::Sub;
    for (std::size_t at = NextShown(0); at < lines_.size();) {
        bool mayBeEdge = false;
        const std::size_t next = ReadLogical(at, isOpen, mayBeEdge);
        if (mayBeEdge && isOpen) {
            if (workspace::ClosesProcedure(logical_, word)) {
                procedures_.back().closing = next - 1;
                procedures_.back().end = next;
                isOpen = false;
            }
        } else if (mayBeEdge) {
            if (const auto header = workspace::ParseHeader(logical_)) {
                procedures_.push_back({.header = at, .body = next, .closing = next, .end = next});
                isOpen = !header->closesItself;
                word = header->word;
            }
        }
        at = NextShown(next);
    }
    if (isOpen) {
        procedures_.back().closing = lines_.size();
        procedures_.back().end = lines_.size();
    }
}

}  // namespace lintara::cli

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

bool MayOpen(char first) {
    switch (first | 0x20) {
        case 'p':
        case 'f':
        case 'g':
        case 's':
            return true;
        default:
            return IsForeign(first);
    }
}

// A number and a label may stand in front.
bool MayClose(std::string_view text) {
    std::size_t at = 0;
    const auto skip = [&](auto isSkipped) {
        while (at < text.size() && isSkipped(text[at])) {
            ++at;
        }
    };
    if (IsAsciiDigit(text.front()) || text.front() == ':') {
        skip(IsAsciiDigit);
        skip([](char c) { return c == ':' || IsBlank(c); });
        if (at == text.size()) {
            return false;
        }
        text.remove_prefix(at);
        at = 0;
    }
    if (IsForeign(text.front()) || MayBeEnd(text)) {
        return true;
    }
    if (!text.contains(':')) {
        return false;
    }
    skip([](char c) { return IsAsciiLetter(c) || IsAsciiDigit(c) || c == '_' || IsBlank(c); });
    return at < text.size() && (text[at] == ':' || IsForeign(text[at]));
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

bool CodeLines::IsContinued(std::size_t index) const {
    if (hasByteUnits_ && !textBytes(index).ends_with('_')) {
        return false;
    }
    Text text;
    Read(index, text);
    return workspace::Continues(text);
}

std::size_t CodeLines::NextPossibleEdge(std::size_t index, bool isOpen) const {
    if (!hasByteUnits_) {
        return NextShown(index);
    }
    for (; index < lines_.size(); ++index) {
        const std::string_view text = textBytes(index);
        if (text.ends_with('_')) {
            index = NextShown(index);
            break;
        }
        std::size_t at = 0;
        while (at < text.size() && IsBlank(text[at])) {
            ++at;
        }
        if (at < text.size() && (isOpen ? MayClose(text.substr(at)) : MayOpen(text[at])) &&
            !IsHidden(index)) {
            break;
        }
    }
    return index;
}

std::size_t CodeLines::ReadLogical(std::size_t first, Text& logical) const {
    Read(first, logical);
    std::size_t end = first + 1;
    bool continues = workspace::Continues(logical);
    Text piece;
    for (std::size_t next = NextShown(end); continues && next < lines_.size(); next = NextShown(end)) {
        logical.pop_back();
        Read(next, piece);
        continues = workspace::Continues(piece);
        logical += piece;
        end = next + 1;
    }
    return end;
}

void CodeLines::FindProcedures() {
    bool isOpen = false;
    Text logical;
    for (std::size_t at = NextPossibleEdge(0, isOpen); at < lines_.size();
         at = NextPossibleEdge(at, isOpen)) {
        const std::size_t next = ReadLogical(at, logical);
        if (isOpen) {
            ProcedureLines& procedure = procedures_.back();
            if (workspace::ClosesProcedure(logical, procedure.word)) {
                procedure.closing = next - 1;
                procedure.end = next;
                isOpen = false;
            }
        } else if (const auto header = workspace::ParseHeader(logical)) {
            procedures_.push_back(
                {.header = at, .body = next, .closing = next, .end = next, .word = header->word});
            isOpen = !header->closesItself;
        }
        at = next;
    }
    if (isOpen) {
        procedures_.back().closing = lines_.size();
        procedures_.back().end = lines_.size();
    }
}

Text CodeLines::NameOf(const ProcedureLines& procedure) const {
    Text logical;
    ReadLogical(procedure.header, logical);
    const auto header = workspace::ParseHeader(logical);
    return header ? Text(header->name) : Text();
}

}  // namespace lintara::cli

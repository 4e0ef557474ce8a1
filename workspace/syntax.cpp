#include "workspace/syntax.h"

#include "base/text_scan.h"
#include "workspace/characters.h"

#include <algorithm>
#include <array>

namespace lintara::workspace {

using hostmodel::MemberKind;

namespace {

TextView WordAt(TextView text, std::size_t from) {
    return text.substr(from, SkipWord(text, from) - from);
}

std::size_t SkipDigits(TextView text, std::size_t from) {
    while (from < text.size() && IsDigit(text[from])) {
        ++from;
    }
    return from;
}

TextView TrimBlanks(TextView text) {
    const std::size_t begin = SkipBlanks(text);
    std::size_t end = text.size();
    while (end > begin && IsBlank(text[end - 1])) {
        --end;
    }
    return text.substr(begin, end - begin);
}

// The characters of a logical line outside quotes and before its comment; `visit` gets their offsets and
// stops the walk by returning true. The result is the offset where the walk or the code ended.
template <class Visit>
std::size_t WalkCode(TextView line, Visit visit) {
    bool inQuotes = false;
    bool statementStart = true;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char16_t c = line[i];
        if (c == u'"') {
            inQuotes = !inQuotes;
            statementStart = false;
            continue;
        }
        if (inQuotes) {
            continue;
        }
        if (c == u'\'') {
            return i;
        }
        if (statementStart && (c == u'R' || c == u'r') && IsWord(WordAt(line, i), u"rem")) {
            return i;
        }
        if (visit(i)) {
            return i;
        }
        // A line number leaves what follows it at the start of a statement.
        statementStart = c == u':' || (statementStart && (IsBlank(c) || IsDigit(c)));
    }
    return line.size();
}

bool IsVisibilityWord(TextView word) {
    static constexpr std::array<TextView, 5> words{u"public", u"private", u"friend", u"global", u"static"};
    return std::ranges::any_of(words, [&](TextView w) { return IsWord(word, w); });
}

TextView KindWord(ProcedureWord word) {
    switch (word) {
        case ProcedureWord::Sub:
            return u"sub";
        case ProcedureWord::Function:
            return u"function";
        case ProcedureWord::Property:
            return u"property";
    }
    return {};
}

// Whether "End" and the kind word stand at `from`, followed by nothing, a blank, an apostrophe or a colon.
bool IsClosingStatement(TextView line, std::size_t from, ProcedureWord word) {
    if (from == line.size() || Fold(line[from]) != u'e') {
        return false;
    }
    const std::size_t end = SkipWord(line, from);
    if (!IsWord(line.substr(from, end - from), u"end")) {
        return false;
    }
    const std::size_t kind = SkipBlanks(line, end);
    const std::size_t next = SkipWord(line, kind);
    if (kind == end || !IsWord(line.substr(kind, next - kind), KindWord(word))) {
        return false;
    }
    return next == line.size() || IsBlank(line[next]) || line[next] == u'\'' || line[next] == u':';
}

bool HoldsClosingStatement(TextView line, ProcedureWord word) {
    bool found = false;
    WalkCode(line, [&](std::size_t i) {
        found = line[i] == u':' && IsClosingStatement(line, SkipBlanks(line, i + 1), word);
        return found;
    });
    return found;
}

}  // namespace

bool Continues(TextView physicalLine) {
    const std::size_t length = physicalLine.size();
    return length >= 2 && physicalLine[length - 1] == u'_' && IsBlank(physicalLine[length - 2]);
}

bool IsWord(TextView text, TextView word) {
    return text.size() == word.size() && std::ranges::equal(text, word, {}, Fold);
}

std::size_t SkipBlanks(TextView text, std::size_t from) {
    while (from < text.size() && IsBlank(text[from])) {
        ++from;
    }
    return from;
}

std::size_t SkipWord(TextView text, std::size_t from) {
    while (from < text.size() && IsWordCharacter(text[from])) {
        ++from;
    }
    return from;
}

std::size_t SkipLineNumberAndLabel(TextView line) {
    std::size_t at = SkipBlanks(line);
    const std::size_t afterDigits = SkipDigits(line, at);
    if (afterDigits > at && afterDigits < line.size() &&
        (line[afterDigits] == u':' || IsBlank(line[afterDigits]))) {
        at = SkipBlanks(line, afterDigits + 1);
    }
    if (at < line.size() && IsLetter(line[at])) {
        const std::size_t afterLabel = SkipWord(line, at);
        if (afterLabel < line.size() && line[afterLabel] == u':' &&
            (afterLabel + 1 == line.size() || line[afterLabel + 1] != u'=')) {
            at = SkipBlanks(line, afterLabel + 1);
        }
    }
    return at;
}

std::size_t CommentStart(TextView line) {
    constexpr std::size_t fewCharacters = 16;
    if (line.size() < fewCharacters) {
        return WalkCode(line, [](std::size_t) { return false; });
    }
    // Nearly no line holds what it takes a closer look for.
    const std::size_t apostrophe = std::min(FindCharacter(line, u'\''), line.size());
    const TextView ahead = line.substr(0, apostrophe);
    const bool mayBeQuoted = apostrophe < line.size() && FindCharacter(ahead, u'"') != TextView::npos;
    if (!mayBeQuoted && FindWithoutCase(ahead, u"rem") == TextView::npos) {
        return apostrophe;
    }
    return WalkCode(line, [](std::size_t) { return false; });
}

bool IsBlankOrComment(TextView line) {
    const std::size_t at = SkipBlanks(line);
    return at == line.size() || line[at] == u'\'' || IsWord(WordAt(line, at), u"rem");
}

std::vector<TextView> SplitStatements(TextView line) {
    std::vector<TextView> statements;
    std::size_t begin = 0;
    const auto take = [&](std::size_t end) {
        if (const TextView statement = TrimBlanks(line.substr(begin, end - begin)); !statement.empty()) {
            statements.push_back(statement);
        }
    };
    const std::size_t codeEnd = WalkCode(line, [&](std::size_t i) {
        if (line[i] == u':' && (i + 1 == line.size() || line[i + 1] != u'=')) {
            take(i);
            begin = i + 1;
        }
        return false;
    });
    take(codeEnd);
    return statements;
}

std::optional<ProcedureHeader> ParseHeader(TextView logicalLine) {
    std::size_t at = SkipBlanks(logicalLine);
    TextView word = WordAt(logicalLine, at);
    while (IsVisibilityWord(word)) {
        at = SkipBlanks(logicalLine, at + word.size());
        word = WordAt(logicalLine, at);
    }
    ProcedureHeader header;
    if (IsWord(word, u"sub")) {
        header.word = ProcedureWord::Sub;
    } else if (IsWord(word, u"function")) {
        header.word = ProcedureWord::Function;
    } else if (IsWord(word, u"property")) {
        header.word = ProcedureWord::Property;
        at = SkipBlanks(logicalLine, at + word.size());
        word = WordAt(logicalLine, at);
        if (IsWord(word, u"get")) {
            header.kind = MemberKind::vbext_pk_Get;
        } else if (IsWord(word, u"let")) {
            header.kind = MemberKind::vbext_pk_Let;
        } else if (IsWord(word, u"set")) {
            header.kind = MemberKind::vbext_pk_Set;
        } else {
            return std::nullopt;
        }
    } else {
        return std::nullopt;
    }
    at = SkipBlanks(logicalLine, at + word.size());
    if (at == logicalLine.size() || !IsLetter(logicalLine[at])) {
        return std::nullopt;
    }
    header.name = WordAt(logicalLine, at);
    header.closesItself = HoldsClosingStatement(logicalLine, header.word);
    return header;
}

bool ClosesProcedure(TextView logicalLine, ProcedureWord word) {
    const std::size_t first = SkipBlanks(logicalLine);
    if (IsClosingStatement(logicalLine, first, word)) {
        return true;
    }
    const bool mayBeginWithNumber = first < logicalLine.size() && IsDigit(logicalLine[first]);
    if (!mayBeginWithNumber && FindCharacter(logicalLine, u':', first) == TextView::npos) {
        return false;
    }
    const std::size_t at = SkipLineNumberAndLabel(logicalLine);
    return at != first && IsClosingStatement(logicalLine, at, word);
}

}  // namespace lintara::workspace

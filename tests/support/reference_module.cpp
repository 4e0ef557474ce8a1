#include "tests/support/reference_module.h"

#include "workspace/characters.h"

#include <algorithm>
#include <set>

namespace lintara::support {
namespace {

using hostmodel::MemberKind;
using hostmodel::MemberType;
using workspace::IsBlank;
using workspace::IsDigit;
using workspace::IsLetter;
using workspace::IsWordCharacter;
using workspace::MemberInfo;
using workspace::ProcedureInfo;
using workspace::SameName;

constexpr TextView Break = u"\r\n";

// A cursor over a line that takes what it is asked for, or nothing.
struct Cursor {
    TextView rest;

    bool Blanks() {
        const std::size_t before = rest.size();
        while (!rest.empty() && IsBlank(rest.front())) {
            rest.remove_prefix(1);
        }
        return rest.size() < before;
    }
    Text Word() {
        Text word;
        while (!rest.empty() && IsWordCharacter(rest.front())) {
            word += rest.front();
            rest.remove_prefix(1);
        }
        return word;
    }
    bool Word(TextView word) {
        Cursor ahead = *this;
        if (!SameName(ahead.Word(), word)) {
            return false;
        }
        *this = ahead;
        return true;
    }
    bool Character(char16_t c) {
        if (rest.empty() || rest.front() != c) {
            return false;
        }
        rest.remove_prefix(1);
        return true;
    }
    bool Number() {
        Cursor ahead = *this;
        bool any = false;
        while (!ahead.rest.empty() && IsDigit(ahead.rest.front())) {
            ahead.rest.remove_prefix(1);
            any = true;
        }
        if (!any || !(ahead.Character(u':') || ahead.Blanks())) {
            return false;
        }
        ahead.Blanks();
        *this = ahead;
        return true;
    }
    bool Label() {
        Cursor ahead = *this;
        const bool letter = !rest.empty() && IsLetter(rest.front());
        if (!letter || ahead.Word().empty() || !ahead.Character(u':') || ahead.rest.starts_with(u'=')) {
            return false;
        }
        ahead.Blanks();
        *this = ahead;
        return true;
    }
};

bool IsContinued(TextView line) {
    return line.ends_with(u" _") || line.ends_with(u"\t_");
}

// What takes the place of characters that are no code.
constexpr char16_t QuotedMark = u'\x1';
constexpr char16_t CommentMark = u'\x2';

// The line with what stands in quotes and comments marked, its length kept.
Text Blotted(TextView line) {
    Text code(line);
    bool quoted = false;
    bool atStart = true;  // of a statement
    for (std::size_t i = 0; i < code.size(); ++i) {
        const bool isRem = atStart && !quoted && SameName(Cursor{line.substr(i)}.Word(), u"rem");
        if (!quoted && (code[i] == u'\'' || isRem)) {
            std::fill(code.begin() + static_cast<std::ptrdiff_t>(i), code.end(), CommentMark);
            break;
        }
        if (code[i] == u'"') {
            quoted = !quoted;
            code[i] = QuotedMark;
            atStart = false;
        } else if (quoted) {
            code[i] = QuotedMark;
        } else {
            atStart = code[i] == u':' || (atStart && (IsBlank(code[i]) || IsDigit(code[i])));
        }
    }
    return code;
}

bool IsClosing(TextView text, TextView word) {
    Cursor cursor{text};
    if (!cursor.Word(u"End") || !cursor.Blanks() || !cursor.Word(word)) {
        return false;
    }
    const TextView rest = cursor.rest;
    return rest.empty() || IsBlank(rest[0]) || rest[0] == u'\'' || rest[0] == u':';
}

bool Closes(TextView line, TextView word) {
    Cursor cursor{line};
    cursor.Blanks();
    if (IsClosing(cursor.rest, word)) {
        return true;
    }
    cursor.Number();
    if (IsClosing(cursor.rest, word)) {
        return true;
    }
    cursor.Label();
    return IsClosing(cursor.rest, word);
}

struct Header {
    Text name;
    MemberKind kind = MemberKind::vbext_pk_Proc;
    TextView word;
};

std::optional<Header> HeaderIn(TextView line) {
    Cursor cursor{line};
    cursor.Blanks();
    while (cursor.Word(u"Public") || cursor.Word(u"Private") || cursor.Word(u"Friend") ||
           cursor.Word(u"Global") || cursor.Word(u"Static")) {
        cursor.Blanks();
    }
    Header header;
    if (cursor.Word(u"Sub")) {
        header.word = u"Sub";
    } else if (cursor.Word(u"Function")) {
        header.word = u"Function";
    } else if (cursor.Word(u"Property")) {
        header.word = u"Property";
        cursor.Blanks();
        if (cursor.Word(u"Get")) {
            header.kind = MemberKind::vbext_pk_Get;
        } else if (cursor.Word(u"Let")) {
            header.kind = MemberKind::vbext_pk_Let;
        } else if (cursor.Word(u"Set")) {
            header.kind = MemberKind::vbext_pk_Set;
        } else {
            return std::nullopt;
        }
    } else {
        return std::nullopt;
    }
    cursor.Blanks();
    header.name = cursor.Word();
    if (header.name.empty() || !IsLetter(header.name.front())) {
        return std::nullopt;
    }
    return header;
}

bool ClosesItself(TextView line, TextView word) {
    const Text code = Blotted(line);
    for (std::size_t colon = code.find(u':'); colon != Text::npos; colon = code.find(u':', colon + 1)) {
        Cursor cursor{line.substr(colon + 1)};
        cursor.Blanks();
        if (IsClosing(cursor.rest, word)) {
            return true;
        }
    }
    return false;
}

bool IsBlankOrComment(TextView line) {
    Cursor cursor{line};
    cursor.Blanks();
    return cursor.rest.empty() || cursor.rest.front() == u'\'' || cursor.Word(u"rem");
}

// Where the separators of `code` stand, outside parentheses if `flat`; its end comes last.
std::vector<std::size_t> Separators(TextView code, char16_t separator, bool flat) {
    std::vector<std::size_t> places;
    int depth = 0;
    for (std::size_t i = 0; i < code.size(); ++i) {
        depth += code[i] == u'(' ? 1 : code[i] == u')' ? -1 : 0;
        const bool assigns = separator == u':' && i + 1 < code.size() && code[i + 1] == u'=';
        if (code[i] == separator && !assigns && (!flat || depth <= 0)) {
            places.push_back(i);
        }
    }
    places.push_back(code.size());
    return places;
}

// Reads the declarations, statement by statement.
struct DeclarationReader {
    std::vector<MemberInfo> members;
    Text block;  // the word of the block that is open

    void Read(TextView statement, Line line) {
        Cursor cursor{statement};
        if (!block.empty()) {
            if (cursor.Word(u"End") && cursor.Blanks() && cursor.Word(block)) {
                block.clear();
            }
            return;
        }
        const bool scoped = cursor.Word(u"Public") || cursor.Word(u"Private") || cursor.Word(u"Global");
        cursor.Blanks();
        for (const TextView word : {TextView(u"Type"), TextView(u"Enum")}) {
            Cursor ahead = cursor;
            if (ahead.Word(word)) {
                ahead.Blanks();
                const Text name = ahead.Word();
                if (!name.empty() && !SameName(name, u"As")) {
                    block = word;
                    return;
                }
            }
        }
        if (cursor.Word(u"Declare")) {
            cursor.Blanks();
            if (cursor.Word(u"PtrSafe")) {
                cursor.Blanks();
            }
            if (cursor.Word(u"Sub") || cursor.Word(u"Function")) {
                Names(cursor.rest, MemberType::Method, line, true);
            }
        } else if (cursor.Word(u"Event")) {
            Names(cursor.rest, MemberType::Event, line, true);
        } else if (cursor.Word(u"Const")) {
            Names(cursor.rest, MemberType::Constant, line, false);
        } else if (scoped || cursor.Word(u"Dim") || cursor.Word(u"Static")) {
            Names(cursor.rest, MemberType::Variable, line, false);
        }
    }

    void Names(TextView list, MemberType type, Line line, bool one) {
        const Text code = Blotted(list);
        std::size_t begin = 0;
        for (const std::size_t end : Separators(code, u',', true)) {
            Cursor cursor{list.substr(begin, end - begin)};
            cursor.Blanks();
            if (type == MemberType::Variable || type == MemberType::Constant) {
                if (cursor.Word(u"WithEvents")) {
                    cursor.Blanks();
                }
            }
            const Text name = cursor.Word();
            if (!name.empty() && IsLetter(name.front())) {
                members.push_back({name, type, line});
            }
            begin = end + 1;
            if (one) {
                return;
            }
        }
    }
};

}  // namespace

std::vector<Text> SplitAtBreaks(TextView text) {
    std::vector<Text> parts;
    while (true) {
        const std::size_t end = text.find(Break);
        parts.emplace_back(text.substr(0, end));
        if (end == TextView::npos) {
            return parts;
        }
        text.remove_prefix(end + Break.size());
    }
}

std::vector<ReferenceModule::LogicalLine> ReferenceModule::LogicalLines() const {
    std::vector<LogicalLine> logical;
    for (std::int32_t line = 1; line <= CountOfLines(); ++line) {
        LogicalLine& added = logical.emplace_back();
        added.first = line;
        added.text = lines[static_cast<std::size_t>(line) - 1];
        while (IsContinued(lines[static_cast<std::size_t>(line) - 1]) && line < CountOfLines()) {
            added.text.pop_back();
            added.begins.push_back(added.text.size());
            added.text += lines[static_cast<std::size_t>(line)];
            ++line;
        }
        added.last = line;
    }
    return logical;
}

std::int32_t ReferenceModule::FirstHeader() const {
    for (const LogicalLine& line : LogicalLines()) {
        if (HeaderIn(line.text)) {
            return line.first;
        }
    }
    return CountOfLines() + 1;
}

std::int32_t ReferenceModule::CountOfDeclarationLines() const {
    const std::int32_t header = FirstHeader();
    if (header > CountOfLines()) {
        return CountOfLines();
    }
    std::int32_t count = 0;
    for (const LogicalLine& line : LogicalLines()) {
        if (line.first < header && !IsBlankOrComment(line.text)) {
            count = line.last;
        }
    }
    return count;
}

std::vector<ProcedureInfo> ReferenceModule::Procedures() const {
    std::vector<ProcedureInfo> procedures;
    std::optional<Header> open;
    for (const LogicalLine& line : LogicalLines()) {
        if (open) {
            if (Closes(line.text, open->word)) {
                procedures.back().closing = Line{line.last};
                procedures.back().closed = true;
                open.reset();
            }
            continue;
        }
        const auto header = HeaderIn(line.text);
        if (!header) {
            continue;
        }
        ProcedureInfo procedure;
        procedure.number = procedures.size();
        procedure.name = header->name;
        procedure.kind = header->kind;
        procedure.isFunction = header->word == u"Function";
        procedure.header = Line{line.first};
        procedure.bodyBegin = Line{line.last + 1};
        procedure.closed = ClosesItself(line.text, header->word);
        procedure.closing = Line{procedure.closed ? line.last : CountOfLines()};
        procedure.start =
            procedures.empty() ? Line{CountOfDeclarationLines() + 1} : procedures.back().closing + 1;
        open = procedure.closed ? std::nullopt : header;
        procedures.push_back(procedure);
    }
    return procedures;
}

std::int32_t ReferenceModule::CountLinesOf(const std::vector<ProcedureInfo>& procedures,
                                           std::size_t i) const {
    const Line last = i + 1 == procedures.size() ? Line{CountOfLines()} : procedures[i].closing;
    return last - procedures[i].start + 1;
}

std::vector<MemberInfo> ReferenceModule::Members() const {
    DeclarationReader reader;
    const std::int32_t header = FirstHeader();
    for (const LogicalLine& line : LogicalLines()) {
        Cursor cursor{line.text};
        cursor.Blanks();
        if (line.first >= header || cursor.rest.starts_with(u'#')) {
            continue;
        }
        const Text code = Blotted(line.text);
        std::size_t begin = 0;
        for (const std::size_t end : Separators(code, u':', false)) {
            while (begin < end && IsBlank(code[begin])) {
                ++begin;
            }
            const std::size_t comment = std::max(begin, std::min(end, code.find(CommentMark)));
            const auto number = std::ranges::count_if(line.begins, [&](std::size_t b) { return b <= begin; });
            const TextView statement = TextView(line.text).substr(begin, comment - begin);
            reader.Read(statement, Line{line.first + static_cast<std::int32_t>(number)});
            begin = end + 1;
        }
    }
    std::set<Text> properties;
    for (const ProcedureInfo& procedure : Procedures()) {
        const bool isMethod = procedure.kind == MemberKind::vbext_pk_Proc;
        if (isMethod || properties.insert(workspace::FoldCase(procedure.name)).second) {
            reader.members.push_back(
                {procedure.name, isMethod ? MemberType::Method : MemberType::Property, procedure.header});
        }
    }
    return reader.members;
}

bool ReferenceModule::InsertLines(std::int32_t line, TextView text) {
    if (line < 1 || line > CountOfLines() + 1) {
        return false;
    }
    const std::vector<Text> added = SplitAtBreaks(text);
    lines.insert(lines.begin() + (line - 1), added.begin(), added.end());
    return true;
}

bool ReferenceModule::DeleteLines(std::int32_t line, std::int32_t count) {
    if (line < 1 || count < 0 || line - 1 > CountOfLines() - count) {
        return false;
    }
    lines.erase(lines.begin() + (line - 1), lines.begin() + (line - 1 + count));
    return true;
}

bool ReferenceModule::ReplaceLine(std::int32_t line, TextView text) {
    return line <= CountOfLines() && DeleteLines(line, 1) && InsertLines(line, text);
}

namespace {

// The lines of a module joined by line breaks, with what stands at each offset.
struct Joined {
    Text text;
    std::vector<Position> positions;  // of every offset, the end included
    std::vector<bool> isBreak;

    explicit Joined(const std::vector<Text>& lines) {
        Line line{1};
        for (const Text& content : lines) {
            if (line > Line{1}) {
                text += Break;
            }
            text += content;
            const std::size_t size = content.size() + (line.value() == std::ssize(lines) ? 1 : 2);
            for (std::size_t i = 0; i < size; ++i) {
                positions.push_back({line, Column{static_cast<std::int32_t>(i) + 1}});
                isBreak.push_back(i >= content.size());
            }
            ++line;
        }
    }
};

// The end of the longest match of a pattern, the first "*" as long as can be, then the second.
class PatternMatcher {
  public:
    template <class MayEnd>
    static std::optional<std::size_t> Match(const Joined& joined, TextView pattern, std::size_t begin,
                                            MayEnd mayEnd) {
        std::set<std::pair<std::size_t, std::size_t>> failed;
        return MatchFrom(joined, pattern, 0, begin, mayEnd, failed);
    }

  private:
    template <class MayEnd>
    static std::optional<std::size_t> MatchFrom(const Joined& joined, TextView pattern, std::size_t item,
                                                std::size_t at, MayEnd mayEnd,
                                                std::set<std::pair<std::size_t, std::size_t>>& failed) {
        if (item == pattern.size()) {
            return mayEnd(at) ? std::optional(at) : std::nullopt;
        }
        if (failed.contains({item, at})) {
            return std::nullopt;
        }
        if (pattern[item] == u'*') {
            std::size_t end = at;
            while (end < joined.text.size() && !joined.isBreak[end]) {
                ++end;
            }
            for (std::size_t run = end + 1; run-- > at;) {
                if (const auto found = MatchFrom(joined, pattern, item + 1, run, mayEnd, failed)) {
                    return found;
                }
            }
        } else if (at < joined.text.size() &&
                   (pattern[item] == u'?' ? !joined.isBreak[at] : joined.text[at] == pattern[item])) {
            if (const auto found = MatchFrom(joined, pattern, item + 1, at + 1, mayEnd, failed)) {
                return found;
            }
        }
        failed.insert({item, at});
        return std::nullopt;
    }
};

}  // namespace

std::optional<std::pair<Position, Position>> ReferenceModule::Find(TextView target, Position start,
                                                                   Position end,
                                                                   hostmodel::FindOptions options) const {
    if (target.empty() || lines.empty()) {
        return std::nullopt;
    }
    start = {std::max(start.line, Line{1}), std::max(start.column, Column{1})};
    std::optional<Position> limit;
    if (end.line != Line{-1}) {
        if (end.column == Column{-1}) {
            const bool exists = end.line.value() >= 1 && end.line.value() <= CountOfLines();
            end.column = Column{exists ? static_cast<std::int32_t>(
                                             lines[static_cast<std::size_t>(end.line.value()) - 1].size()) +
                                             1
                                       : 1};
        }
        if (end > start) {
            limit = end;
        }
    }
    Joined joined(lines);
    Text sought(target);
    if (!options.matchCase) {
        joined.text = workspace::FoldCase(joined.text);
        sought = workspace::FoldCase(sought);
    }
    const auto mayEnd = [&](std::size_t at) {
        const bool wordFollows =
            at < joined.text.size() && !joined.isBreak[at] && IsWordCharacter(joined.text[at]);
        return !(options.wholeWord && wordFollows) && (!limit || joined.positions[at] <= *limit);
    };
    for (std::size_t at = 0; at < joined.text.size(); ++at) {
        const bool wordBefore = at > 0 && !joined.isBreak[at - 1] && IsWordCharacter(joined.text[at - 1]);
        if (joined.positions[at] < start || (options.wholeWord && wordBefore)) {
            continue;
        }
        std::optional<std::size_t> found;
        if (options.patternSearch) {
            found = PatternMatcher::Match(joined, sought, at,
                                          [&](std::size_t last) { return last > at && mayEnd(last); });
        } else if (joined.text.compare(at, sought.size(), sought) == 0 && mayEnd(at + sought.size())) {
            found = at + sought.size();
        }
        if (found) {
            return std::pair(joined.positions[at], joined.positions[*found]);
        }
    }
    return std::nullopt;
}

}  // namespace lintara::support

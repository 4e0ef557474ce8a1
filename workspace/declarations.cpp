#include "workspace/declarations.h"

#include "workspace/characters.h"
#include "workspace/logical_line.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::workspace {

using hostmodel::MemberType;

namespace {

// Walks the words of one statement.
class Words {
  public:
    explicit Words(TextView statement) : rest_(statement) { rest_.remove_prefix(SkipBlanks(rest_)); }

    [[nodiscard]] TextView rest() const { return rest_; }
    [[nodiscard]] TextView Peek() const { return rest_.substr(0, SkipWord(rest_, 0)); }

    TextView Take() {
        const TextView word = Peek();
        rest_.remove_prefix(SkipBlanks(rest_, word.size()));
        return word;
    }

    // Takes the next word when it is one of `words`.
    template <std::size_t count>
    bool TakeAny(const std::array<TextView, count>& words) {
        const bool matches = std::ranges::any_of(words, [&](TextView w) { return IsWord(Peek(), w); });
        if (matches) {
            Take();
        }
        return matches;
    }
    bool TakeWord(TextView word) { return TakeAny(std::array{word}); }

  private:
    TextView rest_;
};

// The offset of the first comma outside quotes and parentheses; the length of `text` when there is none.
std::size_t NextComma(TextView text) {
    int depth = 0;
    bool inQuotes = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'"') {
            inQuotes = !inQuotes;
        } else if (!inQuotes) {
            depth += c == u'(' ? 1 : 0;
            depth -= c == u')' ? 1 : 0;
            if (c == u',' && depth <= 0) {
                return i;
            }
        }
    }
    return text.size();
}

class DeclarationReader {
  public:
    void ReadStatement(TextView statement, Line line) {
        line_ = line;
        Words words(statement);
        if (inBlock_) {
            inBlock_ = !(words.TakeWord(u"end") && IsWord(words.Peek(), blockWord_));
            return;
        }
        static constexpr std::array<TextView, 3> scopes{u"public", u"private", u"global"};
        const bool scoped = words.TakeAny(scopes);
        if (words.TakeWord(u"declare")) {
            ReadDeclare(words);
        } else if (words.TakeWord(u"event")) {
            Add(words.Take(), MemberType::Event);
        } else if (words.TakeWord(u"const")) {
            ReadNames(words.rest(), MemberType::Constant);
        } else if (IsBlock(words, u"type") || IsBlock(words, u"enum")) {
            inBlock_ = true;
        } else if (scoped || words.TakeAny(std::array<TextView, 2>{u"dim", u"static"})) {
            ReadNames(words.rest(), MemberType::Variable);
        }
    }

    [[nodiscard]] std::vector<MemberInfo> TakeMembers() { return std::move(members_); }

  private:
    // "Type Point" opens a block; in "Public Type As Long" the word is a variable's name.
    bool IsBlock(Words words, TextView word) {
        if (!words.TakeWord(word) || words.Peek().empty() || IsWord(words.Peek(), u"as")) {
            return false;
        }
        blockWord_ = word;
        return true;
    }

    void ReadDeclare(Words& words) {
        words.TakeWord(u"ptrsafe");
        if (words.TakeAny(std::array<TextView, 2>{u"sub", u"function"})) {
            Add(words.Take(), MemberType::Method);
        }
    }

    void ReadNames(TextView list, MemberType type) {
        while (!list.empty()) {
            const std::size_t comma = NextComma(list);
            Words words(list.substr(0, comma));
            words.TakeWord(u"withevents");
            Add(words.Peek(), type);
            list.remove_prefix(std::min(comma + 1, list.size()));
        }
    }

    void Add(TextView name, MemberType type) {
        if (!name.empty() && IsLetter(name.front())) {
            members_.push_back({Text(name), type, line_});
        }
    }

    std::vector<MemberInfo> members_;
    Line line_{1};
    bool inBlock_ = false;
    TextView blockWord_;
};

}  // namespace

Declarations ReadDeclarations(const LineBuffer& lines, Line firstHeader) {
    Declarations declarations;
    DeclarationReader reader;
    LogicalLineReader logicalLines(lines);
    for (Line line{1}; line < firstHeader;) {
        line = logicalLines.Read(line);
        const TextView text = logicalLines.text();
        if (IsBlankOrComment(text)) {
            continue;
        }
        declarations.countOfLines = line.value() - 1;
        if (text[SkipBlanks(text)] == u'#') {
            continue;  // a directive
        }
        for (const TextView statement : SplitStatements(text)) {
            const auto offset = static_cast<std::size_t>(statement.data() - text.data());
            reader.ReadStatement(statement, logicalLines.LineOf(offset));
        }
    }
    declarations.members = reader.TakeMembers();
    return declarations;
}

}  // namespace lintara::workspace

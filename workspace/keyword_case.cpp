#include "workspace/keyword_case.h"

#include "base/text_scan.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>
#include <span>

namespace lintara::workspace {

namespace {

// Sorted without regard to case.
constexpr std::array keywords{
    TextView(u"AddressOf"),  TextView(u"And"),        TextView(u"Any"),      TextView(u"As"),
    TextView(u"Boolean"),    TextView(u"ByRef"),      TextView(u"Byte"),     TextView(u"ByVal"),
    TextView(u"Call"),       TextView(u"Case"),       TextView(u"CBool"),    TextView(u"CByte"),
    TextView(u"CCur"),       TextView(u"CDate"),      TextView(u"CDbl"),     TextView(u"CDec"),
    TextView(u"CInt"),       TextView(u"CLng"),       TextView(u"Close"),    TextView(u"Const"),
    TextView(u"CSng"),       TextView(u"CStr"),       TextView(u"Currency"), TextView(u"CVar"),
    TextView(u"CVErr"),      TextView(u"Date"),       TextView(u"Debug"),    TextView(u"Declare"),
    TextView(u"Dim"),        TextView(u"Do"),         TextView(u"Double"),   TextView(u"Each"),
    TextView(u"Else"),       TextView(u"ElseIf"),     TextView(u"Empty"),    TextView(u"End"),
    TextView(u"Enum"),       TextView(u"Eqv"),        TextView(u"Erase"),    TextView(u"Erl"),
    TextView(u"Err"),        TextView(u"Error"),      TextView(u"Event"),    TextView(u"Exit"),
    TextView(u"Explicit"),   TextView(u"False"),      TextView(u"For"),      TextView(u"Friend"),
    TextView(u"Function"),   TextView(u"Get"),        TextView(u"Global"),   TextView(u"GoSub"),
    TextView(u"GoTo"),       TextView(u"If"),         TextView(u"Imp"),      TextView(u"Implements"),
    TextView(u"In"),         TextView(u"Input"),      TextView(u"Integer"),  TextView(u"Is"),
    TextView(u"LBound"),     TextView(u"Let"),        TextView(u"Lib"),      TextView(u"Like"),
    TextView(u"Long"),       TextView(u"Loop"),       TextView(u"LSet"),     TextView(u"Me"),
    TextView(u"Mod"),        TextView(u"New"),        TextView(u"Next"),     TextView(u"Not"),
    TextView(u"Nothing"),    TextView(u"Null"),       TextView(u"Object"),   TextView(u"On"),
    TextView(u"Open"),       TextView(u"Option"),     TextView(u"Optional"), TextView(u"Or"),
    TextView(u"ParamArray"), TextView(u"Preserve"),   TextView(u"Print"),    TextView(u"Private"),
    TextView(u"Property"),   TextView(u"Public"),     TextView(u"Put"),      TextView(u"RaiseEvent"),
    TextView(u"ReDim"),      TextView(u"Resume"),     TextView(u"Return"),   TextView(u"RSet"),
    TextView(u"Seek"),       TextView(u"Select"),     TextView(u"Set"),      TextView(u"Single"),
    TextView(u"Static"),     TextView(u"Step"),       TextView(u"Stop"),     TextView(u"String"),
    TextView(u"Sub"),        TextView(u"Then"),       TextView(u"To"),       TextView(u"True"),
    TextView(u"Type"),       TextView(u"TypeOf"),     TextView(u"UBound"),   TextView(u"Unlock"),
    TextView(u"Until"),      TextView(u"Variant"),    TextView(u"Wend"),     TextView(u"While"),
    TextView(u"With"),       TextView(u"WithEvents"), TextView(u"Write"),    TextView(u"Xor"),
};

constexpr std::size_t letters = 26;

// For each letter the first keyword that begins with it or a later one.
constexpr auto keywordsFrom = [] {
    std::array<std::size_t, letters + 1> from{};
    for (const TextView keyword : keywords) {
        ++from[static_cast<std::size_t>((keyword.front() | 0x20) - u'a') + 1];
    }
    for (std::size_t letter = 0; letter < letters; ++letter) {
        from[letter + 1] += from[letter];
    }
    return from;
}();

// Writes the keyword that `word` is over it, if it is one.
void SetCase(std::span<char16_t> word) {
    const TextView text(word.data(), word.size());
    const std::size_t letter = Fold(text.front()) - std::size_t{u'a'};
    if (letter >= letters) {
        return;
    }
    for (std::size_t i = keywordsFrom[letter]; i < keywordsFrom[letter + 1]; ++i) {
        if (keywords[i].size() == text.size() && SameName(keywords[i], text)) {
            std::ranges::copy(keywords[i], word.begin());
            return;
        }
    }
}

bool InsideWord(TextView text, std::size_t at) {
    return at > 0 && at < text.size() && IsWordCharacter(text[at - 1]) && IsWordCharacter(text[at]);
}

// Sets the case in one physical line, which is looked at by itself; `part` is of that line.
void SetCaseInLine(std::span<char16_t> line, TextPart part) {
    const TextView text(line.data(), line.size());
    // What comes behind the part does not matter, unless it belongs to the part's last word.
    const std::size_t codeEnd = std::min(CommentStart(text.substr(0, SkipWord(text, part.end))), part.end);
    bool inQuotes = false;
    for (std::size_t i = SkipLineNumberAndLabel(text); i < codeEnd;) {
        const std::size_t wordEnd = inQuotes ? i : SkipWord(text, i);
        if (wordEnd == i) {
            inQuotes ^= text[i] == u'"';
            ++i;
            continue;
        }
        const bool isMember = i > 0 && (text[i - 1] == u'.' || text[i - 1] == u'!');
        if (i >= part.begin && !isMember) {
            SetCase(line.subspan(i, wordEnd - i));
        }
        i = wordEnd;
    }
}

}  // namespace

TextPart ChangedPart(TextView oldText, TextView newText) {
    const std::size_t begin = CommonBeginning(oldText, newText);
    const std::size_t ending = CommonEnding(oldText.substr(begin), newText.substr(begin));
    TextPart part{begin, newText.size() - ending};
    while (InsideWord(newText, part.begin)) {
        --part.begin;
    }
    while (InsideWord(newText, part.end)) {
        ++part.end;
    }
    return part;
}

void SetKeywordCase(Text& text, TextPart part) {
    constexpr TextView lineBreak = u"\r\n";
    for (std::size_t begin = 0; begin < part.end;) {
        const std::size_t end = std::min(FindExactly(text, lineBreak, begin), text.size());
        if (part.begin < end) {
            SetCaseInLine(std::span(text).subspan(begin, end - begin),
                          {std::max(part.begin, begin) - begin, std::min(part.end, end) - begin});
        }
        begin = end + lineBreak.size();
    }
}

}  // namespace lintara::workspace

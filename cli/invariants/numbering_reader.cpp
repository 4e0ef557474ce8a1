#include "cli/invariants/numbering_reader.h"

#include "workspace/characters.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>

namespace lintara::cli {
namespace {

// From this distance on no line gets a number.
constexpr std::int64_t distanceLimit = 55535;
// What numbers of a module's lines begin behind.
constexpr std::int64_t moduleBase = 10000;
// No number stands below a line that begins so, in this letter case.
constexpr std::string_view selectCase = "Select Case ";

template <class View>
View WithoutBlanks(View text) {
    return text.substr(std::min(text.find_first_not_of(' '), text.size()));
}

// Whether the text begins with the word, given in lower case, or with more letters behind it.
template <class View>
bool BeginsLike(View text, std::string_view word) {
    return text.size() >= word.size() &&
           std::ranges::equal(text.substr(0, word.size()), word,
                              [](auto c, char wanted) { return c == wanted || (c | 0x20) == wanted; });
}

template <class View>
bool BeginsWithWord(View text, std::string_view word) {
    if (!BeginsLike(text, word)) {
        return false;
    }
    // Bytes beyond ASCII may be letters.
    return text.size() == word.size() ||
           !(static_cast<char16_t>(text[word.size()]) >= 0x80 ||
             workspace::IsWordCharacter(static_cast<char16_t>(text[word.size()])));
}

template <class View>
bool IsDirective(View text) {
    text = WithoutBlanks(text);
    if (text.empty() || text.front() != '#') {
        return false;
    }
    static constexpr std::array<std::string_view, 6> words{"if", "elseif", "else", "end", "endif", "const"};
    text = WithoutBlanks(text.substr(1));
    return std::ranges::any_of(words, [&](std::string_view word) { return BeginsWithWord(text, word); });
}

// Whether the line may be a directive or a Case, behind a label or not.
template <class View>
bool MayLackNumber(View text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return false;
    }
    const bool mayHaveLabel = text.find(':') != View::npos || (text.front() >= '0' && text.front() <= '9');
    const bool mayGoOn = text.back() == '_' && (mayHaveLabel || text.size() == 1);
    if (text.front() == '#' || mayGoOn || BeginsLike(text, "case")) {
        return true;
    }
    for (std::size_t at = 1; mayHaveLabel && at < text.size(); ++at) {
        if (BeginsLike(text.substr(at), "case")) {
            return true;
        }
    }
    return false;
}

// Whether a label is in front, by the first colon or blank.
template <class View>
bool HasLabel(View text) {
    for (const auto c : text) {
        if (c == ' ' || c == ':') {
            return c == ':';
        }
    }
    return false;
}

template <class View>
std::int64_t NumberAt(View column) {
    std::int64_t number = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        number = number * 10 + (column[i] - '0');
    }
    return number;
}

}  // namespace

template <class View>
NumberingReader::Form NumberingReader::FormOf(View line, const Walk& walk) {
    if (walk.isBeyond || line.find_first_not_of(' ') == View::npos) {
        return Form::Kept;
    }
    if (walk.isContinued || walk.isBelowSelect) {
        return IsBlankColumn(line) ? Form::Shifted : Form::Wrong;
    }
    if (IsNumberColumn(line) && NumberAt(line) == walk.number) {
        const View text = line.substr(numberWidth);
        const bool isWrong = HasLabel(text) || IsDirective(text) || WithoutBlanks(text).empty() ||
                             (walk.awaitsCase && BeginsWithWord(WithoutBlanks(text), "case"));
        return isWrong ? Form::Wrong : Form::Numbered;
    }
    if (HasLabel(line)) {
        return IsNumberColumn(line) ? Form::Wrong : Form::Kept;
    }
    return IsBlankColumn(line) && MayLackNumber(line) ? Form::Shifted : Form::Wrong;
}

// `text` is the line without what numbering put in front of it.
template <class View>
void NumberingReader::Pass(View text, bool endsInUnderscore, Walk& walk) {
    text = WithoutBlanks(text);
    if (text.empty()) {
        return;
    }
    if (!walk.isContinued) {
        const bool isSelect = (text.front() | 0x20) == 's' && BeginsLike(text, "select case ");
        walk.isBelowSelect =
            isSelect && std::ranges::equal(text.substr(0, selectCase.size()), selectCase, std::equal_to<>());
        if (isSelect) {
            walk.awaitsCase = !endsInUnderscore && text.find(':') == View::npos;
        } else if (text.front() != '\'' || endsInUnderscore) {
            walk.awaitsCase = false;
        }
    }
    walk.isContinued = endsInUnderscore;
}

NumberingReader::Form NumberingReader::ReadLine(std::size_t line, Walk& walk) {
    const std::string_view bytes = after_.textBytes(line);
    // A byte in front of the underscore may make it a part of a character.
    const bool isAscii =
        after_.hasByteUnits() && !(bytes.ends_with('_') && bytes.size() > 1 &&
                                   static_cast<unsigned char>(bytes[bytes.size() - 2]) >= 0x80);
    const auto read = [&](auto text) {
        walk.isBeyond = walk.isBeyond || (walk.distance >= distanceLimit &&
                                          text.find_first_not_of(' ') != decltype(text)::npos);
        const Form form = FormOf(text, walk);
        if (form == Form::Numbered || form == Form::Shifted) {
            text.remove_prefix(numberWidth);
        }
        Pass(text, text.ends_with('_'), walk);
        return form;
    };
    Form form = Form::Kept;
    if (isAscii) {
        form = read(bytes);
    } else {
        after_.Read(line, text_);
        form = read(TextView(text_));
    }
    walk.Next();
    return form;
}

NumberingReader::Reading NumberingReader::Read(std::size_t begin, std::size_t end) {
    Reading reading;
    begin_ = begin;
    widths_.assign(end - begin, 0);
    Walk walk = WalkFrom(begin, end);
    for (std::size_t i = after_.NextShown(begin); i < end; i = after_.NextShown(i + 1)) {
        const Form form = ReadLine(i, walk);
        reading.any = reading.any || form == Form::Numbered;
        if (form == Form::Wrong && !reading.breach) {
            reading.breach = i;
        }
        widths_[i - begin] = form == Form::Numbered || form == Form::Shifted ? numberWidth : 0;
    }
    return reading;
}

bool NumberingReader::GivesNone(std::size_t begin, std::size_t end) {
    Walk walk;
    Text text;
    for (std::size_t i = after_.NextShown(begin); i < end; i = after_.NextShown(i + 1)) {
        after_.Read(i, text);
        const TextView line = text;
        const bool isBlank = line.find_first_not_of(u' ') == TextView::npos;
        if (!isBlank && !walk.isContinued && !walk.isBelowSelect && !HasLabel(line) && !MayLackNumber(line)) {
            return false;
        }
        Pass(line, line.ends_with(u'_'), walk);
    }
    return true;
}

NumberingReader::Walk NumberingReader::WalkFrom(std::size_t begin, std::size_t end) {
    Walk walk;
    walk.step = rules_.byModule ? 1 : rules_.step;
    walk.number = rules_.byModule ? ModuleBase(begin, end) : rules_.base;
    return walk;
}

void NumberingReader::CountShownLines() {
    std::int64_t shown = 0;
    std::size_t line = 0;
    for (const ProcedureLines& procedure : after_.procedures()) {
        for (; line < procedure.body; ++line) {
            shown += after_.IsHidden(line) ? 0 : 1;
        }
        bodies_.push_back(shown + 1);
    }
}

std::int64_t NumberingReader::ModuleBase(std::size_t begin, std::size_t end) {
    if (bodies_.empty()) {
        CountShownLines();
    }
    const auto& procedures = after_.procedures();
    const auto self = std::ranges::lower_bound(procedures, begin, {}, &ProcedureLines::body);
    const std::int64_t own = moduleBase + bodies_[static_cast<std::size_t>(self - procedures.begin())];
    std::int64_t distance = 0;
    for (std::size_t i = after_.NextShown(begin); i < end; i = after_.NextShown(i + 1), ++distance) {
        after_.Read(i, text_);
        if (!IsNumberColumn(TextView(text_))) {
            continue;
        }
        const std::int64_t base = NumberAt(TextView(text_)) - distance;
        const auto other = std::ranges::lower_bound(bodies_, base - moduleBase);
        if (base == own || other == bodies_.end() || *other != base - moduleBase) {
            return own;
        }
        const ProcedureLines& peer = procedures[static_cast<std::size_t>(other - bodies_.begin())];
        return workspace::SameName(after_.NameOf(peer), after_.NameOf(*self)) ? base : own;
    }
    return own;
}

}  // namespace lintara::cli

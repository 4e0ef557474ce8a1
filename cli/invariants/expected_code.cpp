#include "cli/invariants/expected_code.h"

#include "base/constants.h"
#include "base/text_scan.h"
#include "workspace/characters.h"
#include "workspace/keyword_case.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lintara::cli {
namespace {

// Stands for any text. No text holds this character.
constexpr char16_t anything = u'\uFFFF';
constexpr TextView anyText(&anything, 1);

// In the order in which insertion fills them in.
constexpr std::array componentPlaceholders{constants::ProjectNamePlaceholder,
                                           constants::ComponentNamePlaceholder};
constexpr std::array laterPlaceholders{constants::MemberNamePlaceholder,   constants::ControlNamePlaceholder,
                                       constants::ComputerNamePlaceholder, constants::UserNamePlaceholder,
                                       constants::DatePlaceholder,         constants::TimePlaceholder,
                                       constants::MemberTypePlaceholder};

bool HasNestedBraces(TextView code) {
    bool isOpen = false;
    for (const char16_t c : code) {
        if (c == u'{' && isOpen) {
            return true;
        }
        isOpen = c == u'{' || (isOpen && c != u'}');
    }
    return false;
}

void Split(TextView text, std::vector<TextView>& lines) {
    lines.clear();
    for (std::size_t at = 0; at != TextView::npos;) {
        const std::size_t end = FindExactly(text, constants::LineBreak, at);
        lines.push_back(text.substr(at, end - at));
        at = end == TextView::npos ? end : end + constants::LineBreak.size();
    }
}

// A value that is missing leaves the placeholder as it is.
void FillIn(Text& code, TextView placeholder, TextView value) {
    if (value.empty()) {
        return;
    }
    for (std::size_t at = FindExactly(code, placeholder); at != Text::npos;
         at = FindExactly(code, placeholder, at + value.size())) {
        code.replace(at, placeholder.size(), value);
    }
}

// What the pieces between open places are, in any letter case.
bool FitsOpen(TextView line, TextView expected) {
    const auto begins = [](TextView text, TextView beginning) {
        return text.size() >= beginning.size() &&
               workspace::SameName(text.substr(0, beginning.size()), beginning);
    };
    std::size_t open = expected.find(anything);
    if (!begins(line, expected.substr(0, open))) {
        return false;
    }
    line.remove_prefix(open);
    for (expected.remove_prefix(open + 1); (open = expected.find(anything)) != TextView::npos;
         expected.remove_prefix(open + 1)) {
        const std::size_t found = workspace::FindWithoutCase(line, expected.substr(0, open));
        if (found == TextView::npos) {
            return false;
        }
        line.remove_prefix(found + open);
    }
    return line.size() >= expected.size() &&
           workspace::SameName(line.substr(line.size() - expected.size()), expected);
}

}  // namespace

ExpectedCode::ExpectedCode(TextView code, const CodeNames& names) : code_(code) {
    FillIn(code_, constants::ProjectNamePlaceholder, names.project);
    FillIn(code_, constants::ComponentNamePlaceholder, names.component);
    // A placeholder may come to be when another one inside it is filled in.
    const bool areNested = HasNestedBraces(code_);
    for (const TextView placeholder : laterPlaceholders) {
        if (areNested || FindExactly(code_, placeholder) != Text::npos) {
            placeholders_.push_back(placeholder);
        }
    }
    asksForControl_ =
        std::ranges::find(placeholders_, constants::ControlNamePlaceholder) != placeholders_.end();
}

std::span<const TextView> ExpectedCode::LinesFor(TextView member, workspace::ProcedureWord word,
                                                 bool isControl) {
    expanded_ = code_;
    for (const TextView placeholder : placeholders_) {
        if (placeholder == constants::MemberNamePlaceholder) {
            FillIn(expanded_, placeholder, member);
        } else if (placeholder == constants::MemberTypePlaceholder) {
            FillIn(expanded_, placeholder, WordOf(word));
        } else if (placeholder != constants::ControlNamePlaceholder) {
            FillIn(expanded_, placeholder, anyText);
        } else if (const std::size_t end = member.rfind(u'_'); isControl && end != TextView::npos) {
            FillIn(expanded_, placeholder, member.substr(0, end));
        }
    }
    Split(expanded_, lines_);
    return lines_;
}

std::vector<Text> OpenLinesOf(TextView code) {
    Text open(code);
    for (const TextView placeholder : componentPlaceholders) {
        FillIn(open, placeholder, anyText);
    }
    for (const TextView placeholder : laterPlaceholders) {
        FillIn(open, placeholder, anyText);
    }
    std::vector<TextView> lines;
    Split(open, lines);
    return {lines.begin(), lines.end()};
}

TextView WordOf(workspace::ProcedureWord word) {
    switch (word) {
        case workspace::ProcedureWord::Sub:
            return constants::SubWord;
        case workspace::ProcedureWord::Function:
            return constants::FunctionWord;
        case workspace::ProcedureWord::Property:
            break;
    }
    return constants::PropertyWord;
}

bool IsAsExpected(TextView line, TextView expected) {
    if (line.size() == expected.size() &&
        std::memcmp(line.data(), expected.data(), line.size() * sizeof(char16_t)) == 0) {
        return true;
    }
    if (expected.contains(anything)) {
        return FitsOpen(line, expected);
    }
    if (line.size() != expected.size()) {
        return false;
    }
    Text recased(expected);
    workspace::SetKeywordCase(recased, {0, recased.size()});
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != expected[i] && line[i] != recased[i]) {
            return false;
        }
    }
    return true;
}

}  // namespace lintara::cli

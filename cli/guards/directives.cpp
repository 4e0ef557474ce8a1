#include "cli/guards/directives.h"

#include "base/text_scan.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::cli {
namespace {

struct Word {
    TextView word;
    Directive directive;
};

constexpr std::array Words{Word{u"if", Directive::If},       Word{u"elseif", Directive::ElseIf},
                           Word{u"else", Directive::Else},   Word{u"end", Directive::EndIf},
                           Word{u"endif", Directive::EndIf}, Word{u"const", Directive::Const}};

}  // namespace

Directive DirectiveOf(TextView line) {
    const std::size_t sign = workspace::SkipBlanks(line);
    if (sign == line.size() || line[sign] != u'#') {
        return Directive::None;
    }
    const std::size_t begin = workspace::SkipBlanks(line, sign + 1);
    const TextView word = line.substr(begin, workspace::SkipWord(line, begin) - begin);
    const auto found =
        std::ranges::find_if(Words, [&](const Word& known) { return workspace::IsWord(word, known.word); });
    return found == Words.end() ? Directive::None : found->directive;
}

std::string_view NameOf(Directive directive) {
    switch (directive) {
        case Directive::If:
            return "#If";
        case Directive::ElseIf:
            return "#ElseIf";
        case Directive::Else:
            return "#Else";
        case Directive::EndIf:
            return "#End If";
        case Directive::Const:
            return "#Const";
        case Directive::None:
            break;
    }
    return "";
}

void DirectiveBalance::Pass(std::size_t index, TextView line) {
    if (FindCharacter(line, u'#') == TextView::npos) {
        return;
    }
    const Directive directive = DirectiveOf(line.substr(workspace::SkipLineNumberAndLabel(line)));
    if (directive == Directive::If) {
        open_.push_back(index);
    } else if (directive == Directive::None || directive == Directive::Const) {
        return;
    } else if (open_.empty()) {
        stray_ = stray_.value_or(UnbalancedDirective{index, directive});
    } else if (directive == Directive::EndIf) {
        open_.pop_back();
    }
}

std::optional<UnbalancedDirective> DirectiveBalance::unbalanced() const {
    if (!stray_ && !open_.empty()) {
        return UnbalancedDirective{open_.front(), Directive::If};
    }
    return stray_;
}

std::optional<UnbalancedDirective> FindUnbalancedDirective(std::span<const Text> lines) {
    DirectiveBalance balance;
    bool continued = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!continued) {
            balance.Pass(i, lines[i]);
        }
        continued = workspace::Continues(lines[i]);
    }
    return balance.unbalanced();
}

}  // namespace lintara::cli

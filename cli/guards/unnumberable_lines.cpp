#include "cli/guards/unnumberable_lines.h"

#include "cli/guards/directives.h"
#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

using workspace::IsWord;
using workspace::SkipBlanks;
using workspace::SkipWord;

TextView WordAt(TextView text, std::size_t from) {
    return text.substr(from, SkipWord(text, from) - from);
}

bool IsCase(TextView statement) {
    return IsWord(WordAt(statement, 0), u"case");
}

bool IsSelectCase(TextView statement) {
    const TextView select = WordAt(statement, 0);
    return IsWord(select, u"select") && IsCase(statement.substr(SkipBlanks(statement, select.size())));
}

// Whether the line may change what SelectWatch knows while no Case is awaited: nearly no line does.
bool MayHoldSelect(TextView line) {
    return workspace::FindWithoutCase(line, u"select") != TextView::npos;
}

// Follows, line by line, whether the next Case is the first one of its Select Case. Each branch of an #If
// goes on from where the #If stands.
class SelectWatch {
  public:
    [[nodiscard]] bool awaitsCase() const { return awaitsCase_; }

    void PassDirective(Directive directive) {
        if (directive == Directive::If) {
            outside_.push_back({.awaitedBefore = awaitsCase_});
        } else if (directive != Directive::Const && !outside_.empty()) {
            Branches& branches = outside_.back();
            branches.anyAwaits |= awaitsCase_;
            branches.hasElse |= directive == Directive::Else;
            awaitsCase_ = branches.awaitedBefore;
            if (directive == Directive::EndIf) {
                awaitsCase_ = branches.anyAwaits || (branches.awaitedBefore && !branches.hasElse);
                outside_.pop_back();
            }
        }
    }

    // True when the line begins with the first Case, behind its number and label.
    bool PassCode(TextView line) {
        if (!awaitsCase_ && !MayHoldSelect(line)) {
            return false;
        }
        bool isFirstCase = false;
        const std::vector<TextView> statements =
            workspace::SplitStatements(line.substr(workspace::SkipLineNumberAndLabel(line)));
        for (std::size_t i = 0; i < statements.size(); ++i) {
            isFirstCase |= i == 0 && awaitsCase_ && IsCase(statements[i]);
            awaitsCase_ = IsSelectCase(statements[i]);
        }
        return isFirstCase;
    }

  private:
    struct Branches {
        bool awaitedBefore = false;
        bool anyAwaits = false;  // at the end of a branch that was passed
        bool hasElse = false;
    };

    bool awaitsCase_ = false;
    std::vector<Branches> outside_;
};

}  // namespace

void FindUnnumberableLines(std::span<const Text> lines, std::vector<std::size_t>& indexes) {
    indexes.clear();
    SelectWatch watch;
    LogicalLines logical(lines);
    while (logical.Next()) {
        const TextView line = logical.text();
        if (const Directive directive = DirectiveOf(line); directive != Directive::None) {
            indexes.push_back(logical.first());
            watch.PassDirective(directive);
        } else if (watch.PassCode(line)) {
            indexes.push_back(logical.first());
        }
    }
}

}  // namespace lintara::cli

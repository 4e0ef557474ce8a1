#include "cli/guards/jump_reader.h"

#include "workspace/characters.h"
#include "workspace/syntax.h"

namespace lintara::cli {
namespace {

// What may follow a word: a number to jump to, a label or number, or a list of them.
enum class Expects { Nothing, Number, Target, Targets };

Expects ExpectsAfter(TextView word, TextView previousWord) {
    using workspace::IsWord;
    if (IsWord(word, u"goto") || IsWord(word, u"gosub")) {
        return Expects::Targets;
    }
    if (IsWord(previousWord, u"go") && (IsWord(word, u"to") || IsWord(word, u"sub"))) {
        return Expects::Targets;
    }
    if (IsWord(word, u"resume")) {
        return Expects::Target;
    }
    return IsWord(word, u"then") || IsWord(word, u"else") ? Expects::Number : Expects::Nothing;
}

class JumpReader {
  public:
    explicit JumpReader(TextView code) : code_(code) {}

    std::vector<TextView> Read() {
        TextView previous;
        while (at_ < code_.size()) {
            if (code_[at_] == u'"') {
                SkipQuotes();
                continue;
            }
            const TextView word = WordAt(at_);
            if (word.empty()) {
                ++at_;
                continue;
            }
            const bool isMember = at_ > 0 && (code_[at_ - 1] == u'.' || code_[at_ - 1] == u'!');
            at_ += word.size();
            if (!isMember) {
                ReadTargets(ExpectsAfter(word, previous));
            }
            previous = word;
        }
        return std::move(targets_);
    }

  private:
    [[nodiscard]] TextView WordAt(std::size_t at) const {
        return code_.substr(at, workspace::SkipWord(code_, at) - at);
    }

    void SkipQuotes() {
        const std::size_t end = code_.find(u'"', at_ + 1);
        at_ = end == TextView::npos ? code_.size() : end + 1;
    }

    // What follows a statement that takes one target is read again: it may begin the next statement.
    void ReadTargets(Expects expects) {
        while (expects != Expects::Nothing) {
            const std::size_t begin = workspace::SkipBlanks(code_, at_);
            const TextView word = WordAt(begin);
            const bool fits =
                expects != Expects::Number || (!word.empty() && workspace::IsDigit(word.front()));
            if (!word.empty() && fits) {
                targets_.push_back(word);
            }
            const std::size_t comma = workspace::SkipBlanks(code_, begin + word.size());
            if (expects != Expects::Targets || comma == code_.size() || code_[comma] != u',') {
                return;
            }
            at_ = comma + 1;
        }
    }

    TextView code_;
    std::size_t at_ = 0;
    std::vector<TextView> targets_;
};

}  // namespace

std::vector<TextView> JumpTargetsIn(TextView code) {
    return JumpReader(code).Read();
}

}  // namespace lintara::cli

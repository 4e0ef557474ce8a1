#include "transform/search_and_replace.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/replacement_guard.h"
#include "transform/walks.h"

#include <cstdint>

namespace lintara::transform {
namespace {

using hostmodel::CodeModule;

std::int32_t CountBreaks(TextView text) {
    std::int32_t breaks = 0;
    for (auto at = text.find(constants::LineBreak); at != TextView::npos;
         at = text.find(constants::LineBreak, at + constants::LineBreak.size())) {
        ++breaks;
    }
    return breaks;
}

// `line` with `replacement` in place of what stands from column `begin` up to column `end`.
Result<Text> Replaced(TextView line, Column begin, Column end, TextView replacement) {
    const auto head =
        Then(CheckedSubtract(begin.value(), 1), [&](std::int32_t length) { return Left(line, length); });
    const auto tail = Then(CheckedSubtract(Len(line) + 1, end.value()),
                           [&](std::int32_t length) { return Right(line, length); });
    return Then(head, [&](TextView kept) {
        return Then(
            tail, [&](TextView rest) -> Result<Text> { return Text(kept).append(replacement).append(rest); });
    });
}

// Writes matches anew. The two lines keep their texts from match to match: where the host gives no line, or
// positions that make no sense, the earlier text stands in.
class Writer {
  public:
    Writer(TextView replacement, bool goThroughDelete)
        : replacement_(replacement), goThroughDelete_(goThroughDelete) {}

    void Replace(CodeModule& module, Line line, Column begin, Column end, ReplacementGuard& guard) {
        Assign(oldLine_, module.Lines(line, 1));
        Assign(newLine_, Replaced(oldLine_, begin, end, replacement_));
        if (Write(module, line)) {
            guard.LineRewritten(line, oldLine_, addedLines_);
        }
    }

  private:
    bool Write(CodeModule& module, Line line) {
        if (!goThroughDelete_) {
            return module.ReplaceLine(line, newLine_).has_value();
        }
        const bool deleted = module.DeleteLines(line, 1).has_value();
        const bool inserted = module.InsertLines(line, newLine_).has_value();
        return deleted && inserted;
    }

    TextView replacement_;
    bool goThroughDelete_;
    std::int32_t addedLines_ = CountBreaks(replacement_);
    Text oldLine_;
    Text newLine_;
};

}  // namespace

bool SearchAndReplace(hostmodel::Globals& globals, TextView componentName, TextView sought,
                      TextView replacement, Line startLine, Line endLine, ReplaceOptions options) {
    if (startLine > endLine) {
        return false;
    }
    const Result<VBComponentPtr> component = ComponentInActiveProject(globals, componentName);
    if (!component) {
        return false;
    }
    bool foundAny = false;
    Position start{startLine, Column{0}};
    Position end;
    CodeModulePtr module;
    Writer writer(replacement, options.goThroughDelete);
    ReplacementGuard guard;
    do {
        guard.PassBegins(start);
        // The earlier pass's module serves again when the host does not give it anew. A search that fails
        // has found nothing.
        Assign(module, (*component)->CodeModule());
        bool found = false;
        if (module != nullptr) {
            Assign(found, module->Find(sought, start, end, {.wholeWord = options.wholeWord}));
        }
        if (!found) {
            break;
        }
        foundAny = true;
        if (end.line <= endLine && start.line == end.line) {
            writer.Replace(*module, start.line, start.column, end.column, guard);
        }
        start.column = end.column;
    } while (guard.MayPassAgain(start) && (endLine < Line{1} || start.line <= endLine));
    return foundAny;
}

}  // namespace lintara::transform

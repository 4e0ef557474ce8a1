#include "transform/search_and_replace.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/line_breaks.h"
#include "transform/replacement_guard.h"
#include "transform/walks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace lintara::transform {
namespace {

using hostmodel::CodeModule;

// Whether the module has that place.
bool Has(CodeModule& module, Position place) {
    const Result<Text> line = module.Lines(place.line, 1);
    return line && place.column.value() <= Len(*line) + 1;
}

// Writes matches anew. The two lines keep their texts from match to match: where the host gives no line, or
// positions that make no sense, the earlier text stands in.
class Writer {
  public:
    Writer(TextView replacement, bool goThroughDelete)
        : replacement_(replacement), goThroughDelete_(goThroughDelete) {}

    void Replace(CodeModule& module, Line line, Column begin, Column end, ReplacementGuard& guard) {
        const bool given = Assign(oldLine_, module.Lines(line, 1));
        const bool matches = BuildNewLine(begin, end);
        // What stands in for a line that is not known may be longer and have more matches.
        const std::size_t length =
            given && matches ? oldLine_.size() : std::max(oldLine_.size(), newLine_.size());
        if (const auto addedLines = Write(module, line)) {
            guard.LineRewritten(line, length, *addedLines);
        }
    }

  private:
    // The old line with the replacement in place of what stands from column `begin` up to column `end`.
    // False, with nothing changed, when the line has no such columns.
    bool BuildNewLine(Column begin, Column end) {
        const auto head = Then(CheckedSubtract(begin.value(), 1),
                               [&](std::int32_t length) { return Left(oldLine_, length); });
        const auto tail = Then(CheckedSubtract(Len(oldLine_) + 1, end.value()),
                               [&](std::int32_t length) { return Right(oldLine_, length); });
        if (!head || !tail) {
            return false;
        }
        newLine_.assign(*head).append(replacement_).append(*tail);
        return true;
    }

    // How many lines the module has more; nullopt when the new line was not written.
    [[nodiscard]] std::optional<std::int32_t> Write(CodeModule& module, Line line) {
        bool deleted = true;
        bool written = false;
        if (goThroughDelete_) {
            deleted = module.DeleteLines(line, 1).has_value();
            written = module.InsertLines(line, newLine_).has_value();
        } else {
            written = module.ReplaceLine(line, newLine_).has_value();
        }
        return written ? std::optional(breaks_ + (deleted ? 0 : 1)) : std::nullopt;
    }

    TextView replacement_;
    bool goThroughDelete_;
    std::int32_t breaks_ = LineBreaksIn(replacement_).count;
    Text oldLine_;
    Text newLine_;
};

}  // namespace

void SearchAndReplace(hostmodel::Globals& globals, TextView componentName, TextView sought,
                      TextView replacement, Line startLine, Line endLine, ReplaceOptions options,
                      bool& foundAny) {
    foundAny = false;
    if (startLine > endLine) {
        return;
    }
    const Result<VBComponentPtr> component = ComponentInActiveProject(globals, componentName);
    if (!component) {
        return;
    }
    Position start{startLine, Column{0}};
    Position end;
    CodeModulePtr module;
    Writer writer(replacement, options.goThroughDelete);
    ReplacementGuard guard(endLine);
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
        if (guard.DoubtsHost() && !Has(*module, start)) {
            break;
        }
        if (end.line <= endLine && start.line == end.line) {
            writer.Replace(*module, start.line, start.column, end.column, guard);
        }
        start.column = end.column;
    } while (guard.MayPassAgain(start) && (endLine < Line{1} || start.line <= endLine));
}

}  // namespace lintara::transform

#include "transform/markers.h"

#include "base/statement.h"

namespace lintara::transform {

std::optional<Line> FindMarker(const Result<CodeModulePtr>& codeModule, TextView marker, Line start,
                               Line end) {
    Position from{start, Column{0}};
    Position to{end, Column{0}};
    bool found = false;
    Assign(found, Then(codeModule, [&](const CodeModulePtr& module) {
               return module->Find(marker, from, to,
                                   {.wholeWord = false, .matchCase = false, .patternSearch = false});
           }));
    return found ? std::optional(from.line) : std::nullopt;
}

}  // namespace lintara::transform

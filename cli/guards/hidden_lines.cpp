#include "cli/guards/hidden_lines.h"

namespace lintara::cli {

bool HoldsHiddenLines(const workspace::Module& module, LineRange lines) {
    const Line first = module.OriginOf(lines.begin);
    const Line end = module.OriginOf(lines.end);
    return module.OriginalFileLine(end) - module.OriginalFileLine(first) != end - first;
}

}  // namespace lintara::cli

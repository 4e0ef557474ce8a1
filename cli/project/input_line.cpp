#include "cli/project/input_line.h"

#include <algorithm>

namespace lintara::cli {

Line InputLine(const workspace::Module& module, Line line) {
    const Line last(module.CountOfLines());
    line = std::min(line, last);
    if (line < Line(1)) {
        return Line(1);
    }
    for (Line below = line; below <= last; ++below) {
        if (const Line origin = module.OriginOf(below); origin > Line(0)) {
            return origin;
        }
    }
    for (Line above = line; above > Line(1); --above) {
        if (const Line origin = module.OriginOf(above - 1); origin > Line(0)) {
            return origin;
        }
    }
    return Line(1);
}

std::string InputPlace(const workspace::Module& module, Line line) {
    const Line input = InputLine(module, line);
    return "line " + std::to_string(input.value()) + " (line " +
           std::to_string(module.OriginalFileLine(input)) + " of the file)";
}

}  // namespace lintara::cli

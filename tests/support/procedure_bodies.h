// The bodies of a procedure's, or a property's, procedures as the transformers see them, and what lies
// outside of them: for tests of what an operation leaves alone.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "tests/support/code_fixture.h"
#include "transform/procedure_ranges.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <utility>
#include <vector>

namespace lintara::support {

// From the first line to the line behind the last one, from above.
using Bodies = std::vector<std::pair<Line, Line>>;

[[nodiscard]] inline std::set<Text> ProcedureNames(const workspace::Module& module) {
    std::set<Text> names;
    for (const workspace::ProcedureInfo& procedure : module.Procedures()) {
        names.insert(procedure.name);
    }
    return names;
}

// None when they overlap or lie upside down.
[[nodiscard]] inline Bodies BodiesOf(CodeFixture& code, TextView procedure, bool mayBeEmpty = false) {
    const transform::ProcedureRanges ranges =
        transform::GetProcedureRanges(*code.globals(), ProjectName, ModuleName, procedure);
    Bodies bodies;
    for (const auto& body : {std::pair(ranges.Start1, ranges.End1), std::pair(ranges.Start2, ranges.End2),
                             std::pair(ranges.Start3, ranges.End3)}) {
        if (body.first > Line{0}) {
            bodies.push_back(body);
        }
    }
    std::ranges::sort(bodies);
    Line last{0};
    for (const auto& [start, end] : bodies) {
        // A body without lines is searched as far as the module goes.
        if (start <= last || end < start || (end == start && !mayBeEmpty) ||
            end.value() > code.module().CountOfLines()) {
            return {};
        }
        last = end;
    }
    return bodies;
}

// The lines that lie outside the bodies; a body is one line that says so.
[[nodiscard]] inline std::vector<Text> Outside(const std::vector<Text>& lines, const Bodies& bodies) {
    std::vector<Text> outside;
    Line next{1};
    const auto take = [&](Line end) {
        for (; next < end; ++next) {
            outside.push_back(lines.at(static_cast<std::size_t>(next.value()) - 1));
        }
    };
    for (const auto& [start, end] : bodies) {
        take(start);
        outside.emplace_back(u"(body)");
        next = end;
    }
    take(Line{static_cast<std::int32_t>(lines.size()) + 1});
    return outside;
}

}  // namespace lintara::support

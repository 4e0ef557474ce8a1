#include "cli/guards/range_guard.h"

#include "cli/guards/code_text.h"
#include "cli/project/input_line.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

bool BeginsBefore(const LineRange& a, const LineRange& b) {
    return std::pair(a.begin, a.end) < std::pair(b.begin, b.end);
}

std::vector<LineRange> BodiesOf(const ProcedureGroup& group) {
    std::vector<LineRange> bodies;
    for (const workspace::ProcedureInfo& procedure : group.reached) {
        if (procedure.body().count() > 0) {
            bodies.push_back(procedure.body());
        }
    }
    std::ranges::sort(bodies, BeginsBefore);
    return bodies;
}

std::string Describe(const LineRange& range, const workspace::Module& module) {
    const std::string first = std::to_string(InputLine(module, range.begin).value());
    const std::string last = std::to_string(InputLine(module, range.end - 1).value());
    return first == last ? "line " + first : "lines " + first + " to " + last;
}

std::string Describe(const std::vector<LineRange>& ranges, const workspace::Module& module) {
    if (ranges.empty()) {
        return "no lines";
    }
    std::string text;
    for (std::size_t i = 0; i < ranges.size(); ++i) {
        text += i == 0 ? "" : i + 1 == ranges.size() ? " and " : ", ";
        text += Describe(ranges[i], module);
    }
    return text;
}

// The first line that belongs to only one of the two.
Line FirstDifference(const std::vector<LineRange>& a, const std::vector<LineRange>& b) {
    const auto [inA, inB] = std::ranges::mismatch(a, b);
    if (inA == a.end()) {
        return inB->begin;
    }
    if (inB == b.end()) {
        return inA->begin;
    }
    return inA->begin == inB->begin ? std::min(inA->end, inB->end) : std::min(inA->begin, inB->begin);
}

// The library takes the kind of a procedure from what stands ahead of the first occurrence of its name: in
// "Sub S()" there is nothing.
bool HasEarlierName(const workspace::ProcedureInfo& procedure, const workspace::Module& module) {
    Text header;
    module.ReadLine(procedure.header, header);
    const auto parsed = workspace::ParseHeader(header);
    return parsed &&
           FindText(header, parsed->name) < static_cast<std::size_t>(parsed->name.data() - header.data());
}

// A range without lines that the library visits outside of the procedures: what it inserts would go there.
std::optional<Line> FindStrayRange(const transform::ProcedureRanges& ranges, const ProcedureGroup& group) {
    for (const auto& [start, end] :
         {std::pair(ranges.Start1, ranges.End1), std::pair(ranges.Start2, ranges.End2),
          std::pair(ranges.Start3, ranges.End3)}) {
        const auto holds = [at = start](const workspace::ProcedureInfo& procedure) {
            return procedure.header <= at && at <= procedure.closing + 1;
        };
        if (ranges.Found && start > Line(0) && end <= start && std::ranges::none_of(group.reached, holds)) {
            return start;
        }
    }
    return std::nullopt;
}

bool Unclosed(const workspace::ProcedureInfo& procedure) {
    return !procedure.closed;
}

}  // namespace

std::vector<LineRange> RangesToVisit(const transform::ProcedureRanges& ranges) {
    std::vector<LineRange> visited;
    const auto take = [&](Line start, Line end) {
        if (start > Line(0) && end > start) {
            visited.push_back({start, end});
        }
    };
    if (ranges.Found) {
        take(ranges.Start1, ranges.End1);
        take(ranges.Start2, ranges.End2);
        take(ranges.Start3, ranges.End3);
    }
    std::ranges::sort(visited, BeginsBefore);
    return visited;
}

std::optional<RangeMismatch> CompareRanges(const transform::ProcedureRanges& ranges,
                                           const ProcedureGroup& group, const workspace::Module& module) {
    const std::vector<LineRange> visited = RangesToVisit(ranges);
    const std::vector<LineRange> bodies = BodiesOf(group);
    const Line last(module.CountOfLines());
    if (visited == bodies) {
        const auto stray = FindStrayRange(ranges, group);
        if (!stray) {
            return std::nullopt;
        }
        const Line line = std::clamp(*stray, Line(1), std::max(last, Line(1)));
        return RangeMismatch{line, "text that looks like another procedure of its name, above " +
                                       InputPlace(module, line) + ", would be edited, too"};
    }
    RangeMismatch mismatch{std::clamp(FirstDifference(visited, bodies), Line(1), std::max(last, Line(1))),
                           {}};
    if (const auto open = std::ranges::find_if(group.reached, Unclosed); open != group.reached.end()) {
        mismatch.line = open->header;
        mismatch.message = "it is never closed";
        return mismatch;
    }
    const auto hidden = std::ranges::find_if(group.reached, [&](const workspace::ProcedureInfo& procedure) {
        return HasEarlierName(procedure, module);
    });
    if (hidden != group.reached.end()) {
        mismatch.line = hidden->header;
        mismatch.message = "its name occurs earlier in its header, at " + InputPlace(module, hidden->header) +
                           ", so what follows the name is not found; rename it";
        return mismatch;
    }
    mismatch.message = "its code is " + Describe(bodies, module) + ", but " + Describe(visited, module) +
                       " would be edited; they differ at " + InputPlace(module, mismatch.line);
    return mismatch;
}

}  // namespace lintara::cli

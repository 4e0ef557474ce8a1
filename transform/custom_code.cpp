#include "transform/custom_code.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/markers.h"
#include "transform/range_walk.h"
#include "transform/walks.h"

#include <optional>

namespace lintara::transform {
namespace {

using hostmodel::CodeModule;

Text MarkerOf(TextView marker, std::int16_t id) {
    Text line(marker);
    line.append(u" ");
    AppendDecimal(line, id);
    return line;
}

// Whether the procedure was found, with its header below the declarations.
bool MayBeEdited(const ProcedureRanges& ranges, CodeModule& codeModule) {
    std::int32_t declarationLines = 0;
    Assign(declarationLines, codeModule.CountOfDeclarationLines());
    const auto header = CheckedSubtract(ranges.Start1.value(), 1);
    return ranges.Found && header && *header > declarationLines;
}

// Calls `treat` with the code module and each range of the procedure, if it may be edited.
template <class Treat>
void TreatEachBody(hostmodel::Globals& globals, const ProcedurePath& path, Treat treat) {
    const ProcedureRanges ranges = RangesOf(globals, path);
    const Result<CodeModulePtr> reached = CodeModuleByNames(globals, path.projectName, path.componentName);
    if (!reached || !MayBeEdited(ranges, **reached)) {
        return;
    }
    TreatEachRange(globals, path, ranges, [&](Line start, Line end) { treat(*reached, start, end); });
}

// The line at which the block goes into the body; none when nothing is to be inserted. A line outside the 32
// bits leaves line 0, where the host takes nothing.
std::optional<Line> TargetLine(const CustomCode& block, Line start, Line end) {
    switch (block.place) {
        case CodePlace::AfterFirstLine:
            return start;
        case CodePlace::BeforeLastLine:
            return end;
        case CodePlace::AtLine:
            break;
        default:
            return std::nullopt;
    }
    if (Line{block.line} > end) {
        return std::nullopt;
    }
    std::int32_t target = 0;
    Assign(target, Then(CheckedSubtract(start.value(), 1),
                        [&](std::int32_t above) { return CheckedAdd(above, block.line); }));
    return Line{target};
}

// Each line goes to the same place and pushes those before it down: the last one first.
void InsertBlock(CodeModule& codeModule, const TemplateSources& sources, const ProcedurePath& path,
                 const CustomCode& block, Line target) {
    if (!block.noDelimiters) {
        Attempt(codeModule.InsertLines(target, MarkerOf(constants::CustomCodeEnd, block.id)));
    }
    Attempt(codeModule.InsertLines(
        target, ParsePseudoCodeEx(sources, block.code, path.componentName, path.procedureName)));
    if (!block.noDelimiters) {
        Attempt(codeModule.InsertLines(target, MarkerOf(constants::CustomCodeBegin, block.id)));
    }
}

void RemoveBlock(const CodeModulePtr& codeModule, std::int16_t id, Line start, Line end) {
    const auto begin = FindMarker(codeModule, MarkerOf(constants::CustomCodeBegin, id), start, end);
    const auto last = FindMarker(codeModule, MarkerOf(constants::CustomCodeEnd, id), start, end);
    if (!begin || !last || *begin >= *last) {
        return;
    }
    const auto between = CheckedSubtract(last->value(), begin->value());
    const auto count = Then(between, [](std::int32_t lines) { return CheckedAdd(lines, 1); });
    Attempt(Then(count, [&](std::int32_t lines) { return codeModule->DeleteLines(*begin, lines); }));
}

}  // namespace

void CustomCodeInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                        TextView procedureName, const CustomCode& block) {
    const ProcedurePath path{projectName, componentName, procedureName};
    TreatEachBody(sources.globals, path, [&](const CodeModulePtr& codeModule, Line start, Line end) {
        if (const auto target = TargetLine(block, start, end)) {
            InsertBlock(*codeModule, sources, path, block, *target);
        }
    });
}

void CustomCodeRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                       TextView procedureName, std::int16_t id) {
    const ProcedurePath path{projectName, componentName, procedureName};
    TreatEachBody(globals, path, [&](const CodeModulePtr& codeModule, Line start, Line end) {
        RemoveBlock(codeModule, id, start, end);
    });
}

}  // namespace lintara::transform

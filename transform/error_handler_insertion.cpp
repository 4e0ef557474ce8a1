#include "transform/error_handler_insertion.h"

#include "base/constants.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/error_handler_statements.h"
#include "transform/line_text.h"
#include "transform/markers.h"
#include "transform/member_queries.h"
#include "transform/range_walk.h"
#include "transform/walks.h"

namespace lintara::transform {
namespace {

// What goes into each body of one procedure.
struct Handler {
    const TemplateSources& sources;
    TextView componentName;
    TextView procedureName;
    TextView label;
    TextView code;
};

void Insert(const Result<CodeModulePtr>& codeModule, Line line, TextView text) {
    Attempt(Then(codeModule, [&](const CodeModulePtr& module) { return module->InsertLines(line, text); }));
}

Text Block(const Handler& handler) {
    const TextView kindWord =
        GetMemberTypeEx(handler.sources.globals, handler.componentName, handler.procedureName);
    Text block(constants::ErrorHandlerBegin);
    block.append(constants::LineBreak).append(u"Exit ").append(kindWord);
    block.append(constants::LineBreak).append(handler.label).append(u":").append(constants::LineBreak);
    return block.append(
        ParsePseudoCodeEx(handler.sources, handler.code, handler.componentName, handler.procedureName));
}

// Whether the line, as the IDE has written it, is the statement that leads to the label.
bool LeadsToLabel(TextView line, TextView label) {
    Assign(line, StripComment(line));
    return Trim(StripLineLabel(line)) == Text(constants::CommittedOnErrorGoTo).append(label);
}

void InsertErrorHandlerInRange(const Result<CodeModulePtr>& codeModule, const Handler& handler, Line start,
                               Line end) {
    if (FindMarker(codeModule, constants::ErrorHandlerBegin, start, end)) {
        return;
    }
    // Error handling that is switched off inside the body would switch off the new handler.
    RedirectHandlerStatements(handler.sources.globals, handler.componentName, constants::NoErrorHandler,
                              handler.label, start, end);
    // The block first: it leaves the line of the body's start where it is.
    Insert(codeModule, end, Block(handler));
    Text first;
    Assign(first, Then(codeModule, [&](const CodeModulePtr& module) { return module->Lines(start, 1); }));
    if (!LeadsToLabel(first, handler.label)) {
        Insert(codeModule, start, Text(u"    ").append(constants::OnErrorGoto).append(handler.label));
    }
}

}  // namespace

void ErrorHandlerInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                          TextView procedureName, TextView label, TextView code) {
    const ProcedurePath path{projectName, componentName, procedureName};
    const ProcedureRanges ranges = RangesOf(sources.globals, path);
    const Result<CodeModulePtr> codeModule = CodeModuleByNames(sources.globals, projectName, componentName);
    if (!ranges.Found) {
        return;
    }
    const Handler handler{sources, componentName, procedureName, label, code};
    TreatEachRange(sources.globals, path, ranges,
                   [&](Line start, Line end) { InsertErrorHandlerInRange(codeModule, handler, start, end); });
}

}  // namespace lintara::transform

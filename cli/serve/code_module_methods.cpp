// codemodule.* and inspect.*: a component's code as the IDE's object model answers it, and what the library's
// procedure scanner makes of it.
#include "cli/serve/project_methods.h"
#include "cli/serve/request_error.h"
#include "transform/procedure_ranges.h"

namespace lintara::cli {
namespace {

using assistant::Direction;
using hostmodel::MemberKind;

workspace::Module& ModuleOf(Session& session, const Arguments& arguments) {
    return *ComponentOf(session, arguments).module;
}

Line LineOf(const Arguments& arguments, std::string_view name) {
    return Line{arguments.Long(name)};
}

Json CountOfLines(Session& session, const Arguments& arguments) {
    return ValueResult(ModuleOf(session, arguments).CountOfLines());
}

Json CountOfDeclarationLines(Session& session, const Arguments& arguments) {
    return ValueResult(ModuleOf(session, arguments).CountOfDeclarationLines());
}

Json Lines(Session& session, const Arguments& arguments) {
    return ValueResult(JsonText(Checked(
        ModuleOf(session, arguments).Lines(LineOf(arguments, "startLine"), arguments.Long("count")))));
}

Json InsertLines(Session& session, const Arguments& arguments) {
    Checked(ModuleOf(session, arguments).InsertLines(LineOf(arguments, "line"), arguments.TextOf("text")));
    return Json::object();
}

Json DeleteLines(Session& session, const Arguments& arguments) {
    Checked(
        ModuleOf(session, arguments).DeleteLines(LineOf(arguments, "startLine"), arguments.Long("count")));
    return Json::object();
}

Json ReplaceLine(Session& session, const Arguments& arguments) {
    Checked(ModuleOf(session, arguments).ReplaceLine(LineOf(arguments, "line"), arguments.TextOf("text")));
    return Json::object();
}

// One of the three questions about a procedure by its name and kind.
template <auto Question>
Json AskProcedure(Session& session, const Arguments& arguments) {
    const auto answer = Checked((ModuleOf(session, arguments).*Question)(
        arguments.TextOf("name"), static_cast<MemberKind>(arguments.Long("kind"))));
    if constexpr (std::is_same_v<std::remove_cv_t<decltype(answer)>, Line>) {
        return ValueResult(answer.value());
    } else {
        return ValueResult(answer);
    }
}

Json ProcOfLine(Session& session, const Arguments& arguments) {
    auto kind = static_cast<MemberKind>(arguments.Long("kind"));
    Json result = ValueResult(
        JsonText(Checked(ModuleOf(session, arguments).ProcOfLine(LineOf(arguments, "line"), kind))));
    result["out"] = {{"kind", static_cast<std::int32_t>(kind)}};
    return result;
}

Json Find(Session& session, const Arguments& arguments) {
    Position start{LineOf(arguments, "startLine"), Column{arguments.Long("startColumn")}};
    Position end{LineOf(arguments, "endLine"), Column{arguments.Long("endColumn")}};
    const bool found = ModuleOf(session, arguments)
                           .Find(arguments.TextOf("target"), start, end,
                                 {.wholeWord = arguments.Boolean("wholeWord"),
                                  .matchCase = arguments.Boolean("matchCase"),
                                  .patternSearch = arguments.Boolean("patternSearch")});
    Json result = ValueResult(found);
    result["out"] = {{"startLine", start.line.value()},
                     {"startColumn", start.column.value()},
                     {"endLine", end.line.value()},
                     {"endColumn", end.column.value()}};
    return result;
}

Json Members(Session& session, const Arguments& arguments) {
    Json members = Json::array();
    for (const workspace::MemberInfo& member : ModuleOf(session, arguments).MemberList()) {
        members.push_back({{"name", JsonText(member.name)},
                           {"type", static_cast<int>(member.type)},
                           {"codeLocation", member.codeLocation.value()}});
    }
    return ValueResult(std::move(members));
}

Json AllText(Session& session, const Arguments& arguments) {
    return ValueResult(JsonText(ModuleOf(session, arguments).AllText()));
}

Json ProcedureRanges(Session& session, const Arguments& arguments) {
    const transform::ProcedureRanges ranges =
        transform::GetProcedureRanges(session.globals(), arguments.TextOf("sProject"),
                                      arguments.TextOf("sComponent"), arguments.TextOf("sMember"));
    return {{"Found", ranges.Found},       {"Start1", ranges.Start1.value()},
            {"End1", ranges.End1.value()}, {"Start2", ranges.Start2.value()},
            {"End2", ranges.End2.value()}, {"Start3", ranges.Start3.value()},
            {"End3", ranges.End3.value()}};
}

}  // namespace

std::vector<MethodInfo> CodeModuleMethods() {
    using enum ArgumentType;
    const auto procedure = ComponentParameters({{"name"}, {"kind", Long}});
    return {
        {"codemodule.CountOfLines", ComponentParameters(), CountOfLines},
        {"codemodule.CountOfDeclarationLines", ComponentParameters(), CountOfDeclarationLines},
        {"codemodule.Lines", ComponentParameters({{"startLine", Long}, {"count", Long}}), Lines},
        {"codemodule.InsertLines", ComponentParameters({{"line", Long}, {"text"}}), InsertLines},
        {"codemodule.DeleteLines", ComponentParameters({{"startLine", Long}, {"count", Long}}), DeleteLines},
        {"codemodule.ReplaceLine", ComponentParameters({{"line", Long}, {"text"}}), ReplaceLine},
        {"codemodule.ProcStartLine", procedure, AskProcedure<&workspace::Module::ProcStartLine>},
        {"codemodule.ProcBodyLine", procedure, AskProcedure<&workspace::Module::ProcBodyLine>},
        {"codemodule.ProcCountLines", procedure, AskProcedure<&workspace::Module::ProcCountLines>},
        {"codemodule.ProcOfLine", ComponentParameters({{"line", Long}, {"kind", Long, Direction::Out}}),
         ProcOfLine},
        {"codemodule.Find",
         ComponentParameters({{"target"},
                              {"startLine", Long, Direction::InOut},
                              {"startColumn", Long, Direction::InOut},
                              {"endLine", Long, Direction::InOut},
                              {"endColumn", Long, Direction::InOut},
                              {"wholeWord", Boolean},
                              {"matchCase", Boolean},
                              {"patternSearch", Boolean}}),
         Find},
        {"codemodule.Members", ComponentParameters(), Members},
        {"codemodule.Text", ComponentParameters(), AllText},
    };
}

std::vector<MethodInfo> InspectMethods() {
    return {{"inspect.procedureRanges", {{"sProject"}, {"sComponent"}, {"sMember"}}, ProcedureRanges}};
}

}  // namespace lintara::cli

// lintara.*: the public members of `Lintara`, under the names and with the parameters of its dispatch
// interface. None of them fails: they return their empty result, as everywhere.
#include "base/utf8.h"
#include "cli/serve/arguments.h"
#include "cli/serve/session.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace lintara::cli {
namespace {

using assistant::Access;
using assistant::DispatchMember;
using assistant::ValueType;

// How one member of the dispatch interface is called.
struct Call {
    int member = 0;
    Json (*run)(Session& session, const Arguments& arguments) = nullptr;
};

Json TextResult(TextView text) {
    return ValueResult(JsonText(text));
}

// The three names that most members begin with.
struct Member {
    explicit Member(const Arguments& arguments)
        : project(arguments.TextOf("sProject")),
          component(arguments.TextOf("sComponent")),
          name(arguments.TextOf("sMember")) {}
    TextView project;
    TextView component;
    TextView name;
};

Json GetMainBuffer(Session& session, const Arguments&) {
    return TextResult(session.lintara().TarnwickCPBuffer());
}

Json SetMainBuffer(Session& session, const Arguments& arguments) {
    session.lintara().SetTarnwickCPBuffer(arguments.TextOf("value"));
    return Json::object();
}

Json GetBuffer(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().AdditionalCPBuffer(arguments.Long("Index")));
}

Json SetBuffer(Session& session, const Arguments& arguments) {
    session.lintara().SetAdditionalCPBuffer(arguments.Long("Index"), arguments.TextOf("value"));
    return Json::object();
}

Json ParsePseudoCode(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().ParsePseudoCode(arguments.TextOf("APseudoCodeString")));
}

Json ParsePseudoCodeEx(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().ParsePseudoCodeEx(arguments.TextOf("APseudoCodeString"),
                                                          arguments.TextOf("AComponentName"),
                                                          arguments.TextOf("AMemberName")));
}

Json GeneratePseudoCode(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().GeneratePseudoCode(arguments.TextOf("sCode")));
}

Json GetMemberName(Session& session, const Arguments&) {
    return TextResult(session.lintara().GetMemberName());
}

Json GetMemberType(Session& session, const Arguments&) {
    return TextResult(session.lintara().GetMemberType());
}

Json GetMemberTypeEx(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().GetMemberTypeEx(arguments.TextOf("sComponentName"),
                                                        arguments.TextOf("sMemberName")));
}

Json InitCodeAutomation(Session& session, const Arguments&) {
    session.lintara().InitCodeAutomation();
    return Json::object();
}

Json GetTextSelection(Session& session, const Arguments& arguments) {
    Text lines = arguments.TextOf("sLines");
    Json result = TextResult(
        session.lintara().GetTextSelection(lines, arguments.Long("iStartLine"), arguments.Long("iEndLine"),
                                           arguments.Long("iStartCol"), arguments.Long("iEndCol")));
    result["out"] = {{"sLines", JsonText(lines)}};
    return result;
}

Json InsertTextInLine(Session& session, const Arguments& arguments) {
    return TextResult(session.lintara().InsertTextInLine(arguments.TextOf("sLine"), arguments.TextOf("sText"),
                                                         arguments.Long("iCol")));
}

Json TranslateCarret(Session& session, const Arguments& arguments) {
    std::int32_t line = arguments.Long("iLine");
    std::int32_t column = arguments.Long("iCol");
    session.lintara().TranslateCarret(line, column, arguments.TextOf("sText"));
    return {{"out", {{"iLine", line}, {"iCol", column}}}};
}

Json CloseCodeAutomation(Session& session, const Arguments&) {
    session.lintara().CloseCodeAutomation();
    return Json::object();
}

Json LineNumbersInserter(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().LineNumbersInserter(member.project, member.component, member.name,
                                          arguments.Long("iLNBase"), arguments.Long("iLNStep"));
    return Json::object();
}

Json LineNumbersRemover(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().LineNumbersRemover(member.project, member.component, member.name);
    return Json::object();
}

Json ErrorHandlerInserter(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().ErrorHandlerInserter(member.project, member.component, member.name,
                                           arguments.TextOf("sEHLabel"), arguments.TextOf("sEHCode"));
    return Json::object();
}

Json ErrorHandlerRemover(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().ErrorHandlerRemover(member.project, member.component, member.name);
    return Json::object();
}

Json SearchAndReplace(Session& session, const Arguments& arguments) {
    bool found = arguments.Boolean("AFound");
    session.lintara().SearchAndReplace(arguments.TextOf("AComponentName"), arguments.TextOf("ASoughtString"),
                                       arguments.TextOf("AReplacementString"), arguments.Long("AStartLine"),
                                       arguments.Long("AEndLine"), arguments.Boolean("WholeWord"),
                                       arguments.Boolean("GoThroughDelete"), found);
    return {{"out", {{"AFound", found}}}};
}

Json CustomCodeInserter(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().CustomCodeInserter(member.project, member.component, member.name,
                                         arguments.TextOf("sCodeToInsert"),
                                         arguments.Boolean("fNoDelimiters"), arguments.Integer("iWhere"),
                                         arguments.Long("iLine"), arguments.Integer("ID"));
    return Json::object();
}

Json CustomCodeRemover(Session& session, const Arguments& arguments) {
    const Member member(arguments);
    session.lintara().CustomCodeRemover(member.project, member.component, member.name,
                                        arguments.Integer("ID"));
    return Json::object();
}

Json GetLineNumber(Session& session, const Arguments&) {
    return ValueResult(session.lintara().GetLineNumber());
}

Json ShowHistory(Session& session, const Arguments&) {
    session.lintara().ShowHistory();
    return Json::object();
}

constexpr std::array Calls = {
    Call{4, GetMainBuffer},
    Call{5, SetMainBuffer},
    Call{6, GetBuffer},
    Call{7, SetBuffer},
    Call{8, ParsePseudoCode},
    Call{9, ParsePseudoCodeEx},
    Call{10, GeneratePseudoCode},
    Call{11, GetMemberName},
    Call{12, GetMemberType},
    Call{13, GetMemberTypeEx},
    Call{14, InitCodeAutomation},
    Call{15, GetTextSelection},
    Call{16, InsertTextInLine},
    Call{17, TranslateCarret},
    Call{18, CloseCodeAutomation},
    Call{19, LineNumbersInserter},
    Call{20, LineNumbersRemover},
    Call{21, ErrorHandlerInserter},
    Call{22, ErrorHandlerRemover},
    Call{23, SearchAndReplace},
    Call{24, CustomCodeInserter},
    Call{25, CustomCodeRemover},
    Call{26, GetLineNumber},
    Call{27, ShowHistory},
};

std::string MethodName(const DispatchMember& member) {
    std::string name = "lintara." + ToUtf8(member.name);
    switch (member.access) {
        case Access::Get:
            return name + ".get";
        case Access::Put:
        case Access::PutReference:
            return name + ".set";
        case Access::Method:
            break;
    }
    return name;
}

ArgumentType TypeOf(ValueType type) {
    switch (type) {
        case ValueType::Integer:
            return ArgumentType::Integer;
        case ValueType::Long:
            return ArgumentType::Long;
        case ValueType::Boolean:
            return ArgumentType::Boolean;
        case ValueType::Text:
            return ArgumentType::Text;
        case ValueType::Object:
            break;
    }
    throw std::logic_error("objects do not travel");
}

// The services object is the endpoint's own.
bool IsServices(const DispatchMember& member) {
    return member.name == u"oG";
}

}  // namespace

std::vector<MethodInfo> LintaraMethods() {
    std::vector<MethodInfo> methods;
    for (const DispatchMember& member : assistant::DispatchTable()) {
        if (IsServices(member)) {
            continue;
        }
        const auto* const call = std::ranges::find(Calls, member.number, &Call::member);
        if (call == Calls.end()) {
            throw std::logic_error("nobody calls " + MethodName(member));
        }
        MethodInfo method{MethodName(member), {}, call->run};
        for (const assistant::Parameter& parameter : member.parameters) {
            method.parameters.push_back(
                {ToUtf8(parameter.name), TypeOf(parameter.type), parameter.direction});
        }
        methods.push_back(std::move(method));
    }
    return methods;
}

}  // namespace lintara::cli

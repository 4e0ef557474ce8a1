#include "assistant/dispatch_table.h"

#include "base/runtime.h"

#include <algorithm>
#include <array>

namespace lintara::assistant {
namespace {

using enum Access;
using enum Direction;

constexpr auto Txt = ValueType::Text;
constexpr auto Integer = ValueType::Integer;
constexpr auto Long = ValueType::Long;
constexpr auto Boolean = ValueType::Boolean;
constexpr auto Object = ValueType::Object;

constexpr std::array ServicesValue = {Parameter{u"value", Object}};
constexpr std::array ServicesObject = {Parameter{u"object", Object}};
constexpr std::array BufferValue = {Parameter{u"value", Txt}};
constexpr std::array BufferIndex = {Parameter{u"Index", Long}};
constexpr std::array BufferIndexAndValue = {Parameter{u"Index", Long}, Parameter{u"value", Txt}};
constexpr std::array Template = {Parameter{u"APseudoCodeString", Txt}};
constexpr std::array TemplateAndMember = {Parameter{u"APseudoCodeString", Txt},
                                          Parameter{u"AComponentName", Txt}, Parameter{u"AMemberName", Txt}};
constexpr std::array Code = {Parameter{u"sCode", Txt}};
constexpr std::array ComponentAndMember = {Parameter{u"sComponentName", Txt}, Parameter{u"sMemberName", Txt}};
constexpr std::array LinesAndSelection = {Parameter{u"sLines", Txt, InOut}, Parameter{u"iStartLine", Long},
                                          Parameter{u"iEndLine", Long}, Parameter{u"iStartCol", Long},
                                          Parameter{u"iEndCol", Long}};
constexpr std::array LineTextAndColumn = {Parameter{u"sLine", Txt}, Parameter{u"sText", Txt},
                                          Parameter{u"iCol", Long}};
constexpr std::array CaretAndText = {Parameter{u"iLine", Long, InOut}, Parameter{u"iCol", Long, InOut},
                                     Parameter{u"sText", Txt}};
constexpr std::array Procedure = {Parameter{u"sProject", Txt}, Parameter{u"sComponent", Txt},
                                  Parameter{u"sMember", Txt}};
constexpr std::array ProcedureAndNumbers = {Parameter{u"sProject", Txt}, Parameter{u"sComponent", Txt},
                                            Parameter{u"sMember", Txt}, Parameter{u"iLNBase", Long},
                                            Parameter{u"iLNStep", Long}};
constexpr std::array ProcedureAndHandler = {Parameter{u"sProject", Txt}, Parameter{u"sComponent", Txt},
                                            Parameter{u"sMember", Txt}, Parameter{u"sEHLabel", Txt},
                                            Parameter{u"sEHCode", Txt}};
constexpr std::array Replacement = {
    Parameter{u"AComponentName", Txt},      Parameter{u"ASoughtString", Txt},
    Parameter{u"AReplacementString", Txt},  Parameter{u"AStartLine", Long},
    Parameter{u"AEndLine", Long},           Parameter{u"WholeWord", Boolean},
    Parameter{u"GoThroughDelete", Boolean}, Parameter{u"AFound", Boolean, Out}};
constexpr std::array CustomCode = {Parameter{u"sProject", Txt},
                                   Parameter{u"sComponent", Txt},
                                   Parameter{u"sMember", Txt},
                                   Parameter{u"sCodeToInsert", Txt},
                                   Parameter{u"fNoDelimiters", Boolean},
                                   Parameter{u"iWhere", Integer},
                                   Parameter{u"iLine", Long},
                                   Parameter{u"ID", Integer}};
constexpr std::array CustomCodeBlock = {Parameter{u"sProject", Txt}, Parameter{u"sComponent", Txt},
                                        Parameter{u"sMember", Txt}, Parameter{u"ID", Integer}};

constexpr std::array Table = {
    DispatchMember{1, u"oG", Get, {}, Object},
    DispatchMember{2, u"oG", Put, ServicesValue, {}},
    DispatchMember{3, u"oG", PutReference, ServicesObject, {}},
    DispatchMember{4, u"TarnwickCPBuffer", Get, {}, Txt},
    DispatchMember{5, u"TarnwickCPBuffer", Put, BufferValue, {}},
    DispatchMember{6, u"AdditionalCPBuffer", Get, BufferIndex, Txt},
    DispatchMember{7, u"AdditionalCPBuffer", Put, BufferIndexAndValue, {}},
    DispatchMember{8, u"ParsePseudoCode", Method, Template, Txt},
    DispatchMember{9, u"ParsePseudoCodeEx", Method, TemplateAndMember, Txt},
    DispatchMember{10, u"GeneratePseudoCode", Method, Code, Txt},
    DispatchMember{11, u"GetMemberName", Method, {}, Txt},
    DispatchMember{12, u"GetMemberType", Method, {}, Txt},
    DispatchMember{13, u"GetMemberTypeEx", Method, ComponentAndMember, Txt},
    DispatchMember{14, u"InitCodeAutomation", Method, {}, {}},
    DispatchMember{15, u"GetTextSelection", Method, LinesAndSelection, Txt},
    DispatchMember{16, u"InsertTextInLine", Method, LineTextAndColumn, Txt},
    DispatchMember{17, u"TranslateCarret", Method, CaretAndText, {}},
    DispatchMember{18, u"CloseCodeAutomation", Method, {}, {}},
    DispatchMember{19, u"LineNumbersInserter", Method, ProcedureAndNumbers, {}},
    DispatchMember{20, u"LineNumbersRemover", Method, Procedure, {}},
    DispatchMember{21, u"ErrorHandlerInserter", Method, ProcedureAndHandler, {}},
    DispatchMember{22, u"ErrorHandlerRemover", Method, Procedure, {}},
    DispatchMember{23, u"SearchAndReplace", Method, Replacement, {}},
    DispatchMember{24, u"CustomCodeInserter", Method, CustomCode, {}},
    DispatchMember{25, u"CustomCodeRemover", Method, CustomCodeBlock, {}},
    DispatchMember{26, u"GetLineNumber", Method, {}, Long},
    DispatchMember{27, u"ShowHistory", Method, {}, {}},
};

bool SameName(TextView a, TextView b) {
    return a.size() == b.size() && InStr(a, b, Compare::Textual) == (a.empty() ? 0 : 1);
}

}  // namespace

std::span<const DispatchMember> DispatchTable() {
    return Table;
}

const DispatchMember* FindDispatchMember(TextView name, Access access) {
    const auto found = std::ranges::find_if(Table, [&](const DispatchMember& member) {
        return member.access == access && SameName(member.name, name);
    });
    return found == Table.end() ? nullptr : &*found;
}

}  // namespace lintara::assistant

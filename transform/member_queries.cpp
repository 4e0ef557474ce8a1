#include "transform/member_queries.h"

#include "base/constants.h"
#include "base/position.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/walks.h"

#include <array>

namespace lintara::transform {
namespace {

using hostmodel::MemberKind;

// The order in which the member under the caret is asked for. Set comes last.
constexpr std::array KindsOfMemberName = {MemberKind::vbext_pk_Proc, MemberKind::vbext_pk_Let,
                                          MemberKind::vbext_pk_Get, MemberKind::vbext_pk_Set};

// The kind word that `line` shows in front of the member's name. The first character of the name belongs to
// what is searched, as does any earlier place where the name's text occurs.
TextView KindShownBy(TextView line, TextView memberName) {
    const std::int32_t name = InStr(line, memberName);
    if (name == 0) {
        return constants::UnknownKindWord;
    }
    const TextView upToName = line.substr(0, static_cast<std::size_t>(name));
    return InStr(upToName, constants::SubWord, Compare::Textual) > 0 ? constants::SubWord
                                                                     : constants::FunctionWord;
}

Text ReadLine(const CodeModulePtr& module, Line line) {
    Text text;
    Assign(text, module->Lines(line, 1));
    return text;
}

}  // namespace

std::int32_t GetLineNumber(hostmodel::Globals& globals) {
    constexpr Line NoWindow{-1};
    Line topLine = NoWindow;
    const Result<CodePanePtr> pane = ActiveCodePane(globals);
    if (pane) {
        Assign(topLine, (*pane)->TopLine());
    }
    if (topLine == NoWindow) {
        return 0;
    }
    hostmodel::Selection selection;
    Assign(selection, (*pane)->GetSelection());
    return selection.end.line.value();
}

Text GetMemberName(hostmodel::Globals& globals) {
    Text name;
    const Line line{GetLineNumber(globals)};
    const Result<CodeModulePtr> module = ActiveCodeModule(globals);
    if (!module) {
        return name;
    }
    for (MemberKind kind : KindsOfMemberName) {
        Assign(name, (*module)->ProcOfLine(line, kind));
        if (!name.empty()) {
            break;
        }
    }
    return name;
}

TextView GetMemberType(hostmodel::Globals& globals) {
    Line line{GetLineNumber(globals)};
    Text name;
    const Result<CodeModulePtr> module = ActiveCodeModule(globals);
    if (module) {
        MemberKind kind = MemberKind::vbext_pk_Proc;
        Assign(name, (*module)->ProcOfLine(line, kind));
    }
    if (name.empty()) {
        return constants::PropertyWord;
    }
    // For a property procedure there is no such line, and the caret's own line is read instead.
    Assign(line, (*module)->ProcStartLine(name, MemberKind::vbext_pk_Proc));
    return KindShownBy(ReadLine(*module, line), name);
}

TextView GetMemberTypeEx(hostmodel::Globals& globals, TextView componentName, TextView memberName) {
    if (componentName.empty() || memberName.empty()) {
        return {};
    }
    constexpr Line NoHeader{0};
    Line header = NoHeader;
    const Result<CodeModulePtr> module = CodeModuleInActiveProject(globals, componentName);
    if (module) {
        Assign(header, (*module)->ProcBodyLine(memberName, MemberKind::vbext_pk_Proc));
    }
    if (header == NoHeader) {
        return constants::PropertyWord;
    }
    return KindShownBy(ReadLine(*module, header), memberName);
}

}  // namespace lintara::transform

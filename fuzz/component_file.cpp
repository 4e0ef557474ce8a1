// Any bytes as a component's file: it opens or it is refused with a reason; what nobody edits is written back
// as it was, what an edit changes and another one puts back too, and the index of its procedures and members
// is the one that a plain reading of its lines gives.
#include "workspace/component_file.h"

#include "fuzz/input.h"
#include "fuzz/lines.h"
#include "fuzz/require.h"
#include "workspace/encoding.h"
#include "workspace/module.h"

#include <array>
#include <string>
#include <tuple>

namespace lintara::fuzz {
namespace {

constexpr std::array names = {"M.bas", "C.cls", "F.frm", "U.ctl", "D.dob", "P.pag", "R.dsr"};
constexpr std::array codePages = {"1252", "1252", "932", "1200", "65001", "437", "1254"};

std::string BytesOf(const workspace::Module& module) {
    std::string bytes;
    module.AppendCurrentBytes(bytes);
    return bytes;
}

auto Fields(const workspace::ProcedureInfo& p) {
    return std::tuple(p.number, p.name, p.kind, p.isFunction, p.start.value(), p.header.value(),
                      p.bodyBegin.value(), p.closing.value(), p.closed);
}

void CheckIndex(const workspace::Module& module) {
    const auto reference = ReferenceOf(module);
    const auto expected = reference.Procedures();
    const auto procedures = module.Procedures();
    Require(procedures.size() == expected.size(), "the index has every procedure once");
    for (std::size_t i = 0; i < procedures.size(); ++i) {
        Require(Fields(procedures[i]) == Fields(expected[i]), "a procedure stands where its lines are",
                ToUtf8(procedures[i].name));
    }
    Require(module.CountOfDeclarationLines() == reference.CountOfDeclarationLines(),
            "the declarations end where the first procedure begins");
    const auto members = module.MemberList();
    const auto expectedMembers = reference.Members();
    Require(members.size() == expectedMembers.size(), "the member list has every member once");
    for (std::size_t i = 0; i < members.size(); ++i) {
        RequireSame(members[i].name, expectedMembers[i].name, "members stand in the order of the code");
    }
}

void ChangeAndPutBack(workspace::Module& module) {
    Text text;
    for (Line line{1}; line <= Line{module.CountOfLines()}; ++line) {
        module.ReadLine(line, text);
        Require(module.ReplaceLine(line, text + u"'").has_value(), "a line that exists can be replaced");
        Require(module.RestoreLine(line, text).has_value(), "a line that exists can be put back");
    }
}

void InsertAndTakeOut(workspace::Module& module, std::int32_t place) {
    if (module.CountOfLines() > 0) {
        const Line line{place % module.CountOfLines() + 1};
        Require(module.InsertLines(line, u"Private Sub Added()").has_value(), "a line can be inserted");
        CheckIndex(module);
        Require(module.DeleteLines(line, 1).has_value(), "a line can be deleted");
        CheckIndex(module);
    }
}

void CheckFile(Input& input) {
    const std::filesystem::path path = input.Pick(names);
    const auto encoding = *workspace::FindEncoding(input.Pick(codePages));
    const auto place = input.Between<std::int32_t>(0, 255);
    const std::string bytes = input.Rest();
    const auto file =
        workspace::ParseComponentFile(path, workspace::ComponentTypeOf(path).value(), bytes, encoding);
    if (!file) {
        Require(!file.error().message.empty(), "a refusal has a reason");
        return;
    }
    Require(file->codeBegin <= bytes.size(), "the code begins within the file");
    workspace::Module module(bytes, file->codeBegin, file->encoding);
    RequireSame(BytesOf(module), bytes, "what nobody edits is written as it was");
    CheckIndex(module);
    ChangeAndPutBack(module);
    RequireSame(BytesOf(module), bytes, "what is put back is written as it was");
    InsertAndTakeOut(module, place);
    RequireSame(BytesOf(module), bytes, "what is taken out again leaves no trace");
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::CheckFile(input);
    return 0;
}

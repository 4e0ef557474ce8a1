#include "com/host_code_module.h"

#include "com/host_vbe.h"

namespace lintara::com {

using hostmodel::MemberKind;

namespace {

std::int32_t NumberOf(MemberKind kind) {
    return static_cast<std::int32_t>(kind);
}

}  // namespace

Result<Line> HostMember::CodeLocation() {
    return GetLine(u"CodeLocation");
}

Result<hostmodel::MemberType> HostMember::Type() {
    return Then(GetLong(u"Type"), [](std::int32_t type) {
        return Result<hostmodel::MemberType>(static_cast<hostmodel::MemberType>(type));
    });
}

Result<std::shared_ptr<hostmodel::Member>> HostMembers::Item(TextView name) {
    return GetObjectAs<hostmodel::Member, HostMember>(u"Item", With(name));
}

Result<std::shared_ptr<hostmodel::Member>> HostMembers::Item(std::int32_t index) {
    return GetObjectAs<hostmodel::Member, HostMember>(u"Item", With(index));
}

Result<std::shared_ptr<hostmodel::VBComponent>> HostCodeModule::Parent() {
    return GetObjectAs<hostmodel::VBComponent, HostVBComponent>(u"Parent");
}

Result<Text> HostCodeModule::Lines(Line startLine, std::int32_t count) {
    return GetText(u"Lines", With(startLine.value(), count));
}

Result<void> HostCodeModule::InsertLines(Line line, TextView text) {
    return object().Call(u"InsertLines", With(line.value(), text));
}

Result<void> HostCodeModule::DeleteLines(Line startLine, std::int32_t count) {
    return object().Call(u"DeleteLines", With(startLine.value(), count));
}

Result<void> HostCodeModule::ReplaceLine(Line line, TextView text) {
    return object().Call(u"ReplaceLine", With(line.value(), text));
}

Result<Line> HostCodeModule::ProcStartLine(TextView name, MemberKind kind) {
    return GetLine(u"ProcStartLine", With(name, NumberOf(kind)));
}

Result<Line> HostCodeModule::ProcBodyLine(TextView name, MemberKind kind) {
    return GetLine(u"ProcBodyLine", With(name, NumberOf(kind)));
}

Result<std::int32_t> HostCodeModule::ProcCountLines(TextView name, MemberKind kind) {
    return GetLong(u"ProcCountLines", With(name, NumberOf(kind)));
}

Result<Text> HostCodeModule::ProcOfLine(Line line, MemberKind& kind) {
    std::int32_t number = NumberOf(kind);
    Arguments arguments = With(line.value());
    arguments.AddReference(number);
    Result<Text> name = GetText(u"ProcOfLine", std::move(arguments));
    if (name) {
        kind = static_cast<MemberKind>(number);
    }
    return name;
}

Result<std::int32_t> HostCodeModule::CountOfDeclarationLines() {
    return GetLong(u"CountOfDeclarationLines");
}

Result<std::shared_ptr<hostmodel::Members>> HostCodeModule::Members() {
    return GetObjectAs<hostmodel::Members, HostMembers>(u"Members");
}

Result<bool> HostCodeModule::Find(TextView target, Position& start, Position& end,
                                  hostmodel::FindOptions options) {
    std::int32_t startLine = start.line.value();
    std::int32_t startColumn = start.column.value();
    std::int32_t endLine = end.line.value();
    std::int32_t endColumn = end.column.value();
    Arguments arguments = With(target);
    arguments.AddReference(startLine).AddReference(startColumn).AddReference(endLine).AddReference(endColumn);
    arguments.Add(options.wholeWord).Add(options.matchCase).Add(options.patternSearch);
    const Result<bool> found = GetBoolean(u"Find", std::move(arguments));
    if (found && *found) {
        start = {Line{startLine}, Column{startColumn}};
        end = {Line{endLine}, Column{endColumn}};
    }
    return found;
}

}  // namespace lintara::com

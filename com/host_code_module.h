// The IDE's code module, its members and their list, late-bound.
#pragma once

#include "com/host_object.h"
#include "hostmodel/code_module.h"
#include "hostmodel/members.h"

namespace lintara::com {

class HostMember final : public hostmodel::Member, public HostObject {
  public:
    using HostObject::HostObject;

    Result<Line> CodeLocation() override;
    Result<hostmodel::MemberType> Type() override;
};

class HostMembers final : public hostmodel::Members, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::Member>> Item(TextView name) override;
    Result<std::shared_ptr<hostmodel::Member>> Item(std::int32_t index) override;
};

class HostCodeModule final : public hostmodel::CodeModule, public HostObject {
  public:
    using HostObject::HostObject;
    using MemberKind = hostmodel::MemberKind;

    Result<std::shared_ptr<hostmodel::VBComponent>> Parent() override;
    Result<Text> Lines(Line startLine, std::int32_t count) override;
    Result<void> InsertLines(Line line, TextView text) override;
    Result<void> DeleteLines(Line startLine, std::int32_t count) override;
    Result<void> ReplaceLine(Line line, TextView text) override;
    Result<Line> ProcStartLine(TextView name, MemberKind kind) override;
    Result<Line> ProcBodyLine(TextView name, MemberKind kind) override;
    Result<std::int32_t> ProcCountLines(TextView name, MemberKind kind) override;
    Result<Text> ProcOfLine(Line line, MemberKind& kind) override;
    Result<std::int32_t> CountOfDeclarationLines() override;
    Result<std::shared_ptr<hostmodel::Members>> Members() override;
    Result<bool> Find(TextView target, Position& start, Position& end,
                      hostmodel::FindOptions options) override;
};

}  // namespace lintara::com

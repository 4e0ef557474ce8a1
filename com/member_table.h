// A dispatch interface as data (assistant/dispatch_table.h), as COM asks for it: names into identifiers, an
// identifier and a kind of call into a member. A member's identifier is the number of the first member of its
// name, so that the reads and writes of a property have one.
#pragma once

#include "assistant/dispatch_table.h"

#include <oaidl.h>
#include <span>

namespace lintara::com {

class MemberTable {
  public:
    explicit MemberTable(std::span<const assistant::DispatchMember> members) : members_(members) {}

    // The identifier of the member that the first name names, in any letter case, and those of its parameters
    // that the others name. DISP_E_UNKNOWNNAME when one is unknown, whose place gets DISPID_UNKNOWN.
    [[nodiscard]] HRESULT FindIds(std::span<LPOLESTR> names, DISPID* ids) const;

    // The member that a call of this kind (DISPATCH_METHOD and so on) reaches; null when there is none.
    [[nodiscard]] const assistant::DispatchMember* Find(DISPID id, WORD kind) const;

  private:
    [[nodiscard]] DISPID IdOf(TextView name) const;
    [[nodiscard]] DISPID ParameterIdOf(DISPID member, TextView name) const;

    std::span<const assistant::DispatchMember> members_;
};

}  // namespace lintara::com

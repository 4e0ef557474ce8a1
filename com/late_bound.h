// An object of the host whose members are called by name, as the language calls those of a variable that is
// declared as Object. A call that fails is a HostError; the numbers of members are remembered (member_ids.h).
// It holds one reference, and gives it back when it goes.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "com/arguments.h"
#include "com/com_ptr.h"
#include "com/member_ids.h"
#include "com/variant.h"

#include <memory>
#include <oaidl.h>

namespace lintara::com {

class LateBound {
  public:
    // `object` is not null. Objects made of one another share `ids`.
    LateBound(ComPtr<IDispatch> object, std::shared_ptr<MemberIds> ids);

    [[nodiscard]] const ComPtr<IDispatch>& object() const { return object_; }
    [[nodiscard]] const std::shared_ptr<MemberIds>& ids() const { return ids_; }

    // The value of a property or the result of a function. The name "" is the default member.
    [[nodiscard]] Result<Variant> Get(TextView name, Arguments arguments = {}) const;
    // Calls a procedure for its effect.
    [[nodiscard]] Result<void> Call(TextView name, Arguments arguments = {}) const;
    // Writes a property. An object is set where the property takes references, else assigned.
    [[nodiscard]] Result<void> Put(TextView name, const Variant& value) const;

  private:
    [[nodiscard]] Result<MemberId> Find(TextView name, bool withReferences) const;
    [[nodiscard]] Result<Variant> Invoke(TextView name, WORD kind, Arguments& arguments,
                                         bool wantsResult) const;
    [[nodiscard]] HRESULT InvokeOnce(DISPID member, WORD kind, std::vector<VARIANTARG>& arguments,
                                     VARIANT* result, EXCEPINFO& exception) const;

    ComPtr<IDispatch> object_;
    std::shared_ptr<MemberIds> ids_;
    mutable std::shared_ptr<TypeMembers> members_;  // found when the first member is called
};

}  // namespace lintara::com

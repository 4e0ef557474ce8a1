// The numbers under which an object's members are called, remembered, so that the host is asked for each
// once.
//
// Objects of one type share what is remembered: type informations with the same identifier number their
// members alike. An object without a type information, as scripting languages make them, has a memory of its
// own. Nothing of the host is kept here, so the memory may outlive the objects.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <map>
#include <memory>
#include <oaidl.h>
#include <optional>

namespace lintara::com {

// How the procedure behind a member takes what it writes back.
enum class ByReference {
    Typed,     // a reference to a variable of the declared type
    Variants,  // a reference to a variant, as languages without types have them
};

struct MemberId {
    DISPID id = DISPID_UNKNOWN;
    ByReference byReference = ByReference::Variants;
};

// The members of one type.
class TypeMembers {
  public:
    // The member `name` of `object`, which is of this type. The name "" is the default member. How it takes
    // references is found out when a call has some.
    [[nodiscard]] Result<MemberId> Find(IDispatch& object, TextView name, bool withReferences);

    // Notes how a call has found the member to take references. It has been found by name before.
    void Note(TextView name, ByReference style);

  private:
    struct Known {
        DISPID id = DISPID_UNKNOWN;
        std::optional<ByReference> byReference;
    };
    std::map<Text, Known, std::less<>> members_;
};

// What is remembered of all types that one host shows.
class MemberIds {
  public:
    [[nodiscard]] std::shared_ptr<TypeMembers> MembersOf(IDispatch& object);

  private:
    struct Before {
        bool operator()(const GUID& a, const GUID& b) const;
    };
    std::map<GUID, std::shared_ptr<TypeMembers>, Before> types_;
};

}  // namespace lintara::com

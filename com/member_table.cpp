#include "com/member_table.h"

#include "base/strings.h"

#include <algorithm>
#include <array>

namespace lintara::com {

using assistant::Access;
using assistant::DispatchMember;

namespace {

bool SameName(TextView a, TextView b) {
    return !a.empty() && a.size() == b.size() && InStr(a, b, Compare::Textual) == 1;
}

TextView ViewOf(LPOLESTR name) {
    return name == nullptr ? TextView() : TextView(reinterpret_cast<const char16_t*>(name));
}

struct KindOfAccess {
    WORD kind;
    Access access;
};

// A call of several kinds reaches the first of these that the member has.
constexpr std::array Kinds = {KindOfAccess{DISPATCH_PROPERTYPUTREF, Access::PutReference},
                              KindOfAccess{DISPATCH_PROPERTYPUT, Access::Put},
                              KindOfAccess{DISPATCH_METHOD, Access::Method},
                              KindOfAccess{DISPATCH_PROPERTYGET, Access::Get}};

}  // namespace

DISPID MemberTable::IdOf(TextView name) const {
    const auto found = std::ranges::find_if(
        members_, [&](const DispatchMember& member) { return SameName(member.name, name); });
    return found == members_.end() ? DISPID_UNKNOWN : found->number;
}

DISPID MemberTable::ParameterIdOf(DISPID member, TextView name) const {
    for (const DispatchMember& candidate : members_) {
        if (IdOf(candidate.name) != member) {
            continue;
        }
        const auto found = std::ranges::find_if(
            candidate.parameters, [&](const auto& parameter) { return SameName(parameter.name, name); });
        if (found != candidate.parameters.end()) {
            return static_cast<DISPID>(found - candidate.parameters.begin());
        }
    }
    return DISPID_UNKNOWN;
}

HRESULT MemberTable::FindIds(std::span<LPOLESTR> names, DISPID* ids) const {
    std::fill_n(ids, names.size(), DISPID_UNKNOWN);
    if (names.empty()) {
        return E_INVALIDARG;
    }
    ids[0] = IdOf(ViewOf(names[0]));
    for (std::size_t i = 1; i < names.size() && ids[0] != DISPID_UNKNOWN; ++i) {
        ids[i] = ParameterIdOf(ids[0], ViewOf(names[i]));
    }
    return std::count(ids, ids + names.size(), DISPID_UNKNOWN) == 0 ? S_OK : DISP_E_UNKNOWNNAME;
}

const DispatchMember* MemberTable::Find(DISPID id, WORD kind) const {
    for (const KindOfAccess& candidate : Kinds) {
        if ((kind & candidate.kind) == 0) {
            continue;
        }
        const auto found = std::ranges::find_if(members_, [&](const DispatchMember& member) {
            return member.access == candidate.access && IdOf(member.name) == id;
        });
        if (found != members_.end()) {
            return &*found;
        }
    }
    return nullptr;
}

}  // namespace lintara::com

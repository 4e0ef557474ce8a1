#include "com/member_ids.h"

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/host_error.h"

#include <algorithm>
#include <cstring>
#include <dispex.h>
#include <optional>
#include <span>

namespace lintara::com {
namespace {

ComPtr<ITypeInfo> TypeInfoOf(IDispatch& object) {
    ComPtr<ITypeInfo> info;
    if (FAILED(object.GetTypeInfo(0, LOCALE_NEUTRAL, info.Place()))) {
        return nullptr;
    }
    return info;
}

// A description that the type information has lent.
template <class Description, void (STDMETHODCALLTYPE ITypeInfo::*GiveBack)(Description*)>
class Lent {
  public:
    explicit Lent(ITypeInfo& info) : info_(info) {}
    ~Lent() {
        if (description_ != nullptr) {
            (info_.*GiveBack)(description_);
        }
    }
    Lent(const Lent&) = delete;
    Lent& operator=(const Lent&) = delete;

    [[nodiscard]] Description** Place() { return &description_; }
    [[nodiscard]] const Description* get() const { return description_; }

  private:
    ITypeInfo& info_;
    Description* description_ = nullptr;
};

using LentType = Lent<TYPEATTR, &ITypeInfo::ReleaseTypeAttr>;
using LentFunction = Lent<FUNCDESC, &ITypeInfo::ReleaseFuncDesc>;

std::optional<GUID> TypeOf(IDispatch& object) {
    const ComPtr<ITypeInfo> info = TypeInfoOf(object);
    if (info == nullptr) {
        return std::nullopt;
    }
    LentType type(*info);
    if (FAILED(info->GetTypeAttr(type.Place())) || type.get() == nullptr || type.get()->guid == GUID_NULL) {
        return std::nullopt;
    }
    return type.get()->guid;
}

bool HasTypedReference(const FUNCDESC& function) {
    const std::span parameters(function.lprgelemdescParam, static_cast<std::size_t>(function.cParams));
    return std::ranges::any_of(parameters, [](const ELEMDESC& parameter) {
        return parameter.tdesc.vt == VT_PTR && parameter.tdesc.lptdesc->vt != VT_VARIANT;
    });
}

ByReference ReferencesOf(IDispatch& object, DISPID member) {
    const ComPtr<ITypeInfo> info = TypeInfoOf(object);
    for (UINT index = 0; info != nullptr; ++index) {
        LentFunction function(*info);
        if (FAILED(info->GetFuncDesc(index, function.Place())) || function.get() == nullptr) {
            break;
        }
        if (function.get()->memid == member && HasTypedReference(*function.get())) {
            return ByReference::Typed;
        }
    }
    return ByReference::Variants;
}

// Objects of scripting languages, whose members come and go, may offer this way alone.
HRESULT AskScript(IDispatch& object, TextView name, DISPID& id) {
    const auto script = ComPtr<IDispatch>(&object).As<IDispatchEx>();
    if (script == nullptr) {
        return DISP_E_UNKNOWNNAME;
    }
    return script->GetDispID(Bstr(name).get(), fdexNameCaseInsensitive, &id);
}

Result<DISPID> AskFor(IDispatch& object, TextView name) {
    if (name.empty()) {
        return DISPID_VALUE;
    }
    Text terminated(name);
    auto* wide = reinterpret_cast<OLECHAR*>(terminated.data());
    DISPID id = DISPID_UNKNOWN;
    HRESULT code = object.GetIDsOfNames(IID_NULL, &wide, 1, LOCALE_USER_DEFAULT, &id);
    if (code == E_NOTIMPL) {
        code = AskScript(object, name, id);
    }
    if (FAILED(code)) {
        return FailureOf(code);
    }
    return id;
}

}  // namespace

Result<MemberId> TypeMembers::Find(IDispatch& object, TextView name, bool withReferences) {
    auto known = members_.find(name);
    if (known == members_.end()) {
        const Result<DISPID> id = AskFor(object, name);
        if (!id) {
            return std::unexpected(id.error());
        }
        known = members_.emplace(name, Known{.id = *id, .byReference = std::nullopt}).first;
    }
    Known& member = known->second;
    if (withReferences && !member.byReference) {
        member.byReference = ReferencesOf(object, member.id);
    }
    return MemberId{.id = member.id, .byReference = member.byReference.value_or(ByReference::Variants)};
}

void TypeMembers::Note(TextView name, ByReference style) {
    if (const auto known = members_.find(name); known != members_.end()) {
        known->second.byReference = style;
    }
}

bool MemberIds::Before::operator()(const GUID& a, const GUID& b) const {
    return std::memcmp(&a, &b, sizeof(GUID)) < 0;
}

std::shared_ptr<TypeMembers> MemberIds::MembersOf(IDispatch& object) {
    const std::optional<GUID> type = TypeOf(object);
    if (!type) {
        return std::make_shared<TypeMembers>();
    }
    std::shared_ptr<TypeMembers>& members = types_[*type];
    if (members == nullptr) {
        members = std::make_shared<TypeMembers>();
    }
    return members;
}

}  // namespace lintara::com

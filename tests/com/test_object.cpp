#include "tests/com/test_object.h"

#include "base/utf8.h"
#include "com/bstr.h"
#include "com/variant.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lintara::support {
namespace {

constexpr DISPID FirstId = 100;
constexpr DISPID FirstFreeId = 100000;

HRESULT CodeOf(const HostError& error) {
    return static_cast<HRESULT>(0x800A0000U | static_cast<unsigned>(error.number));
}

class TestObject final : public IDispatch {
  public:
    using AnyMember = std::function<HRESULT(const Text& name, const TestCall&)>;

    TestObject(std::string type, LateBoundHostPtr host, std::vector<NamedMember> members, AnyMember anyMember)
        : type_(std::move(type)),
          host_(std::move(host)),
          members_(std::move(members)),
          anyMember_(std::move(anyMember)) {
        ++host_->liveObjects;
    }
    virtual ~TestObject() { --host_->liveObjects; }
    TestObject(const TestObject&) = delete;
    TestObject& operator=(const TestObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        *object = nullptr;
        if (interfaceId != IID_IUnknown && interfaceId != IID_IDispatch) {
            return E_NOINTERFACE;
        }
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = host_->typeInfo == nullptr ? 0 : 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT /*index*/, LCID /*locale*/, ITypeInfo** info) override {
        *info = com::ComPtr<ITypeInfo>(host_->typeInfo).Detach();
        return *info == nullptr ? E_NOTIMPL : S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT /*count*/,
                                            LCID /*locale*/, DISPID* ids) override {
        ++host_->nameLookups;
        const Text name(reinterpret_cast<const char16_t*>(names[0]));
        const auto found = std::ranges::find(members_, name, &NamedMember::name);
        if (found != members_.end()) {
            ids[0] = FirstId + static_cast<DISPID>(found - members_.begin());
            return S_OK;
        }
        if (anyMember_) {
            freeNames_.push_back(name);
            ids[0] = FirstFreeId + static_cast<DISPID>(freeNames_.size() - 1);
            return S_OK;
        }
        ids[0] = DISPID_UNKNOWN;
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID /*reserved*/, LCID /*locale*/, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                     UINT* /*wrongArgument*/) override {
        const Text name = NameOf(id);
        const std::string fullName = type_ + "." + ToUtf8(name);
        ++host_->callsByName[fullName];
        const std::size_t index = host_->invokes++;
        if (const HRESULT code = host_->fault ? host_->fault(index, fullName, exception) : S_OK;
            code != S_OK) {
            return code;
        }
        return Answer(name, TestCall(kind, *parameters, result, *host_), exception);
    }

  private:
    [[nodiscard]] Text NameOf(DISPID id) const {
        if (id == DISPID_VALUE) {
            return {};
        }
        return id >= FirstFreeId ? freeNames_.at(static_cast<std::size_t>(id - FirstFreeId))
                                 : members_.at(static_cast<std::size_t>(id - FirstId)).name;
    }

    HRESULT Answer(const Text& name, const TestCall& call, EXCEPINFO* exception) {
        const com::ComPtr<IDispatch> stays(this);
        try {
            const auto found = std::ranges::find(members_, name, &NamedMember::name);
            if (found != members_.end()) {
                return found->member(call);
            }
            return anyMember_ ? anyMember_(name, call) : DISP_E_MEMBERNOTFOUND;
        } catch (const CallFails& failure) {
            if (failure.code == DISP_E_EXCEPTION && exception != nullptr) {
                exception->scode = CodeOf(failure.error);
                exception->bstrDescription = com::NewBstr(u"the host's object fails");
                exception->bstrSource = com::NewBstr(u"host");
            }
            return failure.code;
        } catch (...) {
            return E_UNEXPECTED;
        }
    }

    std::string type_;
    LateBoundHostPtr host_;
    std::vector<NamedMember> members_;
    AnyMember anyMember_;
    std::vector<Text> freeNames_;
    ULONG references_ = 1;
};

}  // namespace

VARIANTARG& TestCall::argument(std::size_t place) const {
    if (place >= parameters_.cArgs) {
        throw CallFails{DISP_E_BADPARAMCOUNT};
    }
    return parameters_.rgvarg[parameters_.cArgs - 1 - place];
}

TextView TestCall::text(std::size_t place) const {
    if (argument(place).vt != VT_BSTR) {
        throw CallFails{DISP_E_TYPEMISMATCH};
    }
    return com::ViewOf(argument(place).bstrVal);
}

std::int32_t TestCall::number(std::size_t place) const {
    if (argument(place).vt != VT_I4) {
        throw CallFails{DISP_E_TYPEMISMATCH};
    }
    return static_cast<std::int32_t>(argument(place).lVal);
}

bool TestCall::truth(std::size_t place) const {
    if (argument(place).vt != VT_BOOL) {
        throw CallFails{DISP_E_TYPEMISMATCH};
    }
    return argument(place).boolVal != VARIANT_FALSE;
}

std::int32_t TestCall::referred(std::size_t place) const {
    const VARIANTARG& given = argument(place);
    if (host_.references == LateBoundHost::References::Typed && given.vt == (VT_I4 | VT_BYREF)) {
        return static_cast<std::int32_t>(*given.plVal);
    }
    if (host_.references == LateBoundHost::References::Variants && given.vt == (VT_VARIANT | VT_BYREF) &&
        given.pvarVal->vt == VT_I4) {
        return static_cast<std::int32_t>(given.pvarVal->lVal);
    }
    throw CallFails{DISP_E_TYPEMISMATCH};
}

void TestCall::Write(std::size_t place, std::int32_t number) const {
    (void)referred(place);
    const VARIANTARG& given = argument(place);
    if (host_.references == LateBoundHost::References::Typed) {
        *given.plVal = number;
        return;
    }
    using Small = std::numeric_limits<SHORT>;
    com::Variant value(number);
    if (number >= Small::min() && number <= Small::max()) {
        value.get().vt = VT_I2;
        value.get().iVal = static_cast<SHORT>(number);
    }
    std::swap(*given.pvarVal, value.get());
}

HRESULT TestCall::Reply(TextView text) const {
    if (result_ != nullptr) {
        com::Variant value(text);
        std::swap(*result_, value.get());
    }
    return S_OK;
}

HRESULT TestCall::Reply(std::int32_t number) const {
    if (result_ != nullptr) {
        com::Variant value(number);
        std::swap(*result_, value.get());
    }
    return S_OK;
}

HRESULT TestCall::ReplyTruth(bool value) const {
    if (result_ != nullptr) {
        com::Variant variant(value);
        std::swap(*result_, variant.get());
    }
    return S_OK;
}

HRESULT TestCall::Reply(const com::ComPtr<IDispatch>& object) const {
    if (result_ != nullptr) {
        com::Variant value(object.get());
        std::swap(*result_, value.get());
    }
    return S_OK;
}

com::ComPtr<IDispatch> MakeTestObject(std::string type, LateBoundHostPtr host,
                                      std::vector<NamedMember> members,
                                      std::function<HRESULT(const Text&, const TestCall&)> anyMember) {
    return com::ComPtr<IDispatch>::Adopt(
        new TestObject(std::move(type), std::move(host), std::move(members), std::move(anyMember)));
}

}  // namespace lintara::support

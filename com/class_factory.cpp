#include "com/class_factory.h"

#include "com/com_ptr.h"
#include "com/module.h"

#include <new>

namespace lintara::com {

namespace {

class ClassFactory final : public IClassFactory {
  public:
    explicit ClassFactory(CreateObject create) : create_(create) {}
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (interfaceId != IID_IUnknown && interfaceId != IID_IClassFactory) {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        *object = static_cast<IClassFactory*>(this);
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override {
        return static_cast<ULONG>(::InterlockedIncrement(&references_));
    }

    ULONG STDMETHODCALLTYPE Release() override {
        const LONG left = ::InterlockedDecrement(&references_);
        if (left == 0) {
            delete this;
        }
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : create_(interfaceId, object);
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
        if (lock != FALSE) {
            ObjectBorn();
        } else {
            ObjectGone();
        }
        return S_OK;
    }

  private:
    ~ClassFactory() = default;

    CreateObject create_;
    LONG references_ = 1;
    LiveObject alive_;
};

}  // namespace

HRESULT CreateClassFactory(CreateObject create, REFIID interfaceId, void** factory) noexcept {
    if (factory == nullptr) {
        return E_POINTER;
    }
    *factory = nullptr;
    const auto made = ComPtr<IClassFactory>::Adopt(new (std::nothrow) ClassFactory(create));
    return made ? made->QueryInterface(interfaceId, factory) : E_OUTOFMEMORY;
}

}  // namespace lintara::com

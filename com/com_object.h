// What every COM object of this library is made of: a counted life, and the interfaces that it can be asked
// for. While one lives, the library stays loaded.
#pragma once

#include "com/module.h"

#include <atomic>
#include <oaidl.h>

namespace lintara::com {

// The first interface is derived from IDispatch. An object begins with one reference.
template <class First, class... Others>
class ComObject : public First, public Others... {
  public:
    ComObject(const ComObject&) = delete;
    ComObject& operator=(const ComObject&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) noexcept override {
        if (object == nullptr) {
            return E_POINTER;
        }
        *object = Find(interfaceId);
        if (*object == nullptr) {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() noexcept override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

  protected:
    ComObject() = default;
    virtual ~ComObject() = default;

  private:
    [[nodiscard]] void* Find(REFIID interfaceId) {
        if (interfaceId == __uuidof(IUnknown) || interfaceId == __uuidof(IDispatch) ||
            interfaceId == __uuidof(First)) {
            return static_cast<First*>(this);
        }
        void* found = nullptr;
        ((interfaceId == __uuidof(Others) ? static_cast<void>(found = static_cast<Others*>(this)) : void()),
         ...);
        return found;
    }

    std::atomic<ULONG> references_ = 1;
    LiveObject live_;
};

}  // namespace lintara::com

// A counted reference to a COM object, given back when the pointer goes.
#pragma once

#include <cstddef>
#include <unknwn.h>
#include <utility>

namespace lintara::com {

template <class Interface>
class ComPtr {
  public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    // Takes a reference of its own.
    explicit ComPtr(Interface* object) : object_(object) {
        if (object_ != nullptr) {
            object_->AddRef();
        }
    }
    ComPtr(const ComPtr& other) : ComPtr(other.object_) {}
    ComPtr(ComPtr&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    ComPtr& operator=(ComPtr other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~ComPtr() {
        if (object_ != nullptr) {
            object_->Release();
        }
    }

    // Takes over a reference that somebody else has counted.
    [[nodiscard]] static ComPtr Adopt(Interface* object) {
        ComPtr result;
        result.object_ = object;
        return result;
    }

    [[nodiscard]] Interface* get() const { return object_; }
    Interface* operator->() const { return object_; }
    Interface& operator*() const { return *object_; }
    explicit operator bool() const { return object_ != nullptr; }
    friend bool operator==(const ComPtr& a, const ComPtr& b) { return a.object_ == b.object_; }
    friend bool operator==(const ComPtr& a, std::nullptr_t) { return a.object_ == nullptr; }

    // Where a function is to put an object, whose reference is the pointer's own then.
    [[nodiscard]] Interface** Place() {
        *this = ComPtr();
        return &object_;
    }
    [[nodiscard]] void** UntypedPlace() { return reinterpret_cast<void**>(Place()); }

    // Hands the reference over.
    [[nodiscard]] Interface* Detach() { return std::exchange(object_, nullptr); }

    // The same object under another interface; null when it has none.
    template <class Other>
    [[nodiscard]] ComPtr<Other> As() const {
        ComPtr<Other> result;
        if (object_ != nullptr && FAILED(object_->QueryInterface(__uuidof(Other), result.UntypedPlace()))) {
            return nullptr;
        }
        return result;
    }

  private:
    Interface* object_ = nullptr;
};

}  // namespace lintara::com

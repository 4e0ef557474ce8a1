// A VARIANT that owns what it holds.
#pragma once

#include "base/text.h"
#include "com/bstr.h"

#include <concepts>
#include <cstdint>
#include <new>
#include <oaidl.h>
#include <oleauto.h>
#include <utility>

namespace lintara::com {

// A Boolean of 16 bits, where true is -1.
[[nodiscard]] constexpr VARIANT_BOOL VariantBool(bool value) {
    return value ? VARIANT_TRUE : VARIANT_FALSE;
}

class Variant {
  public:
    Variant() { VariantInit(&value_); }
    explicit Variant(TextView text) : Variant() {
        value_.bstrVal = NewBstr(text);
        value_.vt = VT_BSTR;
    }
    explicit Variant(const char16_t* text) : Variant(TextView(text)) {}
    explicit Variant(std::int32_t number) : Variant() {
        value_.vt = VT_I4;
        value_.lVal = number;
    }
    // No pointer is taken for a truth.
    explicit Variant(std::same_as<bool> auto value) : Variant() {
        value_.vt = VT_BOOL;
        value_.boolVal = VariantBool(value);
    }
    // Takes a reference of its own; null is the language's Nothing.
    explicit Variant(IDispatch* object) : Variant() {
        value_.vt = VT_DISPATCH;
        value_.pdispVal = object;
        if (object != nullptr) {
            object->AddRef();
        }
    }
    Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
    Variant& operator=(Variant&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    ~Variant() { VariantClear(&value_); }

    [[nodiscard]] const VARIANT& get() const { return value_; }
    [[nodiscard]] VARIANT& get() { return value_; }
    // Throws when memory runs out.
    [[nodiscard]] Variant Clone() const {
        Variant copy;
        if (FAILED(VariantCopy(&copy.value_, const_cast<VARIANT*>(&value_)))) {
            throw std::bad_alloc();
        }
        return copy;
    }

    // Where a function is to put a value, which is this object's own then.
    [[nodiscard]] VARIANT* Place() {
        *this = Variant();
        return &value_;
    }

  private:
    VARIANT value_;
};

}  // namespace lintara::com

// A text in the form in which it travels through COM calls.
#pragma once

#include "base/text.h"

#include <new>
#include <oaidl.h>
#include <oleauto.h>
#include <utility>

namespace lintara::com {

// The code units of a BSTR. A null one is "".
[[nodiscard]] inline TextView ViewOf(BSTR text) {
    return {reinterpret_cast<const char16_t*>(text), SysStringLen(text)};
}

// Throws when memory runs out. The caller gets the text to give back.
[[nodiscard]] inline BSTR NewBstr(TextView text) {
    const BSTR copy =
        SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
    if (copy == nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

class Bstr {
  public:
    Bstr() = default;
    explicit Bstr(TextView text) : text_(NewBstr(text)) {}
    Bstr(Bstr&& other) noexcept : text_(std::exchange(other.text_, nullptr)) {}
    Bstr& operator=(Bstr&& other) noexcept {
        std::swap(text_, other.text_);
        return *this;
    }
    ~Bstr() { SysFreeString(text_); }

    [[nodiscard]] BSTR get() const { return text_; }
    [[nodiscard]] TextView view() const { return ViewOf(text_); }
    // Where a function is to put a text, which is this object's own then.
    [[nodiscard]] BSTR* Place() {
        *this = Bstr();
        return &text_;
    }
    [[nodiscard]] BSTR Detach() { return std::exchange(text_, nullptr); }

  private:
    BSTR text_ = nullptr;
};

}  // namespace lintara::com

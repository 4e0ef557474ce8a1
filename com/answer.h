// How the methods that early bound callers use get their arguments and give their results. What is missing is
// empty, and no failure leaves them but that there is no place for a result.
#pragma once

#include "base/text.h"
#include "com/bstr.h"
#include "com/variant.h"

#include <cstdint>
#include <oaidl.h>
#include <utility>

namespace lintara::com {

[[nodiscard]] inline TextView In(BSTR text) {
    return ViewOf(text);
}
[[nodiscard]] inline TextView In(const BSTR* text) {
    return text == nullptr ? TextView() : ViewOf(*text);
}
[[nodiscard]] inline std::int32_t In(const LONG* number) {
    return number == nullptr ? 0 : static_cast<std::int32_t>(*number);
}
[[nodiscard]] inline std::int16_t In(const SHORT* number) {
    return number == nullptr ? std::int16_t{0} : *number;
}
// VARIANT_BOOL is a SHORT, so it has a name of its own.
[[nodiscard]] inline bool InTruth(const VARIANT_BOOL* value) {
    return value != nullptr && *value != VARIANT_FALSE;
}

// Throws when memory runs out, with the caller's text as it was.
inline void Out(BSTR* variable, TextView text) {
    if (variable != nullptr) {
        Bstr copy(text);
        SysFreeString(std::exchange(*variable, copy.Detach()));
    }
}
inline void Out(LONG* variable, std::int32_t number) {
    if (variable != nullptr) {
        *variable = number;
    }
}
inline void Out(SHORT* variable, std::int16_t number) {
    if (variable != nullptr) {
        *variable = number;
    }
}
inline void OutTruth(VARIANT_BOOL* variable, bool value) {
    if (variable != nullptr) {
        *variable = VariantBool(value);
    }
}

// Runs `body` while `self` is held: the host may let go of the object meanwhile.
template <class Body>
HRESULT Do(IUnknown& self, Body&& body) noexcept {
    self.AddRef();
    try {
        std::forward<Body>(body)();
    } catch (...) {
        // Memory ran out: what was done by then stays done.
    }
    self.Release();
    return S_OK;
}

template <class Body>
HRESULT AnswerText(IUnknown& self, BSTR* result, Body&& body) noexcept {
    if (result == nullptr) {
        return E_POINTER;
    }
    *result = nullptr;
    return Do(self, [&] { *result = NewBstr(std::forward<Body>(body)()); });
}

template <class Body>
HRESULT AnswerTruth(IUnknown& self, VARIANT_BOOL* result, Body&& body) noexcept {
    if (result == nullptr) {
        return E_POINTER;
    }
    *result = VARIANT_FALSE;
    return Do(self, [&] { *result = VariantBool(std::forward<Body>(body)()); });
}

}  // namespace lintara::com

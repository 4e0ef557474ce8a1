// Text as the functions of Windows take it: the same code units under another type.
#pragma once

#ifdef _WIN32

#include "base/text.h"

#include <string>
#include <string_view>

namespace lintara::platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

[[nodiscard]] inline std::wstring ToWide(TextView text) {
    return {text.begin(), text.end()};
}

[[nodiscard]] inline Text FromWide(std::wstring_view text) {
    return {text.begin(), text.end()};
}

}  // namespace lintara::platform

#endif

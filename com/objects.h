// The two classes of the component server, as objects.
#pragma once

#include <unknwn.h>

namespace lintara::com {

// Makes an object of the class `Lintara`, and asks it for an interface.
[[nodiscard]] HRESULT CreateLintara(REFIID interfaceId, void** object) noexcept;

// Makes an object of the class `DialogsLT`.
[[nodiscard]] HRESULT CreateDialogsLT(REFIID interfaceId, void** object) noexcept;

}  // namespace lintara::com

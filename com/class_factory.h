// What the system makes objects of a class with.
#pragma once

#include <unknwn.h>

namespace lintara::com {

// Makes an object and gives it out under an interface.
using CreateObject = HRESULT (*)(REFIID interfaceId, void** object);

// Gives out a factory, under IClassFactory or IUnknown, that makes objects with `create`.
HRESULT CreateClassFactory(CreateObject create, REFIID interfaceId, void** factory) noexcept;

}  // namespace lintara::com

// The module that holds this code: the component server, or a test program that contains it.
#pragma once

#include "com/com_ptr.h"

#include <oaidl.h>
#include <windows.h>

namespace lintara::com {

// How many objects the module has handed out, and how many locks clients hold on it. It may be unloaded when
// there are none. Every object calls ObjectBorn when it is made and ObjectGone when it ends; they may be
// called on any thread.
void ObjectBorn() noexcept;
void ObjectGone() noexcept;
[[nodiscard]] long LiveObjects() noexcept;

// One reference of that count, for an object to have as a member.
class LiveObject {
  public:
    LiveObject() noexcept { ObjectBorn(); }
    LiveObject(const LiveObject&) noexcept { ObjectBorn(); }
    LiveObject& operator=(const LiveObject&) noexcept = default;
    ~LiveObject() { ObjectGone(); }
};

// For what a module owns: its resources, its window classes.
[[nodiscard]] HINSTANCE ModuleHandle() noexcept;

// The type library that lies in the module. Null when it cannot be read.
[[nodiscard]] ComPtr<ITypeLib> ModuleTypeLibrary() noexcept;

// What the type library says about an interface. Null when it cannot be read.
[[nodiscard]] ComPtr<ITypeInfo> TypeInfoOf(REFIID interfaceId) noexcept;

}  // namespace lintara::com

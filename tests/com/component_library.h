// The component server as its clients load it: the library, and objects of its classes.
#pragma once

#include "com/com_ptr.h"

#include <oaidl.h>
#include <windows.h>

namespace lintara::support {

// The library of the build that the test program is part of. It is loaded while this lives.
class ComponentLibrary {
  public:
    ComponentLibrary();
    ~ComponentLibrary();
    ComponentLibrary(const ComponentLibrary&) = delete;
    ComponentLibrary& operator=(const ComponentLibrary&) = delete;

    // A new object of a class, under the interface; null when it cannot be made.
    template <class Interface>
    [[nodiscard]] com::ComPtr<Interface> Create(REFCLSID classId) const {
        com::ComPtr<Interface> object;
        Make(classId, __uuidof(Interface), object.UntypedPlace());
        return object;
    }

    [[nodiscard]] bool CanUnload() const;

  private:
    void Make(REFCLSID classId, REFIID interfaceId, void** object) const;

    HMODULE library_ = nullptr;
};

}  // namespace lintara::support

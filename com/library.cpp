// The entry points of the component server, under the names that library.def exports.

#include "com/class_factory.h"
#include "com/lintara_idl.h"
#include "com/module.h"
#include "com/objects.h"
#include "com/registration.h"

#include <olectl.h>

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    if (classId == CLSID_Lintara) {
        return lintara::com::CreateClassFactory(lintara::com::CreateLintara, interfaceId, object);
    }
    if (classId == CLSID_DialogsLT) {
        return lintara::com::CreateClassFactory(lintara::com::CreateDialogsLT, interfaceId, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() {
    return lintara::com::LiveObjects() == 0 ? S_OK : S_FALSE;
}

STDAPI DllRegisterServer() {
    return lintara::com::RegisterComponents();
}

STDAPI DllUnregisterServer() {
    return lintara::com::UnregisterComponents();
}

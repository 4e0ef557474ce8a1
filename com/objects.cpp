#include "com/objects.h"

#include "com/dialogs_object.h"
#include "com/lintara_object.h"
#include "com/machine.h"

#include <utility>

namespace lintara::com {
namespace {

// Asks a new object for an interface; the object ends when it has none.
template <class Make>
HRESULT Create(REFIID interfaceId, void** object, Make&& make) noexcept {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    try {
        const auto made = std::forward<Make>(make)();
        return made->QueryInterface(interfaceId, object);
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace

HRESULT CreateLintara(REFIID interfaceId, void** object) noexcept {
    return Create(interfaceId, object,
                  [] { return ComPtr<LintaraObject>::Adopt(new LintaraObject(ThisMachine())); });
}

HRESULT CreateDialogsLT(REFIID interfaceId, void** object) noexcept {
    return Create(interfaceId, object,
                  [] { return ComPtr<DialogsObject>::Adopt(new DialogsObject(WithWindowsOfThisMachine)); });
}

}  // namespace lintara::com

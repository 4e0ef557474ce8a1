#include "tests/com/component_library.h"

#include "platform/system_files.h"
#include "platform/wide_text.h"

#include <stdexcept>

namespace lintara::support {
namespace {

template <class Function>
Function* Find(HMODULE library, const char* name) {
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

}  // namespace

// The build puts test programs two folders below the library.
ComponentLibrary::ComponentLibrary() {
    const Text folder = platform::LibraryFolder();
    library_ = LoadLibraryW(platform::ToWide(folder + u"\\..\\..\\Tarnwick30Lintara.dll").c_str());
    if (library_ == nullptr) {
        throw std::runtime_error("Tarnwick30Lintara.dll does not lie where the build makes it");
    }
}

ComponentLibrary::~ComponentLibrary() {
    FreeLibrary(library_);
}

bool ComponentLibrary::CanUnload() const {
    return Find<HRESULT WINAPI()>(library_, "DllCanUnloadNow")() == S_OK;
}

void ComponentLibrary::Make(REFCLSID classId, REFIID interfaceId, void** object) const {
    using GetClassObject = HRESULT WINAPI(REFCLSID, REFIID, void**);
    com::ComPtr<IClassFactory> factory;
    if (FAILED(Find<GetClassObject>(library_, "DllGetClassObject")(classId, IID_IClassFactory,
                                                                   factory.UntypedPlace())) ||
        FAILED(factory->CreateInstance(nullptr, interfaceId, object))) {
        *object = nullptr;
    }
}

}  // namespace lintara::support

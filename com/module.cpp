#include "com/module.h"

#include "platform/system_files.h"
#include "platform/wide_text.h"

#include <atomic>
#include <new>

namespace lintara::com {

namespace {

// The one thing that all objects of a module have in common, and that the system asks for without naming any.
std::atomic<long> liveObjects = 0;

}  // namespace

void ObjectBorn() noexcept {
    ++liveObjects;
}

void ObjectGone() noexcept {
    --liveObjects;
}

long LiveObjects() noexcept {
    return liveObjects;
}

HINSTANCE ModuleHandle() noexcept {
    HMODULE module = nullptr;
    // The module in which this very variable lies, whatever its file is called.
    ::GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t*>(&liveObjects), &module);
    return module;
}

ComPtr<ITypeLib> ModuleTypeLibrary() noexcept {
    try {
        ComPtr<ITypeLib> library;
        if (FAILED(::LoadTypeLibEx(platform::ToWide(platform::LibraryFile()).c_str(), REGKIND_NONE,
                                   library.Place()))) {
            return nullptr;
        }
        return library;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

ComPtr<ITypeInfo> TypeInfoOf(REFIID interfaceId) noexcept {
    const ComPtr<ITypeLib> library = ModuleTypeLibrary();
    ComPtr<ITypeInfo> info;
    if (!library || FAILED(library->GetTypeInfoOfGuid(interfaceId, info.Place()))) {
        return nullptr;
    }
    return info;
}

}  // namespace lintara::com

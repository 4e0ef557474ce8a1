#include "com/registration.h"

#include "com/lintara_idl.h"
#include "com/module.h"
#include "com/registry_values.h"
#include "platform/system_files.h"
#include "platform/wide_text.h"

#include <array>
#include <iterator>
#include <new>
#include <vector>

// The compiler's headers lack these two of the system's functions; its import libraries have them.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* file, OLECHAR* helpFolder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale,
                                                   SYSKIND system);

namespace lintara::com {

namespace {

constexpr WORD majorVersion = 3;
constexpr WORD minorVersion = 0;
constexpr const wchar_t* version = L"3.0";
#ifdef _WIN64
constexpr SYSKIND system = SYS_WIN64;
constexpr const wchar_t* systemKey = L"\\3.0\\0\\win64";
#else
constexpr SYSKIND system = SYS_WIN32;
constexpr const wchar_t* systemKey = L"\\3.0\\0\\win32";
#endif

struct ComponentClass {
    CLSID id;
    std::wstring programId;
    std::wstring description;
};

std::array<ComponentClass, 2> Classes() {
    return {ComponentClass{CLSID_Lintara, L"Tarnwick30Lintara.Lintara", L"Tarnwick Lintara"},
            ComponentClass{CLSID_DialogsLT, L"Tarnwick30Lintara.DialogsLT", L"Tarnwick Lintara dialogs"}};
}

RegistryFolder FolderFor(RegisteredFor whom) {
    return {whom == RegisteredFor::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER, L"Software\\Classes"};
}

std::wstring Spelled(const GUID& id) {
    std::array<wchar_t, 39> text{};
    ::StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    return text.data();
}

std::vector<RegistryValue> ClassValues(const ComponentClass& component) {
    const std::wstring id = Spelled(component.id);
    const std::wstring key = L"CLSID\\" + id;
    return {
        {key, L"", component.description},
        {key + L"\\InprocServer32", L"", platform::ToWide(platform::LibraryFile())},
        {key + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
        {key + L"\\ProgID", L"", component.programId},
        {key + L"\\Programmable", L"", L""},
        {key + L"\\TypeLib", L"", Spelled(LIBID_Tarnwick30Lintara)},
        {key + L"\\Version", L"", version},
    };
}

std::vector<RegistryValue> ProgramIdValues(const ComponentClass& component) {
    return {
        {component.programId, L"", component.description},
        {component.programId + L"\\CLSID", L"", Spelled(component.id)},
    };
}

void Append(std::vector<RegistryValue>& values, std::vector<RegistryValue> more) {
    values.insert(values.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
}

std::vector<RegistryValue> AllValues() {
    std::vector<RegistryValue> values;
    for (const ComponentClass& component : Classes()) {
        Append(values, ClassValues(component));
        Append(values, ProgramIdValues(component));
    }
    return values;
}

// A program identifier that leads to somebody else's class by now is not ours to remove.
std::vector<RegistryValue> RemovableValues(const RegistryFolder& folder) {
    std::vector<RegistryValue> values;
    for (const ComponentClass& component : Classes()) {
        Append(values, ClassValues(component));
        const std::wstring leadsTo = ReadValue(folder, component.programId + L"\\CLSID", L"");
        if (leadsTo.empty() || ::lstrcmpiW(leadsTo.c_str(), Spelled(component.id).c_str()) == 0) {
            Append(values, ProgramIdValues(component));
        }
    }
    return values;
}

HRESULT RegisterTypeLibrary(RegisteredFor whom) {
    const ComPtr<ITypeLib> library = ModuleTypeLibrary();
    if (!library) {
        return TYPE_E_CANTLOADLIBRARY;
    }
    std::wstring file = platform::ToWide(platform::LibraryFile());
    std::wstring helpFolder = platform::ToWide(platform::LibraryFolder());
    const auto enter = whom == RegisteredFor::Machine ? ::RegisterTypeLib : ::RegisterTypeLibForUser;
    const HRESULT result = enter(library.get(), file.data(), helpFolder.data());
    return result == TYPE_E_REGISTRYACCESS ? E_ACCESSDENIED : result;
}

HRESULT UnregisterTypeLibrary(RegisteredFor whom) {
    if (!KeyExists(FolderFor(whom), L"TypeLib\\" + Spelled(LIBID_Tarnwick30Lintara) + systemKey)) {
        return S_OK;
    }
    const auto remove = whom == RegisteredFor::Machine ? ::UnRegisterTypeLib : ::UnRegisterTypeLibForUser;
    const HRESULT result =
        remove(LIBID_Tarnwick30Lintara, majorVersion, minorVersion, LOCALE_NEUTRAL, system);
    return result == TYPE_E_REGISTRYACCESS ? E_ACCESSDENIED : result;
}

HRESULT ResultOf(LSTATUS status) {
    return HRESULT_FROM_WIN32(static_cast<unsigned long>(status));
}

HRESULT Unregister(RegisteredFor whom) {
    const RegistryFolder folder = FolderFor(whom);
    const HRESULT library = UnregisterTypeLibrary(whom);
    const HRESULT classes = ResultOf(RemoveValues(folder, RemovableValues(folder)));
    return FAILED(library) ? library : classes;
}

HRESULT Register(RegisteredFor whom) {
    HRESULT result = ResultOf(WriteValues(FolderFor(whom), AllValues()));
    if (FAILED(result)) {
        return result;
    }
    result = RegisterTypeLibrary(whom);
    if (FAILED(result)) {
        Unregister(whom);
    }
    return result;
}

template <class Function>
HRESULT WithoutExceptions(Function function) noexcept {
    try {
        return function();
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

}  // namespace

HRESULT RegisterComponents(RegisteredFor whom) noexcept {
    return WithoutExceptions([&] { return Register(whom); });
}

HRESULT UnregisterComponents(RegisteredFor whom) noexcept {
    return WithoutExceptions([&] { return Unregister(whom); });
}

HRESULT ForMachineElseUser(HRESULT (*attempt)(RegisteredFor whom)) noexcept {
    const HRESULT result = attempt(RegisteredFor::Machine);
    return result == E_ACCESSDENIED ? attempt(RegisteredFor::User) : result;
}

HRESULT RegisterComponents() noexcept {
    // First of all: what is registered for a user hides what is registered for the machine.
    UnregisterComponents(RegisteredFor::User);
    return ForMachineElseUser([](RegisteredFor whom) { return RegisterComponents(whom); });
}

HRESULT UnregisterComponents() noexcept {
    const HRESULT machine = UnregisterComponents(RegisteredFor::Machine);
    const HRESULT user = UnregisterComponents(RegisteredFor::User);
    return FAILED(machine) ? machine : user;
}

}  // namespace lintara::com

// Registration, in a registry of the test's own: the roots that it is written below are led to a scratch key.

#include "com/registration.h"

#include "com/lintara_idl.h"
#include "com/module.h"
#include "com/registry_values.h"
#include "platform/registry_key.h"
#include "platform/system_files.h"
#include "platform/wide_text.h"

#include <algorithm>
#include <array>
#include <olectl.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using platform::RegistryKey;

constexpr const wchar_t* scratch = L"Software\\Lintara registration test";

// Every key and value below a key, one a line.
void List(HKEY key, const std::wstring& path, std::vector<std::wstring>& lines) {
    std::array<wchar_t, 256> name{};
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(name.size());
        std::array<wchar_t, 1024> text{};
        DWORD bytes = sizeof text;
        if (::RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr,
                            reinterpret_cast<BYTE*>(text.data()), &bytes) != ERROR_SUCCESS) {
            break;
        }
        lines.push_back(path + L" [" + name.data() + L"] " + text.data());
    }
    for (DWORD i = 0;; ++i) {
        auto length = static_cast<DWORD>(name.size());
        if (::RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            break;
        }
        const std::wstring below = path + L'\\' + name.data();
        lines.push_back(below);
        RegistryKey child;
        if (child.Open(key, name.data(), KEY_READ) == ERROR_SUCCESS) {
            List(child.get(), below, lines);
        }
    }
}

class Registration : public testing::Test {
  protected:
    Registration() {
        ::RegDeleteTreeW(HKEY_CURRENT_USER, scratch);
        const std::wstring folder = scratch;
        EXPECT_EQ(root_.Create(HKEY_CURRENT_USER, folder, KEY_ALL_ACCESS), ERROR_SUCCESS);
        EXPECT_EQ(machine_.Create(HKEY_CURRENT_USER, folder + L"\\machine", KEY_ALL_ACCESS), ERROR_SUCCESS);
        EXPECT_EQ(user_.Create(HKEY_CURRENT_USER, folder + L"\\user", KEY_ALL_ACCESS), ERROR_SUCCESS);
        EXPECT_EQ(classes_.Create(machine_.get(), L"Software\\Classes", KEY_ALL_ACCESS), ERROR_SUCCESS);
        EXPECT_EQ(usersClasses_.Create(user_.get(), L"Software\\Classes", KEY_ALL_ACCESS), ERROR_SUCCESS);
        // What every Windows has from the beginning.
        for (const wchar_t* part : {L"CLSID", L"Interface", L"TypeLib"}) {
            RegistryKey system;
            EXPECT_EQ(system.Create(classes_.get(), part, KEY_SET_VALUE), ERROR_SUCCESS);
            EXPECT_EQ(system.SetText(L"", L"the system's own"), ERROR_SUCCESS);
        }
        EXPECT_EQ(::RegOverridePredefKey(HKEY_LOCAL_MACHINE, machine_.get()), ERROR_SUCCESS);
        EXPECT_EQ(::RegOverridePredefKey(HKEY_CLASSES_ROOT, classes_.get()), ERROR_SUCCESS);
        EXPECT_EQ(::RegOverridePredefKey(HKEY_CURRENT_USER, user_.get()), ERROR_SUCCESS);
    }
    ~Registration() override {
        for (const HKEY key : {HKEY_LOCAL_MACHINE, HKEY_CLASSES_ROOT, HKEY_CURRENT_USER}) {
            ::RegOverridePredefKey(key, nullptr);
        }
        ::RegDeleteTreeW(HKEY_CURRENT_USER, scratch);
    }

    [[nodiscard]] std::vector<std::wstring> Everything() const {
        std::vector<std::wstring> lines;
        List(root_.get(), L"", lines);
        std::ranges::sort(lines);
        return lines;
    }

    static std::wstring MachineValue(const std::wstring& key, const std::wstring& name = L"") {
        return ReadValue({HKEY_LOCAL_MACHINE, L"Software\\Classes"}, key, name);
    }
    static std::wstring UserValue(const std::wstring& key, const std::wstring& name = L"") {
        return ReadValue({HKEY_CURRENT_USER, L"Software\\Classes"}, key, name);
    }
    static std::wstring ThisFile() { return platform::ToWide(platform::LibraryFile()); }

    static constexpr const wchar_t* lintaraId = L"{E3EF2A40-8DF3-4489-938C-56FC0FE2DFC4}";
    static constexpr const wchar_t* dialogsId = L"{7C37846B-B9EF-497B-9BE8-2342E029622A}";
    static constexpr const wchar_t* libraryId = L"{692F75A3-3EE1-4CAA-A19A-2F668D7CA93A}";

    RegistryKey root_;
    RegistryKey machine_;
    RegistryKey user_;
    RegistryKey classes_;
    RegistryKey usersClasses_;
};

TEST_F(Registration, LeadsFromTheProgramIdentifierToTheFile) {
    ASSERT_EQ(RegisterComponents(RegisteredFor::Machine), S_OK);
    for (const auto& [name, id] : {std::pair(L"Tarnwick30Lintara.Lintara", lintaraId),
                                   std::pair(L"Tarnwick30Lintara.DialogsLT", dialogsId)}) {
        EXPECT_EQ(MachineValue(std::wstring(name) + L"\\CLSID"), id);
        const std::wstring key = std::wstring(L"CLSID\\") + id;
        EXPECT_EQ(MachineValue(key + L"\\InprocServer32"), ThisFile());
        EXPECT_EQ(MachineValue(key + L"\\InprocServer32", L"ThreadingModel"), L"Apartment");
        EXPECT_EQ(MachineValue(key + L"\\ProgID"), name);
        EXPECT_EQ(MachineValue(key + L"\\TypeLib"), libraryId);
        EXPECT_EQ(MachineValue(key + L"\\Version"), L"3.0");
    }
}

TEST_F(Registration, TellsWhereTheTypeLibraryIs) {
    ASSERT_EQ(RegisterComponents(RegisteredFor::Machine), S_OK);
    const wchar_t* system = sizeof(void*) == 8 ? L"\\3.0\\0\\win64" : L"\\3.0\\0\\win32";
    EXPECT_EQ(MachineValue(std::wstring(L"TypeLib\\") + libraryId + system), ThisFile());
    EXPECT_EQ(MachineValue(L"Interface\\{CBD06AEC-53B5-441F-959A-57744B17CC23}"), L"ILintara");
    EXPECT_EQ(MachineValue(L"Interface\\{5885AD44-8C4B-4D0E-89B3-74E2B4A58720}"), L"IDialogsLT");
}

TEST_F(Registration, IsTakenBackWithoutATrace) {
    const std::vector<std::wstring> before = Everything();
    ASSERT_EQ(RegisterComponents(), S_OK);
    EXPECT_GT(Everything().size(), before.size() + 20);
    ASSERT_EQ(UnregisterComponents(), S_OK);
    EXPECT_EQ(Everything(), before);
}

TEST_F(Registration, MayBeRepeated) {
    ASSERT_EQ(RegisterComponents(), S_OK);
    const std::vector<std::wstring> once = Everything();
    ASSERT_EQ(RegisterComponents(), S_OK);
    EXPECT_EQ(Everything(), once);
    EXPECT_EQ(UnregisterComponents(), S_OK);
    EXPECT_EQ(UnregisterComponents(), S_OK);
}

TEST_F(Registration, ForAUserLiesInTheUsersPartOfTheRegistry) {
    const std::vector<std::wstring> before = Everything();
    ASSERT_EQ(RegisterComponents(RegisteredFor::User), S_OK);
    EXPECT_EQ(UserValue(L"Tarnwick30Lintara.Lintara\\CLSID"), lintaraId);
    EXPECT_EQ(UserValue(std::wstring(L"CLSID\\") + lintaraId + L"\\InprocServer32"), ThisFile());
    EXPECT_EQ(MachineValue(L"Tarnwick30Lintara.Lintara\\CLSID"), L"");
    ASSERT_EQ(UnregisterComponents(RegisteredFor::User), S_OK);
    EXPECT_EQ(UserValue(L"Tarnwick30Lintara.Lintara\\CLSID"), L"");
    EXPECT_FALSE(KeyExists({HKEY_CURRENT_USER, L"Software\\Classes"}, std::wstring(L"CLSID\\") + lintaraId));
}

TEST_F(Registration, ForTheMachineIsNotHiddenByTheUsersOwn) {
    ASSERT_EQ(RegisterComponents(RegisteredFor::User), S_OK);
    ASSERT_EQ(RegisterComponents(), S_OK);
    EXPECT_EQ(MachineValue(L"Tarnwick30Lintara.Lintara\\CLSID"), lintaraId);
    EXPECT_EQ(UserValue(L"Tarnwick30Lintara.Lintara\\CLSID"), L"");
}

TEST_F(Registration, LeavesWhatOthersHavePutBesideIt) {
    ASSERT_EQ(RegisterComponents(RegisteredFor::Machine), S_OK);
    const RegistryFolder folder{HKEY_LOCAL_MACHINE, L"Software\\Classes"};
    const std::vector<RegistryValue> foreign = {
        {std::wstring(L"CLSID\\") + lintaraId + L"\\TreatAs", L"", L"somebody's"},
        {std::wstring(L"CLSID\\") + lintaraId + L"\\InprocServer32", L"LoadWithoutCOM", L""},
        {L"CLSID\\{00000000-1111-2222-3333-444444444444}", L"", L"Another class"},
        {L"Tarnwick30Lintara.Other", L"", L"Another identifier"}};
    ASSERT_EQ(WriteValues(folder, foreign), ERROR_SUCCESS);
    ASSERT_EQ(UnregisterComponents(), S_OK);
    for (const RegistryValue& value : foreign) {
        EXPECT_EQ(MachineValue(value.key, value.name), value.text);
        EXPECT_TRUE(KeyExists(folder, value.key));
    }
    EXPECT_EQ(MachineValue(std::wstring(L"CLSID\\") + lintaraId + L"\\InprocServer32"), L"");
    EXPECT_FALSE(KeyExists(folder, std::wstring(L"CLSID\\") + dialogsId));
}

TEST_F(Registration, LeavesAnIdentifierThatLeadsElsewhereByNow) {
    ASSERT_EQ(RegisterComponents(RegisteredFor::Machine), S_OK);
    const std::vector<RegistryValue> other = {
        {L"Tarnwick30Lintara.Lintara\\CLSID", L"", L"{00000000-1111-2222-3333-444444444444}"}};
    ASSERT_EQ(WriteValues({HKEY_LOCAL_MACHINE, L"Software\\Classes"}, other), ERROR_SUCCESS);
    ASSERT_EQ(UnregisterComponents(), S_OK);
    EXPECT_EQ(MachineValue(other[0].key), other[0].text);
    EXPECT_EQ(MachineValue(L"Tarnwick30Lintara.DialogsLT\\CLSID"), L"");
}

TEST_F(Registration, ThatFailsHalfwayLeavesNothing) {
    const std::vector<std::wstring> before = Everything();
    const std::vector<RegistryValue> values = {{L"A\\B\\C", L"", L"1"},
                                               {L"A\\B\\D", L"name", L"2"},
                                               {std::wstring(300, L'x'), L"", L"a name that is too long"}};
    EXPECT_NE(WriteValues({HKEY_LOCAL_MACHINE, L"Software\\Classes"}, values), ERROR_SUCCESS);
    EXPECT_EQ(Everything(), before);
}

TEST(RegistrationWithoutRights, IsForTheUser) {
    const auto denied = [](RegisteredFor whom) {
        return whom == RegisteredFor::Machine ? E_ACCESSDENIED : S_OK;
    };
    EXPECT_EQ(ForMachineElseUser(denied), S_OK);
    const auto deniedTwice = [](RegisteredFor) { return E_ACCESSDENIED; };
    EXPECT_EQ(ForMachineElseUser(deniedTwice), E_ACCESSDENIED);
}

TEST(RegistrationWithoutRights, IsNotWhatAnotherFailureMeans) {
    const auto broken = [](RegisteredFor whom) {
        return whom == RegisteredFor::Machine ? TYPE_E_CANTLOADLIBRARY : S_OK;
    };
    EXPECT_EQ(ForMachineElseUser(broken), TYPE_E_CANTLOADLIBRARY);
    const auto allowed = [](RegisteredFor whom) { return whom == RegisteredFor::Machine ? S_FALSE : E_FAIL; };
    EXPECT_EQ(ForMachineElseUser(allowed), S_FALSE);
}

}  // namespace
}  // namespace lintara::com

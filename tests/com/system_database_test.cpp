// The database engine and the locator by their program identifiers: the test plays what else would be
// installed.

#include "com/system_database.h"

#include "com/registry_values.h"
#include "platform/system_files.h"
#include "tests/com/test_object.h"

#include <memory>
#include <objbase.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lintara::com {
namespace {

using support::LateBoundHost;
using support::MakeTestObject;
using support::TestCall;

// Gives out one object, as if it had made it.
class FactoryOfOne final : public IClassFactory {
  public:
    explicit FactoryOfOne(ComPtr<IDispatch> object) : object_(std::move(object)) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceId, void** object) override {
        const bool isKnown = interfaceId == __uuidof(IUnknown) || interfaceId == __uuidof(IClassFactory);
        *object = isKnown ? this : nullptr;
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    // It lives as long as the test.
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID interfaceId, void** object) override {
        return object_->QueryInterface(interfaceId, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

  private:
    ComPtr<IDispatch> object_;
};

// A class that is installed while this lives.
class InstalledClass {
  public:
    InstalledClass(const std::wstring& programId, const wchar_t* classId, ComPtr<IDispatch> object)
        : factory_(std::move(object)), values_{{programId + L"\\CLSID", L"", classId}} {
        CLSID id{};
        EXPECT_EQ(::CLSIDFromString(classId, &id), S_OK);
        EXPECT_EQ(WriteValues(folder_, values_), ERROR_SUCCESS);
        EXPECT_EQ(::CoRegisterClassObject(id, &factory_, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_),
                  S_OK);
    }
    InstalledClass(const InstalledClass&) = delete;
    InstalledClass& operator=(const InstalledClass&) = delete;
    ~InstalledClass() {
        ::CoRevokeClassObject(cookie_);
        static_cast<void>(RemoveValues(folder_, values_));
    }

  private:
    RegistryFolder folder_{HKEY_LOCAL_MACHINE, L"Software\\Classes"};
    FactoryOfOne factory_;
    std::vector<RegistryValue> values_;
    DWORD cookie_ = 0;
};

constexpr const wchar_t* currentClass = L"{9D1E1B2C-52A7-4D0A-8F6B-3C1B0D8E7A11}";
constexpr const wchar_t* earlierClass = L"{9D1E1B2C-52A7-4D0A-8F6B-3C1B0D8E7A12}";
constexpr const wchar_t* locatorClass = L"{9D1E1B2C-52A7-4D0A-8F6B-3C1B0D8E7A13}";

class InstalledDatabase : public testing::Test {
  protected:
    InstalledDatabase() { EXPECT_TRUE(SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))); }
    ~InstalledDatabase() override { ::CoUninitialize(); }

    void SetUp() override {
        for (const wchar_t* name :
             {L"DAO.DBEngine.120", L"DAO.DBEngine.36", L"Tarnwick30Globals.DatabaseLocator"}) {
            CLSID id{};
            if (SUCCEEDED(::CLSIDFromProgID(name, &id))) {
                GTEST_SKIP() << "this machine has an engine or a locator of its own";
            }
        }
    }

    // An engine that notes what it was asked to open under its name, and opens nothing but "C:\\x.mdb".
    ComPtr<IDispatch> Engine(const std::string& name) {
        return MakeTestObject(name, host_, {{u"OpenDatabase", [this, name](const TestCall& call) {
                                                 opened_.push_back(name);
                                                 EXPECT_EQ(call.count(), 1U);
                                                 if (call.text(0) != u"C:\\x.mdb") {
                                                     return DISP_E_EXCEPTION;
                                                 }
                                                 return call.Reply(MakeTestObject("Database", host_, {}));
                                             }}});
    }

    std::shared_ptr<LateBoundHost> host_ = std::make_shared<LateBoundHost>();
    std::vector<std::string> opened_;
};

TEST_F(InstalledDatabase, IsNotOpenedWithoutAnEngine) {
    EXPECT_FALSE(SystemDatabaseEngine().OpenDatabase(u"C:\\x.mdb"));
}

TEST_F(InstalledDatabase, IsOpenedByTheCurrentEngine) {
    const InstalledClass current(L"DAO.DBEngine.120", currentClass, Engine("current"));
    const InstalledClass earlier(L"DAO.DBEngine.36", earlierClass, Engine("earlier"));
    const auto database = SystemDatabaseEngine().OpenDatabase(u"C:\\x.mdb");
    ASSERT_TRUE(database);
    EXPECT_NE(*database, nullptr);
    EXPECT_EQ(opened_, std::vector<std::string>{"current"});
}

TEST_F(InstalledDatabase, IsOpenedByTheEarlierEngineWhereThatIsAllThereIs) {
    const InstalledClass earlier(L"DAO.DBEngine.36", earlierClass, Engine("earlier"));
    EXPECT_TRUE(SystemDatabaseEngine().OpenDatabase(u"C:\\x.mdb"));
    EXPECT_EQ(opened_, std::vector<std::string>{"earlier"});
}

TEST_F(InstalledDatabase, ThatTheEngineCannotOpenIsNotTriedAgain) {
    const InstalledClass current(L"DAO.DBEngine.120", currentClass, Engine("current"));
    const InstalledClass earlier(L"DAO.DBEngine.36", earlierClass, Engine("earlier"));
    EXPECT_FALSE(SystemDatabaseEngine().OpenDatabase(u"C:\\other.mdb"));
    EXPECT_EQ(opened_, std::vector<std::string>{"current"});
}

TEST_F(InstalledDatabase, FilesAreThoseOfTheFileSystem) {
    SystemDatabaseEngine engine;
    EXPECT_EQ(engine.FileExists(platform::LibraryFile()), true);
    EXPECT_EQ(engine.FileExists(platform::LibraryFolder()), false);
    EXPECT_EQ(engine.FileExists(platform::LibraryFolder() + u"\\Assistants.mdb"), false);
}

TEST_F(InstalledDatabase, IsLocatedByTheSuitesLocator) {
    EXPECT_EQ(MakeSystemDatabaseLocator(), nullptr);
    const InstalledClass locator(
        L"Tarnwick30Globals.DatabaseLocator", locatorClass,
        MakeTestObject("DatabaseLocator", host_, {{u"BrowseForCodeDb", [](const TestCall& call) {
                                                       return call.Reply(Text(call.text(0)) + u" and back");
                                                   }}}));
    const auto made = MakeSystemDatabaseLocator();
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->BrowseForCodeDb(u"C:\\Data"), u"C:\\Data and back");
}

}  // namespace
}  // namespace lintara::com

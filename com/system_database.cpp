#include "com/system_database.h"

#include "com/automation_object.h"
#include "com/host_database.h"
#include "platform/system_files.h"

namespace lintara::com {
namespace {

constexpr const wchar_t* CurrentEngine = L"DAO.DBEngine.120";
constexpr const wchar_t* EarlierEngine = L"DAO.DBEngine.36";
constexpr const wchar_t* Locator = L"Tarnwick30Globals.DatabaseLocator";

Result<LateBound> CreateEngine() {
    Result<LateBound> engine = CreateAutomationObject(CurrentEngine);
    return engine ? std::move(engine) : CreateAutomationObject(EarlierEngine);
}

}  // namespace

Result<bool> SystemDatabaseEngine::FileExists(TextView path) {
    return platform::FileExists(path);
}

Result<std::shared_ptr<hostmodel::Database>> SystemDatabaseEngine::OpenDatabase(TextView path) {
    return Then(CreateEngine(),
                [&](LateBound engine) { return HostDatabaseEngine(std::move(engine)).OpenDatabase(path); });
}

std::shared_ptr<hostmodel::DatabaseLocator> MakeSystemDatabaseLocator() {
    Result<LateBound> locator = CreateAutomationObject(Locator);
    return locator ? std::make_shared<HostDatabaseLocator>(*std::move(locator)) : nullptr;
}

}  // namespace lintara::com

// The database engine and the database locator that are installed on this machine.
#pragma once

#include "hostmodel/database.h"

#include <memory>

namespace lintara::com {

// The engine behind the data access objects: `DAO.DBEngine.120`, or `DAO.DBEngine.36` where that is not
// installed. It is made anew for each database, which keeps it alive.
class SystemDatabaseEngine final : public hostmodel::DatabaseEngine {
  public:
    Result<bool> FileExists(TextView path) override;
    Result<std::shared_ptr<hostmodel::Database>> OpenDatabase(TextView path) override;
};

// The suite's locator; null where it is not installed.
[[nodiscard]] std::shared_ptr<hostmodel::DatabaseLocator> MakeSystemDatabaseLocator();

}  // namespace lintara::com

// The database engine's objects, late-bound: engine, database, table recordset; and the locator, which asks
// the user where the code database lies.
#pragma once

#include "com/host_object.h"
#include "hostmodel/database.h"

namespace lintara::com {

// Its fields are reached as members of the collection "Fields", by "Item" with the field's name, and their
// values by "Value".
class HostRecordset final : public hostmodel::Recordset, public HostObject {
  public:
    using HostObject::HostObject;

    Result<void> Close() override;
    Result<void> SetIndex(TextView name) override;
    Result<void> Seek(TextView comparison, std::int32_t key) override;
    Result<bool> NoMatch() override;
    Result<void> AddNew() override;
    Result<void> Edit() override;
    Result<void> Update() override;
    Result<hostmodel::Value> Field(TextView name) override;
    Result<void> SetField(TextView name, const hostmodel::Value& value) override;

  private:
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Dispatch>> FindField(TextView name) const;
};

class HostDatabase final : public hostmodel::Database, public HostObject {
  public:
    using HostObject::HostObject;

    Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView table) override;
};

class HostDatabaseEngine final : public hostmodel::DatabaseEngine, public HostObject {
  public:
    using HostObject::HostObject;

    // Asks the file system.
    Result<bool> FileExists(TextView path) override;
    Result<std::shared_ptr<hostmodel::Database>> OpenDatabase(TextView path) override;
};

class HostDatabaseLocator final : public hostmodel::DatabaseLocator, public HostObject {
  public:
    using HostObject::HostObject;

    Result<Text> BrowseForCodeDb(TextView folder) override;
};

}  // namespace lintara::com

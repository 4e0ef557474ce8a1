// The database engine, as far as the code database needs it: a table opened as a recordset that is searched
// through an index; what opens a database; and who is asked where it lies. A failing call leaves the stored
// rows as they were.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/dispatch.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

class Recordset {
  public:
    // Dropping the last handle closes the recordset, if nobody has.
    virtual ~Recordset() = default;

    // Ends the work with the rows: an engine that gathers changes stores them now, all of them or, when it
    // fails, none. Every later call but Close fails.
    [[nodiscard]] virtual Result<void> Close() = 0;

    // Makes the index `name` the one that Seek searches.
    [[nodiscard]] virtual Result<void> SetIndex(TextView name) = 0;
    // Makes the first row whose index value compares to `key` as `comparison` ("=") says the current one.
    [[nodiscard]] virtual Result<void> Seek(TextView comparison, std::int32_t key) = 0;
    // Whether the last Seek found no row.
    [[nodiscard]] virtual Result<bool> NoMatch() = 0;
    // Begins a new row, or the change of the current one; Update writes it.
    [[nodiscard]] virtual Result<void> AddNew() = 0;
    [[nodiscard]] virtual Result<void> Edit() = 0;
    [[nodiscard]] virtual Result<void> Update() = 0;
    [[nodiscard]] virtual Result<Value> Field(TextView name) = 0;
    [[nodiscard]] virtual Result<void> SetField(TextView name, const Value& value) = 0;
};

class Database {
  public:
    virtual ~Database() = default;

    // Opens `table` as a table-type recordset.
    [[nodiscard]] virtual Result<std::shared_ptr<Recordset>> OpenTable(TextView table) = 0;
};

// Paths are a folder as the settings hold it, a backslash and the file's name. The engine makes of them what
// its machine calls a path.
class DatabaseEngine {
  public:
    virtual ~DatabaseEngine() = default;

    // Whether there is a file of that path, whatever it holds. A folder is none.
    [[nodiscard]] virtual Result<bool> FileExists(TextView path) = 0;
    // Opens the file with the engine's default options: shared, for reading and writing. Never makes one.
    [[nodiscard]] virtual Result<std::shared_ptr<Database>> OpenDatabase(TextView path) = 0;
};

// Asks the user for the folder of the code database.
class DatabaseLocator {
  public:
    virtual ~DatabaseLocator() = default;

    // `folder` is the one that was tried, or "". The result is the one that the user chose, without a
    // separator at its end; "" when the user gives up.
    [[nodiscard]] virtual Result<Text> BrowseForCodeDb(TextView folder) = 0;
};

}  // namespace lintara::hostmodel

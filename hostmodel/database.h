// The database engine, as far as the code database needs it: a table opened as a recordset that is searched
// through an index. A failing call leaves the stored rows as they were.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/dispatch.h"

#include <cstdint>
#include <memory>

namespace lintara::hostmodel {

class Recordset {
  public:
    // Dropping the last handle closes the recordset.
    virtual ~Recordset() = default;

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

}  // namespace lintara::hostmodel

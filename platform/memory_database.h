// A code database that lives in memory and ends with its owner: the table of the buffers, empty at first. For
// programs that are to leave nothing behind.
#pragma once

#include "hostmodel/database.h"

#include <map>
#include <memory>

namespace lintara::platform {

class MemoryDatabase final : public hostmodel::Database {
  public:
    using Rows = std::map<std::int32_t, Text>;  // the code of each key

    [[nodiscard]] Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView table) override;

  private:
    std::shared_ptr<Rows> rows_ = std::make_shared<Rows>();
};

}  // namespace lintara::platform

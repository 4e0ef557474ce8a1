// The rows of the code database that hold the numbered buffers: the table `CPBuffers`, one row per buffer,
// found through its index.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "hostmodel/database.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace lintara::assistant {

// The table, ready to be searched; never null. Fails when the database has no such table or index.
[[nodiscard]] Result<std::shared_ptr<hostmodel::Recordset>> OpenBufferRows(hostmodel::Database& database);

// The text of the buffer; nullopt when there is no row for it.
[[nodiscard]] Result<std::optional<Text>> FindBufferRow(hostmodel::Recordset& rows, std::int32_t buffer);

// Writes the buffer into its row, which is made when there is none. The engine may store it only when `rows`
// is closed.
[[nodiscard]] Result<void> StoreBufferRow(hostmodel::Recordset& rows, std::int32_t buffer, TextView code);

}  // namespace lintara::assistant

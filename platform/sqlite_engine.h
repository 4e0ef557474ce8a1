// The database engine over SQLite: what stands behind `Assistants.mdb` here.
#pragma once

#include "hostmodel/database.h"
#include "platform/sqlite_recordset.h"

#include <chrono>
#include <filesystem>

namespace lintara::platform {

// Opening a database only looks whether it can be opened; each recordset has a connection of its own. So
// a file that was put in the place of another is noticed, and nothing is written into one that is gone.
class SqliteEngine final : public hostmodel::DatabaseEngine {
  public:
    // How long a file that another program has locked is waited for, in all, by each recordset.
    static constexpr std::chrono::milliseconds usualPatience = std::chrono::seconds(5);

    explicit SqliteEngine(DatabaseNoticeSink notify = {}, std::chrono::milliseconds patience = usualPatience)
        : notify_(std::move(notify)), patience_(patience) {}

    // Paths are those of platform/path_text.h.
    [[nodiscard]] Result<bool> FileExists(TextView path) override;
    // Fails for a file of another kind, above all the old format of the same name, which it never changes.
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Database>> OpenDatabase(TextView path) override;

    // The same by the path itself.
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Database>> OpenFile(
        const std::filesystem::path& file) const;

  private:
    DatabaseNoticeSink notify_;
    std::chrono::milliseconds patience_;
};

}  // namespace lintara::platform

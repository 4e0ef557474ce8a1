// SQLite, as far as the code database needs it: a connection to a file, and statements.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace lintara::platform {

// A failure by its number in SQLite; the reason continues a sentence about the file: "it is damaged".
[[nodiscard]] HostError SqliteError(int code);

class SqliteStatement {
  public:
    explicit SqliteStatement(sqlite3_stmt* statement) : statement_(statement) {}

    // Parameters and columns count as SQLite counts them: from 1 and from 0.
    [[nodiscard]] Result<void> Bind(int parameter, std::int32_t value);
    [[nodiscard]] Result<void> Bind(int parameter, TextView value);

    // Goes to the next row; false when there is none.
    [[nodiscard]] Result<bool> Step();

    [[nodiscard]] bool IsNull(int column) const;
    // Fails for bytes that hold no text (platform/stored_text.h).
    [[nodiscard]] Result<Text> TextOf(int column) const;

  private:
    struct Finalize {
        void operator()(sqlite3_stmt* statement) const;
    };

    std::unique_ptr<sqlite3_stmt, Finalize> statement_;
};

class SqliteConnection {
  public:
    enum class Mode { Existing, Create };

    // For reading and writing or, when the file is write-protected, for reading. Waits for other programs'
    // locks as long as `patience` in all. What the file's makers put into it is not run: no triggers, no
    // views.
    [[nodiscard]] static Result<SqliteConnection> Open(const std::filesystem::path& file,
                                                       std::chrono::milliseconds patience,
                                                       Mode mode = Mode::Existing);

    [[nodiscard]] Result<SqliteStatement> Prepare(std::string_view sql);
    // Runs a statement that has no rows to give.
    [[nodiscard]] Result<void> Run(std::string_view sql);
    // How many rows the last statement changed.
    [[nodiscard]] std::int64_t changes() const;

  private:
    struct Close {
        void operator()(sqlite3* connection) const;
    };

    SqliteConnection() = default;

    [[nodiscard]] Result<void> Configure();

    std::unique_ptr<std::chrono::milliseconds> patience_;  // what is left of it
    std::unique_ptr<sqlite3, Close> connection_;
};

}  // namespace lintara::platform

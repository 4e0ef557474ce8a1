#include "assistant/buffer_rows.h"

#include "base/constants.h"
#include "transform/host_value.h"

#include <utility>

namespace lintara::assistant {

using hostmodel::Recordset;

namespace {

// Whether no row has `key`; else its row is the current one.
Result<bool> IsMissing(Recordset& rows, std::int32_t key) {
    return Then(rows.Seek(u"=", key), [&] { return rows.NoMatch(); });
}

// Begins the change of the row of `key`, which is made when it does not exist.
Result<void> BeginRow(Recordset& rows, std::int32_t key) {
    return Then(IsMissing(rows, key), [&](bool missing) -> Result<void> {
        if (!missing) {
            return rows.Edit();
        }
        return Then(rows.AddNew(), [&] { return rows.SetField(constants::BufferKeyField, key); });
    });
}

}  // namespace

Result<std::shared_ptr<Recordset>> OpenBufferRows(hostmodel::Database& database) {
    Result<std::shared_ptr<Recordset>> table = database.OpenTable(constants::BuffersTable);
    if (table && *table == nullptr) {
        return Failure(ErrorNumber::ObjectNotSet, "the database has no such table");
    }
    return Then(std::move(table), [](std::shared_ptr<Recordset> rows) -> Result<std::shared_ptr<Recordset>> {
        const Result<void> indexed = rows->SetIndex(constants::BuffersIndex);
        if (!indexed) {
            return std::unexpected(indexed.error());
        }
        return rows;
    });
}

Result<std::optional<Text>> FindBufferRow(Recordset& rows, std::int32_t buffer) {
    return Then(IsMissing(rows, buffer), [&](bool missing) -> Result<std::optional<Text>> {
        if (missing) {
            return std::nullopt;
        }
        return Then(Then(rows.Field(constants::BufferCodeField), transform::AsText),
                    [](Text code) { return Result<std::optional<Text>>(std::move(code)); });
    });
}

Result<void> StoreBufferRow(Recordset& rows, std::int32_t buffer, TextView code) {
    const Result<void> begun = BeginRow(rows, buffer);
    const Result<void> filled =
        Then(begun, [&] { return rows.SetField(constants::BufferCodeField, Text(code)); });
    return Then(filled, [&] { return rows.Update(); });
}

}  // namespace lintara::assistant

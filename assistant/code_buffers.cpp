#include "assistant/code_buffers.h"

#include "base/constants.h"
#include "base/statement.h"
#include "transform/host_value.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace lintara::assistant {
namespace {

using hostmodel::Recordset;

bool IsIndex(std::int32_t index) {
    return index >= 0 && index < NumberedBufferCount;
}

std::unexpected<HostError> SubscriptError() {
    return Failure(ErrorNumber::SubscriptOutOfRange, "there is no buffer of that number");
}

Result<std::shared_ptr<Recordset>> OpenBuffersTable(hostmodel::Database& database) {
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

Result<void> StoreRow(Recordset& rows, std::int32_t key, const Text& code) {
    const Result<void> begun = BeginRow(rows, key);
    const Result<void> filled = Then(begun, [&] { return rows.SetField(constants::BufferCodeField, code); });
    return Then(filled, [&] { return rows.Update(); });
}

}  // namespace

Result<Text> CodeBuffers::Numbered(std::int32_t index) const {
    if (!IsIndex(index)) {
        return SubscriptError();
    }
    return numbered_[static_cast<std::size_t>(index)];
}

Result<void> CodeBuffers::SetNumbered(std::int32_t index, TextView code) {
    if (!IsIndex(index)) {
        return SubscriptError();
    }
    numbered_[static_cast<std::size_t>(index)] = code;
    return {};
}

void CodeBuffers::Load(hostmodel::Database& database) {
    const auto rows = OpenBuffersTable(database);
    if (!rows) {
        return;
    }
    for (std::int32_t key = 0; key < StoredBufferCount; ++key) {
        const Result<bool> missing = IsMissing(**rows, key);
        if (missing && !*missing) {
            Assign(numbered_[static_cast<std::size_t>(key)],
                   Then((*rows)->Field(constants::BufferCodeField), transform::AsText));
        }
    }
}

void CodeBuffers::Save(hostmodel::Database& database) const {
    const auto rows = OpenBuffersTable(database);
    if (!rows) {
        return;
    }
    for (std::int32_t key = 0; key < StoredBufferCount; ++key) {
        Attempt(StoreRow(**rows, key, numbered_[static_cast<std::size_t>(key)]));
    }
}

}  // namespace lintara::assistant

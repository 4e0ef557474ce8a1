#include "assistant/code_buffers.h"

#include "assistant/buffer_rows.h"
#include "base/statement.h"

#include <cstddef>
#include <optional>

namespace lintara::assistant {
namespace {

bool IsIndex(std::int32_t index) {
    return index >= 0 && index < NumberedBufferCount;
}

std::unexpected<HostError> SubscriptError() {
    return Failure(ErrorNumber::SubscriptOutOfRange, "there is no buffer of that number");
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
    const auto rows = OpenBufferRows(database);
    if (!rows) {
        return;
    }
    for (std::int32_t key = 0; key < StoredBufferCount; ++key) {
        const Result<std::optional<Text>> code = FindBufferRow(**rows, key);
        if (code && *code) {
            numbered_[static_cast<std::size_t>(key)] = **code;
        }
    }
    Attempt((*rows)->Close());
}

void CodeBuffers::Save(hostmodel::Database& database) const {
    const auto rows = OpenBufferRows(database);
    if (!rows) {
        return;
    }
    for (std::int32_t key = 0; key < StoredBufferCount; ++key) {
        Attempt(StoreBufferRow(**rows, key, numbered_[static_cast<std::size_t>(key)]));
    }
}

}  // namespace lintara::assistant

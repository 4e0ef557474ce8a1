#include "platform/memory_database.h"

#include "base/constants.h"

#include <optional>
#include <utility>
#include <variant>

namespace lintara::platform {
namespace {

using hostmodel::Value;

class MemoryRecordset final : public hostmodel::Recordset {
  public:
    explicit MemoryRecordset(std::shared_ptr<MemoryDatabase::Rows> rows) : rows_(std::move(rows)) {}

    Result<void> Close() override {
        rows_ = nullptr;
        return {};
    }

    Result<void> SetIndex(TextView name) override {
        indexed_ = name == constants::BuffersIndex;
        return indexed_ ? Done() : Failure(ErrorNumber::InvalidArgument, "the table has no such index");
    }

    Result<void> Seek(TextView comparison, std::int32_t key) override {
        if (!indexed_ || comparison != u"=") {
            return Failure(ErrorNumber::InvalidArgument, "the table cannot be searched that way");
        }
        current_ = key;
        row_.reset();
        return Done();
    }

    Result<bool> NoMatch() override {
        const Result<void> open = Done();
        return open ? Result<bool>(!current_ || !rows_->contains(*current_)) : std::unexpected(open.error());
    }

    Result<void> AddNew() override {
        row_ = Row();
        return Done();
    }

    Result<void> Edit() override {
        return Then(NoMatch(), [&](bool missing) -> Result<void> {
            if (missing) {
                return NoRow();
            }
            row_ = Row{current_, rows_->at(*current_)};
            return {};
        });
    }

    Result<void> Update() override {
        if (const Result<void> open = Done(); !open) {
            return open;
        }
        if (!row_ || !row_->key) {
            return NoRow();
        }
        rows_->insert_or_assign(*row_->key, std::move(row_->code));
        row_.reset();
        return {};
    }

    Result<Value> Field(TextView name) override {
        return Then(NoMatch(), [&](bool missing) -> Result<Value> {
            if (missing) {
                return NoRow();
            }
            if (name == constants::BufferKeyField) {
                return *current_;
            }
            return name == constants::BufferCodeField ? Result<Value>(rows_->at(*current_)) : NoField();
        });
    }

    Result<void> SetField(TextView name, const Value& value) override {
        if (!row_) {
            return NoRow();
        }
        const auto* key = std::get_if<std::int32_t>(&value);
        const auto* code = std::get_if<Text>(&value);
        if (name == constants::BufferKeyField && key != nullptr) {
            row_->key = *key;
        } else if (name == constants::BufferCodeField && code != nullptr) {
            row_->code = *code;
        } else {
            return NoField();
        }
        return Done();
    }

  private:
    // A row that is being made or changed.
    struct Row {
        std::optional<std::int32_t> key;
        Text code;
    };

    [[nodiscard]] static std::unexpected<HostError> NoRow() {
        return Failure(ErrorNumber::ObjectNotSet, "there is no current row");
    }
    [[nodiscard]] static std::unexpected<HostError> NoField() {
        return Failure(ErrorNumber::SubscriptOutOfRange, "the table has no such field");
    }
    [[nodiscard]] Result<void> Done() const {
        return rows_ != nullptr ? Result<void>() : Failure(ErrorNumber::ObjectNotSet, "the table is closed");
    }

    std::shared_ptr<MemoryDatabase::Rows> rows_;
    bool indexed_ = false;
    std::optional<std::int32_t> current_;
    std::optional<Row> row_;
};

}  // namespace

Result<std::shared_ptr<hostmodel::Recordset>> MemoryDatabase::OpenTable(TextView table) {
    if (table != constants::BuffersTable) {
        return Failure(ErrorNumber::SubscriptOutOfRange, "the database has no such table");
    }
    return std::make_shared<MemoryRecordset>(rows_);
}

}  // namespace lintara::platform

// A code database in memory, with a row per buffer, that can be told to fail. It counts open recordsets.
#pragma once

#include "hostmodel/database.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace lintara::support {

struct BufferRows {
    std::map<std::int32_t, hostmodel::Value> codeByKey;
    bool hasTable = true;
    // Which calls fail, by their name and the key that was last sought.
    std::function<bool(std::string_view call, std::int32_t key)> fails;
    std::size_t openRecordsets = 0;
};

class MemoryRecordset : public hostmodel::Recordset {
  public:
    explicit MemoryRecordset(std::shared_ptr<BufferRows> rows) : rows_(std::move(rows)) {
        ++rows_->openRecordsets;
    }
    ~MemoryRecordset() override { End(); }
    MemoryRecordset(const MemoryRecordset&) = delete;
    MemoryRecordset& operator=(const MemoryRecordset&) = delete;

    Result<void> Close() override {
        End();
        return Answer("Close", true);
    }

    Result<void> SetIndex(TextView name) override {
        indexed_ = name == u"Key";
        return Answer("SetIndex", indexed_);
    }
    Result<void> Seek(TextView comparison, std::int32_t key) override {
        key_ = key;
        return Answer("Seek", indexed_ && comparison == u"=");
    }
    Result<bool> NoMatch() override {
        if (Fails("NoMatch")) {
            return Broken();
        }
        return !rows_->codeByKey.contains(key_);
    }
    Result<void> AddNew() override {
        pending_ = {std::monostate(), std::monostate()};
        return Answer("AddNew", true);
    }
    Result<void> Edit() override {
        pending_ = {key_, rows_->codeByKey.at(key_)};
        return Answer("Edit", true);
    }
    Result<void> Update() override {
        if (Fails("Update") || !std::holds_alternative<std::int32_t>(pending_.first)) {
            return Broken();
        }
        rows_->codeByKey[std::get<std::int32_t>(pending_.first)] = pending_.second;
        return {};
    }
    Result<hostmodel::Value> Field(TextView name) override {
        if (Fails("Field") || name != u"Code") {
            return Broken();
        }
        return rows_->codeByKey.at(key_);
    }
    Result<void> SetField(TextView name, const hostmodel::Value& value) override {
        if (name == u"Key") {
            pending_.first = value;
        } else if (name == u"Code") {
            pending_.second = value;
        }
        return Answer("SetField", name == u"Key" || name == u"Code");
    }

  private:
    [[nodiscard]] static std::unexpected<HostError> Broken() {
        return Failure(ErrorNumber::HostFailure, "the engine is broken");
    }
    [[nodiscard]] bool Fails(std::string_view call) const { return rows_->fails && rows_->fails(call, key_); }
    [[nodiscard]] Result<void> Answer(std::string_view call, bool right) const {
        return right && !Fails(call) ? Result<void>() : Broken();
    }

    void End() {
        if (isOpen_) {
            --rows_->openRecordsets;
            isOpen_ = false;
        }
    }

    std::shared_ptr<BufferRows> rows_;
    bool isOpen_ = true;
    bool indexed_ = false;
    std::int32_t key_ = -1;
    std::pair<hostmodel::Value, hostmodel::Value> pending_;
};

class MemoryDatabase : public hostmodel::Database {
  public:
    explicit MemoryDatabase(std::shared_ptr<BufferRows> rows) : rows_(std::move(rows)) {}

    Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView table) override {
        if (!rows_->hasTable || table != u"CPBuffers") {
            return Failure(ErrorNumber::HostFailure, "no such table");
        }
        return std::make_shared<MemoryRecordset>(rows_);
    }

  private:
    std::shared_ptr<BufferRows> rows_;
};

}  // namespace lintara::support

#include "com/host_database.h"

#include "platform/system_files.h"

namespace lintara::com {

using hostmodel::Value;

namespace {

constexpr std::int32_t TableType = 1;

}  // namespace

Result<void> HostRecordset::Close() {
    return object().Call(u"Close");
}

Result<void> HostRecordset::SetIndex(TextView name) {
    return object().Put(u"Index", Variant(name));
}

Result<void> HostRecordset::Seek(TextView comparison, std::int32_t key) {
    return object().Call(u"Seek", With(comparison, key));
}

Result<bool> HostRecordset::NoMatch() {
    return GetBoolean(u"NoMatch");
}

Result<void> HostRecordset::AddNew() {
    return object().Call(u"AddNew");
}

Result<void> HostRecordset::Edit() {
    return object().Call(u"Edit");
}

Result<void> HostRecordset::Update() {
    return object().Call(u"Update");
}

Result<std::shared_ptr<hostmodel::Dispatch>> HostRecordset::FindField(TextView name) const {
    using DispatchPtr = std::shared_ptr<hostmodel::Dispatch>;
    const auto item = [&](const ComPtr<IDispatch>& fields) -> Result<Variant> {
        if (fields == nullptr) {
            return Failure(ErrorNumber::ObjectNotSet, "the table has no fields");
        }
        return LateBound(fields, object().ids()).Get(u"Item", With(name));
    };
    const auto present = [](DispatchPtr field) -> Result<DispatchPtr> {
        if (field == nullptr) {
            return Failure(ErrorNumber::ObjectNotSet, "the table has no such field");
        }
        return field;
    };
    const auto adapt = [&](const Variant& field) { return DispatchOf(field.get(), object().ids()); };
    return Then(Then(Then(FindObject(u"Fields"), item), adapt), present);
}

Result<Value> HostRecordset::Field(TextView name) {
    return Then(FindField(name), [](const auto& field) { return field->Invoke(u"Value", {}); });
}

Result<void> HostRecordset::SetField(TextView name, const Value& value) {
    return Then(FindField(name), [&](const auto& field) { return field->Put(u"Value", value); });
}

Result<std::shared_ptr<hostmodel::Recordset>> HostDatabase::OpenTable(TextView table) {
    return GetObjectAs<hostmodel::Recordset, HostRecordset>(u"OpenRecordset", With(table, TableType));
}

Result<bool> HostDatabaseEngine::FileExists(TextView path) {
    return platform::FileExists(path);
}

Result<std::shared_ptr<hostmodel::Database>> HostDatabaseEngine::OpenDatabase(TextView path) {
    return GetObjectAs<hostmodel::Database, HostDatabase>(u"OpenDatabase", With(path));
}

Result<Text> HostDatabaseLocator::BrowseForCodeDb(TextView folder) {
    return GetText(u"BrowseForCodeDb", With(folder));
}

}  // namespace lintara::com

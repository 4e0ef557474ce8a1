#include "com/host_globals.h"

#include "com/host_database.h"
#include "com/host_vbe.h"
#include "com/window_object.h"

namespace lintara::com {

Result<std::shared_ptr<hostmodel::VBE>> HostGlobals::VBE() {
    return GetObjectAs<hostmodel::VBE, HostVBE>(u"VBE");
}

Result<Text> HostGlobals::ComputerName() {
    return GetText(u"ComputerName");
}

Result<Text> HostGlobals::UserName() {
    return GetText(u"UserName");
}

Result<Text> HostGlobals::TokenBefore(TextView text, TextView separator) {
    return GetText(u"TokenBefore", With(text, separator));
}

Result<Text> HostGlobals::CodeDbPath() {
    return GetText(u"CodeDbPath");
}

Result<void> HostGlobals::SetCodeDbPath(TextView folder) {
    return object().Put(u"CodeDbPath", Variant(folder));
}

Result<std::shared_ptr<hostmodel::Database>> HostGlobals::CodeDb() {
    return GetObjectAs<hostmodel::Database, HostDatabase>(u"CodeDb");
}

Result<void> HostGlobals::SetCodeDb(std::shared_ptr<hostmodel::Database> database) {
    const auto* const hosts = dynamic_cast<const HostDatabase*>(database.get());
    if (hosts == nullptr && database != nullptr) {
        return Failure(ErrorNumber::TypeMismatch, "the database is none of the host's engine");
    }
    return object().Put(u"CodeDb", Variant(hosts == nullptr ? nullptr : hosts->object().object().get()));
}

Result<HostGlobals::DispatchPtr> HostGlobals::HostForm() {
    return GetDispatch(u"HostForm");
}

Result<HostGlobals::DispatchPtr> HostGlobals::ProjectsData() {
    return GetDispatch(u"ProjectsData");
}

Result<HostGlobals::DispatchPtr> HostGlobals::AddInHost() {
    return GetDispatch(u"AddInHost");
}

Result<Text> HostGlobals::HistSeparator() {
    return GetText(u"HistSeparator");
}

Result<Text> HostGlobals::HistCurrentKey() {
    return GetText(u"HistCurrentKey");
}

Result<Text> HostGlobals::HistSelKey() {
    return GetText(u"HistSelKey");
}

Result<void> HostGlobals::SetHistSelKey(TextView key) {
    return object().Put(u"HistSelKey", Variant(key));
}

Result<Text> HostGlobals::HistSelObject() {
    return GetText(u"HistSelObject");
}

Result<void> HostGlobals::SetHistSelObject(TextView selected) {
    return object().Put(u"HistSelObject", Variant(selected));
}

Result<void> HostGlobals::LoadWindowState(hostmodel::PlacedWindow& window) {
    const LentWindow lent(window);
    Arguments arguments;
    arguments.Add(Variant(lent.object()));
    return object().Call(u"LoadWindowState", std::move(arguments));
}

Result<void> HostGlobals::SaveWindowState(const hostmodel::PlacedWindow& window) {
    const LentWindow lent(window);
    Arguments arguments;
    arguments.Add(Variant(lent.object()));
    return object().Call(u"SaveWindowState", std::move(arguments));
}

}  // namespace lintara::com
